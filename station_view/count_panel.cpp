#include "station_view/count_panel.h"

#include <FL/Fl_Box.H>

#include "station_view/window_style.h"
#include "station_view/window_words.h"

namespace {

namespace layout = window_layout;

/// A framed number with its name below; the number's box.
Fl_Box* add_counter(const layout::area& at, const char* name, Fl_Color colour) {
    auto* const frame = new Fl_Box(FL_BORDER_BOX, at.x, at.y, at.w, at.h, nullptr);
    frame->color(window_style::white);
    Fl_Box* const caption =
        window_style::add_text({at.x + 2, at.y + at.h - 20, at.w - 4, 18}, name);
    caption->color(window_style::white);
    caption->labelcolor(window_style::quiet_ink);
    caption->labelsize(window_style::small_px);
    caption->align(FL_ALIGN_CENTER | FL_ALIGN_INSIDE);
    Fl_Box* const number = window_style::add_text({at.x + 2, at.y + 2, at.w - 4, at.h - 24}, "");
    number->color(window_style::white);
    number->labelcolor(colour);
    number->labelfont(FL_HELVETICA_BOLD);
    number->labelsize(24);
    number->align(FL_ALIGN_CENTER | FL_ALIGN_INSIDE);
    return number;
}

}  // namespace

count_panel::count_panel(const station_run& run, language in) : run_(run) {
    const auto word = [in](window_word each) { return text_of(each, in); };
    window_style::add_heading(layout::production_title, word(window_word::production));
    good_ = add_counter(layout::good, word(window_word::good), window_style::green);
    bad_ = add_counter(layout::bad, word(window_word::bad), window_style::red);
    incidents_ =
        add_counter(layout::incident_count, word(window_word::incidents), window_style::blue);
}

void count_panel::show() {
    const station_counts counts = run_.counts();
    window_style::relabel(*good_, std::to_string(counts.good));
    window_style::relabel(*bad_, std::to_string(counts.bad));
    window_style::relabel(*incidents_, std::to_string(run_.incidents()));
}
