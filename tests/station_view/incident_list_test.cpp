// The window's list of incidents, line by line.
#include <gtest/gtest.h>

#include <FL/Fl.H>
#include <FL/Fl_Double_Window.H>

#include "station_view/incident_advice.h"
#include "station_view/incident_list.h"

namespace {

void tell(session_news& news, std::int64_t ms, const std::string& text) {
    const station_event event{ms, event_kind::incident, {}, 1, text, -1};
    news.read({&event, 1});
}

TEST(IncidentList, ShowsTheAdviceOfEachKindTheNewestFirst) {
    Fl_Double_Window window(1100, 100);
    incident_list list({0, 0, 1060, 60}, language::french);
    window.end();
    window.show();
    step_clock time(1, true, {});
    session_news news(time);
    for (int i = 0; i < static_cast<int>(station::incident::count); ++i) {
        const std::string text(station::incident_text(static_cast<station::incident>(i)));
        tell(news, 2007 + i, text);
        list.show_news(news);
        const std::string line = list.text(1);
        EXPECT_NE(line.find("2.0"), std::string::npos) << line;
        EXPECT_NE(line.find(text), std::string::npos) << line;
        EXPECT_NE(line.find(tell_incident(text, language::french).advice), std::string::npos);
        EXPECT_EQ(list.size(), i + 1) << "the earlier ones stay";
    }
    tell(news, 0, "@F1000 un autre");
    list.show_news(news);
    Fl::check();
    EXPECT_NE(std::string(list.text(1)).find("@.@F1000 un autre"), std::string::npos);
    for (int i = 0; i < 1000; ++i) {
        tell(news, i, "encore");
        list.show_news(news);
    }
    EXPECT_EQ(list.size(), incident_list::most_lines);
}

}  // namespace
