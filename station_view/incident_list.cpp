#include "station_view/incident_list.h"

#include <FL/Fl.H>
#include <FL/fl_draw.H>

#include <algorithm>
#include <utility>

#include "session/session_report.h"
#include "station_view/incident_advice.h"
#include "station_view/window_style.h"
#include "station_view/window_words.h"

namespace {

// Of the time and of what happened, in the smallest text.
constexpr int time_w = 84, what_w = 390;
constexpr int lines_shown = 4;
constexpr double line_per_text = 1.3;
constexpr int least_text_w = 100, edge = 10;

// "@." ends the browser's formats: what follows is shown as it stands.
constexpr char plain[] = "@.", bold[] = "@b@.", trouble_format[] = "@C1@b@.";

/// Cut between words into lines of at most `w` pixels in the font that is set; a longer word has a
/// line of its own.
std::vector<std::string> folded(const std::string& text, int w) {
    std::vector<std::string> lines;
    std::string line;
    for (std::size_t begin = 0; begin <= text.size();) {
        const std::size_t end = std::min(text.find(' ', begin), text.size());
        const std::string word = text.substr(begin, end - begin);
        if (!line.empty() && fl_width((line + ' ' + word).c_str()) > w)
            lines.push_back(std::exchange(line, ""));
        line += (line.empty() ? "" : " ") + word;
        begin = end + 1;
    }
    lines.push_back(line);
    return lines;
}

}  // namespace

incident_list::incident_list(const window_layout::area& at, language in)
    : Fl_Browser(at.x, at.y, at.w, at.h), language_(in) {
    box(FL_BORDER_BOX);
    color(window_style::white);
    textcolor(window_style::ink);
    size_text();
    column_widths(columns_);
    has_scrollbar(VERTICAL);
    fill();
}

void incident_list::size_text() {
    const int fits = static_cast<int>((h() - edge) / (lines_shown * line_per_text));
    textsize(std::max<Fl_Fontsize>(window_style::small_px, fits));
    scrollbar.linesize(textsize() * 13 / 10);
    columns_[0] = time_w * textsize() / window_style::small_px;
    columns_[1] = what_w * textsize() / window_style::small_px;
}

bool incident_list::scrolls() const { return full_height() > h() - 2 * Fl::box_dy(box()); }

bool incident_list::fits_in_one_line(const entry& told) const {
    fl_font(FL_HELVETICA_BOLD, textsize());
    const bool what_fits = fl_width(told.what.c_str()) + edge <= columns_[1];
    fl_font(FL_HELVETICA, textsize());
    const int left = w() - Fl::scrollbar_size() - columns_[0] - columns_[1] - edge;
    return !told.trouble && what_fits && fl_width(told.advice.c_str()) <= left;
}

std::vector<std::string> incident_list::lines_of(const entry& told) const {
    if (fits_in_one_line(told))
        return {plain + told.time + "\t" + bold + told.what + "\t" + plain + told.advice};
    std::vector<std::string> lines;
    const int text_w = std::max(w() - Fl::scrollbar_size() - edge, least_text_w);
    const auto add = [&](Fl_Font font, const char* format, const std::string& text) {
        fl_font(font, textsize());
        for (const std::string& line : folded(text, text_w)) lines.push_back(format + line);
    };
    if (told.trouble) {
        add(FL_HELVETICA_BOLD, trouble_format, told.what);
        return lines;
    }
    add(FL_HELVETICA_BOLD, bold, told.time + "  " + told.what);
    if (!told.advice.empty()) add(FL_HELVETICA, plain, told.advice);
    return lines;
}

void incident_list::fill() {
    clear();
    if (entries_.empty())
        add((std::string("@C45@.") + text_of(window_word::no_incident, language_)).c_str());
    for (const entry& each : entries_)
        for (const std::string& line : lines_of(each)) add(line.c_str());
}

void incident_list::add_first(const entry& told) {
    if (entries_.empty()) clear();
    entries_.push_front(told);
    int place = 0;
    for (const std::string& line : lines_of(told)) insert(++place, line.c_str());
    topline(1);
    if (entries_.size() <= most_entries) return;
    for (std::size_t left = lines_of(entries_.back()).size(); left > 0; --left) remove(size());
    entries_.pop_back();
}

void incident_list::show_news(session_news& news) {
    if (news.take_begun_again()) {
        entries_.clear();
        fill();
    }
    for (const session_news::incident& each : news.take_incidents()) {
        const told_incident told = tell_incident(each.text, language_);
        add_first({seconds_text(each.ms) + " s", told.what, told.advice});
    }
}

void incident_list::show_trouble(const std::string& why) { add_first({"", why, "", true}); }

void incident_list::resize(int x, int y, int w, int h) {
    const bool other_size = w != this->w() || h != this->h();
    Fl_Browser::resize(x, y, w, h);
    if (!other_size) return;
    size_text();
    fill();
}

void incident_list::draw() {
    const bool focused = Fl::focus() == this;
    // The toolkit would scroll the frame along with what it is around.
    if (focused) clear_damage(FL_DAMAGE_ALL);
    Fl_Browser::draw();
    if (focused) draw_focus();
}

// The toolkit's bar has the arrows.
int incident_list::handle(int event) {
    if (event == FL_FOCUS || event == FL_UNFOCUS) {
        redraw();
        return scrolls() || event == FL_UNFOCUS ? 1 : 0;
    }
    if (event == FL_KEYBOARD && Fl::focus() == this && scrolls()) return scrollbar.handle(event);
    return Fl_Browser::handle(event);
}
