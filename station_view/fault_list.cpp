#include "station_view/fault_list.h"

#include <FL/Fl.H>
#include <FL/Fl_Box.H>
#include <FL/Fl_Check_Button.H>

#include <algorithm>
#include <utility>

#include "station_view/fault_labels.h"
#include "station_view/held_space.h"
#include "station_view/window_style.h"
#include "station_view/window_words.h"

namespace {

constexpr int row_h = 20, name_w = 96, column_w = 40, inset = 8;
// By a turn of the mouse wheel.
constexpr int rows_at_once = 3;

/// The kinds of that place that fit one of these names at least, in their order.
std::vector<fault_kind> kinds_of(name_span names, fault_place place, const station_model& model) {
    std::vector<fault_kind> found;
    for (int i = 0; i < static_cast<int>(fault_kind::count); ++i) {
        const auto kind = static_cast<fault_kind>(i);
        if (place_of(kind) == place && std::ranges::any_of(names, [&](std::string_view name) {
                return fault_fits(name, kind, model);
            }))
            found.push_back(kind);
    }
    return found;
}

// The toolkit would take "@" for the beginning of a symbol.
std::string plain(std::string_view text) {
    std::string doubled;
    for (const char byte : text) doubled += byte == '@' ? "@@" : std::string(1, byte);
    return doubled;
}

}  // namespace

/// One box. A space bar that is held ticks it once.
class fault_box : public Fl_Check_Button {
public:
    using Fl_Check_Button::Fl_Check_Button;
    int handle(int event) override {
        return space_.repeats(event) ? 1 : Fl_Check_Button::handle(event);
    }

private:
    held_space space_;
};

fault_list::fault_list(const window_layout::area& at, station_run& run, language in,
                       std::function<void()> changed)
    : Fl_Scroll(at.x, at.y, at.w, at.h),
      run_(run),
      changed_(std::move(changed)),
      next_y_(at.y + 2) {
    type(Fl_Scroll::VERTICAL);
    scrollbar.linesize(rows_at_once * row_h);
    box(FL_BORDER_BOX);
    color(window_style::white);
    add_section(fault_place::sensor, run_.model().inputs(), in);
    add_section(fault_place::actuator, run_.model().outputs(), in);
    end();
}

void fault_list::add_section(fault_place place, name_span names, language in) {
    const std::vector<fault_kind> kinds = kinds_of(names, place, run_.model());
    const auto title = place == fault_place::sensor ? window_word::sensors : window_word::actuators;
    const auto add_head = [this](int x, int w, const char* text) {
        Fl_Box* const made = window_style::add_heading({x, next_y_, w, row_h}, text);
        made->box(FL_NO_BOX);
        made->labelsize(window_style::small_px);
    };
    add_head(x() + inset, name_w, text_of(title, in));
    for (std::size_t i = 0; i < kinds.size(); ++i)
        add_head(x() + inset + name_w + static_cast<int>(i) * column_w, column_w,
                 fault_column(kinds[i], in));
    next_y_ += row_h;
    for (const std::string_view name : names) add_row(name, kinds, in);
    next_y_ += inset;
}

void fault_list::add_row(std::string_view name, std::span<const fault_kind> kinds, language in) {
    Fl_Box* const label =
        window_style::add_text({x() + inset, next_y_, name_w - 4, row_h}, plain(name));
    label->box(FL_NO_BOX);
    label->labelsize(window_style::small_px);
    label->align(label->align() | FL_ALIGN_CLIP);
    for (std::size_t i = 0; i < kinds.size(); ++i) {
        if (!fault_fits(name, kinds[i], run_.model())) continue;
        const station_fault fault{std::string(name), kinds[i]};
        auto* const button = new fault_box(x() + inset + name_w + static_cast<int>(i) * column_w,
                                           next_y_, row_h + 2, row_h);
        button->copy_tooltip(plain(fault_sentence(fault, in)).c_str());
        button->callback(
            [](Fl_Widget* self, void* list) {
                static_cast<fault_list*>(list)->tick(static_cast<fault_box*>(self));
            },
            this);
        boxes_.push_back({fault, button});
    }
    next_y_ += row_h;
}

void fault_list::tick(const fault_box* button) {
    const auto found = std::ranges::find(boxes_, button, &tick_box::button);
    const bool done =
        button->value() ? run_.set_fault(found->fault) : run_.end_fault(found->fault.name);
    if (done) changed_();
    show_faults();
}

void fault_list::show_faults() {
    std::vector<station_fault> now = run_.faults();
    for (const tick_box& each : boxes_) {
        const bool set = std::ranges::find(now, each.fault) != now.end();
        if ((each.button->value() != 0) != set) each.button->value(set);
    }
    shown_ = std::move(now);
}

void fault_list::only_show() {
    color(window_style::paper);
    for (int i = 0; i < children(); ++i)
        if (child(i) != &scrollbar && child(i) != &hscrollbar) child(i)->deactivate();
}

void fault_list::go_to() {
    // The toolkit would give it to what is greyed, and the space bar would tick there.
    if (boxes_.empty() || !boxes_.front().button->active_r()) return;
    boxes_.front().button->take_focus();
    scroll_to(xposition(), 0);
}

void fault_list::bring_into_view(const Fl_Widget& widget) {
    const int above = y() - widget.y(), below = widget.y() + widget.h() - (y() + h());
    if (above > 0) scroll_to(xposition(), std::max(0, yposition() - above - row_h));
    if (below > 0) scroll_to(xposition(), yposition() + below + 4);
}

// The toolkit tells a group when the keyboard comes to one of its children, or goes from one to
// another.
int fault_list::handle(int event) {
    const int taken = Fl_Scroll::handle(event);
    const bool moves = event == FL_FOCUS || event == FL_KEYBOARD;
    if (moves && Fl::focus() && contains(Fl::focus()) && Fl::focus() != this &&
        Fl::focus() != &scrollbar)
        bring_into_view(*Fl::focus());
    return taken;
}
