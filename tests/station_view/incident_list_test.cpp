// The window's list of incidents, line by line.
#include <gtest/gtest.h>

#include <FL/Fl.H>
#include <FL/Fl_Double_Window.H>
#include <FL/fl_draw.H>

#include <algorithm>
#include <array>
#include <regex>
#include <sstream>

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

/// Whether each line, or each of its columns, is as wide as there is room for it at most.
void expect_nothing_cut(const incident_list& list, const std::string& line) {
    int room = list.w() - Fl::scrollbar_size();
    const int* column = list.column_widths();
    std::istringstream cells(line);
    for (std::string cell; std::getline(cells, cell, '\t'); ++column) {
        fl_font(cell.starts_with("@b") ? FL_HELVETICA_BOLD : FL_HELVETICA, list.textsize());
        EXPECT_LT(fl_width(shown(cell).c_str()), cells.eof() ? room : *column) << line;
        room -= *column;
    }
}
void expect_nothing_cut(const incident_list& list) {
    for (int i = 1; i <= list.size(); ++i) expect_nothing_cut(list, list.text(i));
}

/// How many incidents there are: each begins with its time, "2.007 s".
std::size_t entries_in(const incident_list& list) {
    std::size_t count = 0;
    for (int i = 1; i <= list.size(); ++i)
        count += std::regex_search(shown(list.text(i)), std::regex("^[0-9]+\\.[0-9]{3} s "));
    return count;
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
        EXPECT_EQ(entries_in(list), static_cast<std::size_t>(i) + 1) << "the earlier ones stay";
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
        expect_nothing_cut(list);
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
            expect_nothing_cut(list);
        }
    }
}

TEST(IncidentList, InASmallWindowTheNewestIsSeenWholeWithItsAdvice) {
    Fl_Double_Window window(1400, 100);
    for (const auto& [w, h] : {std::array{1000, 240}, {1000, 300}, {1358, 244}, {1366, 300}}) {
        const window_layout::area at = window_layout::arranged(w, h).incidents;
        for (const language in : {language::french, language::english}) {
            for (int i = 0; i < static_cast<int>(station::incident::count); ++i) {
                window.begin();
                incident_list list(at, in);
                window.end();
                step_clock time(1, true, {});
                session_news news(time);
                tell(news, 9'999'990,
                     std::string(station::incident_text(static_cast<station::incident>(i))));
                list.show_news(news);
                fl_font(FL_HELVETICA_BOLD, list.textsize());
                const int edges = 2 * Fl::box_dy(list.box());
                EXPECT_LE(list.size() * fl_height(), at.h - edges) << words_of(list) << w;
            }
        }
    }
}

}  // namespace
