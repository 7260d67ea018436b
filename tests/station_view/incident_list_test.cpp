// The window's list of incidents, line by line.
#include <gtest/gtest.h>

#include <FL/Fl.H>
#include <FL/Fl_Double_Window.H>
#include <FL/fl_draw.H>

#include <algorithm>
#include <array>

#include "station_view/incident_advice.h"
#include "station_view/incident_list.h"

namespace {

void tell(session_news& news, std::int64_t ms, const std::string& text) {
    const station_event event{ms, event_kind::incident, {}, 1, text, -1};
    news.read({&event, 1});
}

/// A line's words without their formats, its columns with a blank between.
std::string shown(std::string line) {
    for (const std::string format : {"@b@.", "@."})
        for (std::size_t at; (at = line.find(format)) != std::string::npos;)
            line.erase(at, format.size());
    std::ranges::replace(line, '\t', ' ');
    return line;
}

std::string words_of(const incident_list& list) {
    std::string all;
    for (int i = 1; i <= list.size(); ++i) all += shown(list.text(i)) + " ";
    return all;
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
        const std::string next = list.size() > 1 ? list.text(2) : "";
        EXPECT_NE((line + next).find(tell_incident(text, language::french).advice),
                  std::string::npos);
        EXPECT_GE(list.size(), i + 1) << "the earlier ones stay";
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
    EXPECT_EQ(list.size(), 3) << "what was lost is too long for its column";
    const auto words = [&list] {
        for (int i = 1; i <= list.size(); ++i) {
            const std::string line = list.text(i);
            if (line.find('\t') != std::string::npos) continue;
            fl_font(line.starts_with("@b") ? FL_HELVETICA_BOLD : FL_HELVETICA, list.textsize());
            EXPECT_LT(fl_width(shown(line).c_str()), list.w() - Fl::scrollbar_size()) << line;
        }
        return words_of(list);
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
    EXPECT_EQ(list.size(), 3 + static_cast<int>(session_news::most_incidents));
}

TEST(IncidentList, ItsTextsGrowWithItsHeight) {
    Fl_Double_Window window(3000, 400);
    incident_list list(window_layout::incidents, language::french);
    window.end();
    EXPECT_EQ(list.textsize(), 12);
    for (const auto& [w, h, least_px] :
         {std::array{1060, 60, 12}, {1540, 95, 16}, {3400, 176, 28}}) {
        list.resize(0, 0, w, h);
        EXPECT_GE(list.textsize(), least_px) << h;
        fl_font(FL_HELVETICA_BOLD, list.textsize());
        EXPECT_LE(4 * fl_height(), h) << "four lines";
    }
}

TEST(IncidentList, CutsNothingAtTheSizeInWhichItOpens) {
    Fl_Double_Window window(1100, 100);
    const int opens_w = window_layout::incidents.w;
    for (const language in : {language::french, language::english}) {
        for (int i = 0; i < static_cast<int>(station::incident::count); ++i) {
            window.begin();
            incident_list list({0, 0, opens_w, 60}, in);
            window.end();
            step_clock time(1, true, {});
            session_news news(time);
            // As late as a lesson's is.
            tell(news, 9'999'990,
                 std::string(station::incident_text(static_cast<station::incident>(i))));
            list.show_news(news);
            for (int line = 1; line <= list.size(); ++line) {
                int room = opens_w - Fl::scrollbar_size();
                const int* column = list.column_widths();
                for (std::string_view left = list.text(line); !left.empty(); ++column) {
                    const std::string cell(left.substr(0, left.find('\t')));
                    const bool last = cell.size() == left.size();
                    left.remove_prefix(last ? left.size() : cell.size() + 1);
                    fl_font(cell.starts_with("@b") ? FL_HELVETICA_BOLD : FL_HELVETICA,
                            list.textsize());
                    const double wide = fl_width(cell.substr(cell.rfind("@.") + 2).c_str());
                    EXPECT_LE(wide, last ? room : *column) << cell;
                    room -= *column;
                }
            }
        }
    }
}

}  // namespace
