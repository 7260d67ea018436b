// The window's list of incidents, line by line.
#include <gtest/gtest.h>

#include <FL/Fl.H>
#include <FL/Fl_Double_Window.H>
#include <FL/fl_draw.H>

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
    EXPECT_EQ(list.size(), incident_list::most_entries);
}

TEST(IncidentList, FoldsWhatItHasNoRoomForSoThatTheAdviceIsRead) {
    Fl_Double_Window window(1100, 100);
    incident_list list({0, 0, 1060, 60}, language::french);
    window.end();
    window.show();
    step_clock time(1, true, {});
    session_news news(time);
    tell(news, 2007, std::string(station::incident_text(station::incident::part_lost)));
    tell(news, 3007, std::string(station::incident_text(station::incident::glue_spilled)));
    list.show_news(news);
    EXPECT_EQ(list.size(), 2);
    const auto words = [&list] {
        std::string all;
        for (int i = 1; i <= list.size(); ++i) {
            const std::string line = list.text(i);
            const std::string shown = line.substr(line.rfind("@.") + 2);
            fl_font(line.starts_with("@b") ? FL_HELVETICA_BOLD : FL_HELVETICA, list.textsize());
            EXPECT_LT(fl_width(shown.c_str()), list.w() - Fl::scrollbar_size()) << shown;
            all += shown + " ";
        }
        return all;
    };
    for (const int w : {1000, 700, 358, 200}) {
        list.resize(0, 0, w, 60);
        const std::string all = words();
        for (const auto kind : {station::incident::part_lost, station::incident::glue_spilled}) {
            const told_incident told = tell_incident(kind, language::french);
            EXPECT_NE(all.find(told.what + " " + told.advice), std::string::npos) << all;
        }
        EXPECT_TRUE(all.starts_with("3.007 s")) << w;
    }
    EXPECT_GT(list.size(), 6);
    for (int i = 0; i < 1000; ++i)
        tell(news, i, "un deux trois quatre cinq six sept huit neuf dix");
    list.show_news(news);
    list.resize(0, 0, 1060, 60);
    EXPECT_EQ(list.size(), 2 + static_cast<int>(session_news::most_incidents));
}

}  // namespace
