// What the window decides without a display: its words and keys, the journal, the
// station whose inputs are set by hand.
#include <gtest/gtest.h>

#include <set>

#include "session/station_run.h"
#include "station_view/fault_labels.h"
#include "station_view/incident_advice.h"
#include "station_view/journal.h"
#include "station_view/session_news.h"
#include "station_view/time_panel.h"
#include "station_view/window_actions.h"
#include "station_view/window_words.h"
#include "tests/station_view/looking.h"

namespace {

constexpr language languages[] = {language::french, language::english};

TEST(WindowActions, EachHasAKeyOfItsOwnThatItsTooltipTells) {
    std::set<std::pair<int, bool>> keys;
    for (int i = 0; i < static_cast<int>(window_action::count); ++i) {
        const auto action = static_cast<window_action>(i);
        const action_row& row = row_of_action(action);
        EXPECT_TRUE(keys.insert({row.symbol, row.shift}).second) << row.label.french;
        EXPECT_EQ(action_of_key(row.symbol, row.shift), action) << row.label.french;
        for (const language in : languages) {
            const std::string tip = tooltip_of(action, in);
            EXPECT_TRUE(tip.ends_with(std::string(" ") + row.key_name.in(in) + ")")) << tip;
        }
    }
    EXPECT_FALSE(action_of_key('z', false));
    EXPECT_FALSE(action_of_key('p', true));
}

TEST(WindowWords, NoneIsEmpty) {
    for (int i = 0; i < static_cast<int>(window_word::count); ++i)
        for (const language in : languages)
            EXPECT_STRNE(text_of(static_cast<window_word>(i), in), "") << i;
}

/// With small letters only.
std::string lowered(std::string text) {
    for (std::size_t at; (at = text.find("Ê")) != std::string::npos;)
        text.replace(at, std::string_view("Ê").size(), "ê");
    for (char& each : text)
        if (each >= 'A' && each <= 'Z') each = static_cast<char>(each - 'A' + 'a');
    return text;
}

TEST(WindowWords, TheColumnAndTheDrawingHaveOneNameForHowTheStationIs) {
    const struct {
        session_mode mode;
        bool stopped;
        const char* thing;
        window_word word;
    } cases[] = {{session_mode::running, false, "running", window_word::running},
                 {session_mode::running, true, "emergency_stop", window_word::emergency},
                 {session_mode::paused, true, "emergency_stop", window_word::emergency},
                 {session_mode::replay, false, "replay", window_word::replay},
                 {session_mode::link_dead, false, "link_dead", window_word::dead_link}};
    for (const auto& [mode, stopped, thing, word] : cases)
        for (const language in : languages) {
            station_scene scene;
            scene.mode = mode;
            scene.state.emergency_stop = stopped;
            scene.english = in == language::english;
            const auto told = texts_of(shapes_of(draw_station(scene, 1000, 300), thing));
            ASSERT_FALSE(told.empty()) << thing;
            for (const std::string& each : told)
                EXPECT_EQ(lowered(each), lowered(text_of(word, in))) << thing;
        }
}

TEST(IncidentAdvice, EveryIncidentHasOneInBothLanguages) {
    for (int i = 0; i < static_cast<int>(station::incident::count); ++i) {
        const auto kind = static_cast<station::incident>(i);
        const std::string_view text = station::incident_text(kind);
        const told_incident french = tell_incident(text, language::french),
                            english = tell_incident(text, language::english);
        EXPECT_EQ(french.what, text);
        EXPECT_NE(english.what, text);
        EXPECT_GT(french.advice.size(), 20u) << text;
        EXPECT_GT(english.advice.size(), 20u) << text;
        EXPECT_NE(french.advice, english.advice) << text;
    }
    const told_incident other = tell_incident("autre chose", language::english);
    EXPECT_EQ(other.what, "autre chose");
    EXPECT_EQ(other.advice, "");
}

TEST(FaultLabels, NameTheFaultAsItIsTyped) {
    for (int i = 0; i < static_cast<int>(fault_kind::count); ++i) {
        const auto kind = static_cast<fault_kind>(i);
        for (const language in : languages) {
            const std::string sentence = fault_sentence({"te", kind}, in);
            EXPECT_TRUE(sentence.starts_with("te")) << sentence;
            EXPECT_TRUE(sentence.ends_with("(te=" + std::string(fault_kind_word(kind)) + ")"))
                << sentence;
            EXPECT_STRNE(fault_column(kind, in), "");
        }
    }
}

TEST(TimePanel, ItsSpeedsGoByOneTwoFive) {
    const struct {
        double from, faster, slower;
    } cases[] = {{0.1, 0.2, 0.1},  {1, 2, 0.5},    {3, 5, 2},
                 {0.15, 0.2, 0.1}, {100, 100, 50}, {50, 100, 20}};
    for (const auto& [from, faster, slower] : cases) {
        EXPECT_EQ(next_speed(from, true), faster) << from;
        EXPECT_EQ(next_speed(from, false), slower) << from;
    }
}

station_event input_event(std::int64_t ms, std::string_view name, int value) {
    return {ms, event_kind::input, name, value, {}, 0};
}

std::vector<std::string> journal_lines(const std::vector<station_event>& events,
                                       const std::string& title = "",
                                       language in = language::french) {
    journal kept;
    kept.read(events);
    return kept.lines(title, in);
}

TEST(Journal, IsATableOfTimeKindNameAndValue) {
    const std::string text(station::incident_text(station::incident::glue_spilled));
    const std::vector<station_event> events = {input_event(40, "te", 1),
                                               {2007, event_kind::incident, {}, 1, text, -1}};
    const std::vector<std::string> lines = journal_lines(events);
    EXPECT_EQ(lines[lines.size() - 3], " 0.040#entrée#te#1");
    EXPECT_EQ(lines[lines.size() - 2], " 2.007#incident#1#" + text);
    EXPECT_EQ(lines.back(), "#T");
    EXPECT_EQ(journal_lines(events, "", language::english)[lines.size() - 2],
              " 2.007#incident#1#glue spilled: no base at zone 1");
}

TEST(Journal, IsEnglishInEveryColumnOnDemand) {
    const std::vector<station_event> events = {{0, event_kind::session, "titre", 0, "poste 7", -1},
                                               {0, event_kind::session, "graine", 29, {}, -1},
                                               {0, event_kind::session, "pieces", 1000, {}, -1},
                                               {0, event_kind::output, "pieces", 1, {}, 0},
                                               {10, event_kind::session, "bonnes", 1, {}, -1},
                                               {10, event_kind::session, "mauvaises", 1, {}, -1}};
    const std::vector<std::string> lines = journal_lines(events, "poste 7", language::english);
    EXPECT_EQ(lines[2], " Journal of the session: poste 7");
    EXPECT_EQ(lines[5], " time in s#kind#name#value");
    const std::vector<std::string> rows(lines.begin() + 7, lines.end() - 1);
    EXPECT_EQ(rows,
              (std::vector<std::string>{" 0.000#session#title#poste 7", " 0.000#session#seed#29",
                                        " 0.000#session#parts#1000", " 0.000#output#pieces#1",
                                        " 0.010#session#good#1", " 0.010#session#bad#1"}));
}

TEST(Journal, TakesNoTextForMarkup) {
    const std::vector<std::string> lines = journal_lines({input_event(0, "#T#", 1)}, "#P");
    EXPECT_EQ(lines[2], " Journal de la session : *P");
    EXPECT_EQ(lines[lines.size() - 2], " 0.000#entrée#*T*#1");
}

TEST(Journal, TellsWhatAnExerciseSaysButNotHowManyFaultsItHides) {
    const auto exercise_event = [](std::string_view name, std::int64_t value,
                                   std::string_view text) {
        return station_event{0, event_kind::exercise, name, value, text};
    };
    const std::vector<std::string> lines = journal_lines(
        {exercise_event("titre", 0, "Coller"), exercise_event("empreinte", 0, "0123abcd"),
         exercise_event("pannes_cachees", 2, ""), exercise_event("but", 1, "")});
    ASSERT_GE(lines.size(), 3u);
    EXPECT_EQ(lines[lines.size() - 3], " 0.000#exercice#titre#Coller");
    EXPECT_EQ(lines[lines.size() - 2], " 0.000#exercice#but#1");
    for (const std::string& each : lines) {
        EXPECT_EQ(each.find("pannes_cachees"), std::string::npos) << each;
        EXPECT_EQ(each.find("0123abcd"), std::string::npos) << each;
    }
}

TEST(Journal, KeepsTheLastRowsAndSaysHowManyItForgot) {
    journal kept;
    const std::int64_t many = 3 * static_cast<std::int64_t>(journal::most_rows);
    for (std::int64_t i = 0; i < many; ++i) {
        const station_event event = input_event(i * 10, "te", static_cast<int>(i % 2));
        kept.read({&event, 1});
    }
    const std::vector<std::string> lines = kept.lines("", language::french);
    EXPECT_EQ(lines[3], " lignes plus anciennes oubliées : " +
                            std::to_string(many - static_cast<std::int64_t>(journal::most_rows)));
    EXPECT_LE(lines.size(), journal::most_rows + 10);
    EXPECT_EQ(lines[lines.size() - 2], " 149.990#entrée#te#1");
}

TEST(SessionNews, KeepsTheLastIncidentsUntilTheyAreTaken) {
    step_clock time(1, true, {});
    session_news news(time);
    for (int i = 0; i < 250; ++i) {
        const std::string text = std::to_string(i);
        const station_event event{i, event_kind::incident, {}, i + 1, text, -1};
        news.read({&event, 1});
    }
    const auto taken = news.take_incidents();
    ASSERT_EQ(taken.size(), session_news::most_incidents);
    EXPECT_EQ(taken.back().text, "249");
    EXPECT_TRUE(news.take_incidents().empty());
}

TEST(SessionNews, RunsToTheNextChangeAndNoFurther) {
    step_clock time(1, false, {});
    session_news news(time);
    news.run_to_next_change();
    EXPECT_TRUE(time.paused());
    EXPECT_EQ(time.steps_left(), session_news::most_steps);
    news.read({});
    time.stepped();
    EXPECT_EQ(time.steps_left(), session_news::most_steps - 1);
    const station_event event = input_event(20, "te", 0);
    news.read({&event, 1});
    time.stepped();
    EXPECT_FALSE(time.due({}));
    EXPECT_FALSE(news.nothing_changed());
}

TEST(SessionNews, TellsThatNothingChanged) {
    step_clock time(1, true, {});
    session_news news(time);
    EXPECT_FALSE(news.nothing_changed());
    news.run_to_next_change();
    for (int i = 0; i < session_news::most_steps; ++i) time.stepped();
    EXPECT_TRUE(news.nothing_changed());
    news.forget_run();
    EXPECT_FALSE(news.nothing_changed());
}

}  // namespace
