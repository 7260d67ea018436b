#include "station_view/incident_list.h"

#include "session/session_report.h"
#include "station_view/incident_advice.h"
#include "station_view/window_style.h"
#include "station_view/window_words.h"

namespace {

// Pixels from the left: the time, what happened, what can be done.
constexpr int columns[] = {84, 390, 0};

// "@." ends the browser's formats: what follows is shown as it stands.
std::string line_of(const session_news::incident& incident, language in) {
    const told_incident told = tell_incident(incident.text, in);
    return "@." + seconds_text(incident.ms) + " s\t@b@." + told.what + "\t@." + told.advice;
}

}  // namespace

incident_list::incident_list(const window_layout::area& at, language in)
    : Fl_Browser(at.x, at.y, at.w, at.h), language_(in) {
    box(FL_BORDER_BOX);
    color(window_style::white);
    textsize(window_style::small_px);
    textcolor(window_style::ink);
    column_widths(columns);
    has_scrollbar(VERTICAL);
    show_none();
}

void incident_list::show_none() {
    clear();
    empty_ = true;
    add((std::string("@C45@.") + text_of(window_word::no_incident, language_)).c_str());
}

void incident_list::add_first(const std::string& line) {
    if (empty_) clear();
    empty_ = false;
    insert(1, line.c_str());
    if (size() > most_lines) remove(size());
    topline(1);
}

void incident_list::show_news(session_news& news) {
    if (news.take_begun_again()) show_none();
    for (const session_news::incident& each : news.take_incidents())
        add_first(line_of(each, language_));
}

void incident_list::show_trouble(const std::string& why) { add_first("@C1@b@." + why); }
