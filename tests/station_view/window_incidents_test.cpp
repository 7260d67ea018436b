// Incidents as the window shows them: at once, and with what can be done about them.
#include <gtest/gtest.h>

#include <FL/Fl.H>
#include <FL/Fl_Double_Window.H>

#include "station_view/incident_advice.h"
#include "station_view/incident_list.h"
#include "tests/station_view/window_on_display.h"

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

/// Commands that bring about each incident, from the start of a session; waits stand between.
struct accident {
    const char* text;
    std::vector<std::vector<std::string>> requests;
};

using words = std::vector<std::string>;
const words base_at_3 = {"set", "MT=1", "MTA=1", "BZ3=1", "--until", "p3ok=1", "--timeout", "60"};

// clang-format off
const std::vector<accident> accidents = {
    {"colle répandue", {{"set", "DEPOSE=1"}}},
    {"tiroir bloqué", {{"set", "DESV=1", "--until", "vb=1"}, {"set", "SORT=1"}}},
    {"pièce perdue : lâchée", {{"set", "SORT=1", "--until", "ts=1"}, {"set", "DESV=1", "--until", "vb=1"},
        {"set", "ASPI=1", "--until", "vide=1"}, {"set", "DESV=0", "MONV=1", "--until", "vh=1"}, {"set", "ASPI=0"}}},
    {"support retenu", {base_at_3, {"set", "DESP=1", "--until", "pb=1"}, {"set", "BZ3=0"}}},
};
// clang-format on

TEST_F(WindowOnDisplay, AnIncidentAppearsAtOnceAndCounts) {
    for (const accident& each : accidents) {
        start({"--no-panel", "--speed", "5", "--bases", "1"});
        const auto before = pixels(window_layout::incidents, 2),
                   count = pixels(window_layout::incident_count, 2);
        for (const words& request : each.requests)
            ASSERT_EQ(live->io(request).status, 0) << each.text << live->process->err();
        EXPECT_TRUE(wait_until(
            [&] {
                return pixels(window_layout::incidents, 2) != before &&
                       pixels(window_layout::incident_count, 2) != count;
            },
            seconds(5)))
            << each.text;
        EXPECT_TRUE(wait_until(
            [&] { return live->told("dernier_incident").starts_with(each.text); }, seconds(5)))
            << each.text << " is not " << live->told("dernier_incident");
        live->end();
    }
}

}  // namespace
