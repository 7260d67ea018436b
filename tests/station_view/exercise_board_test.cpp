// What the window tells of an exercise, without a display.
#include <gtest/gtest.h>

#include <algorithm>

#include "station_view/exercise_board.h"

namespace {

using sign = board_sign;
using texts = std::vector<std::string>;

constexpr language languages[] = {language::french, language::english};

exercise three_goals() {
    exercise task;
    task.title = {"Titre", "Title"};
    task.task = {"Une ligne\nqui continue.\n\nUn autre alinéa :\n- un point\n", ""};
    task.goals = {{{"un", "one"}, {}, 0, 20'000, 1},
                  {{"deux", ""}, {}, 500, {}, 2},
                  {{"trois", ""}, {}, 0, 10'000, 3}};
    task.bans = {{{"la colle coule", ""}, {}, 3}, {{"la presse descend", ""}, {}, 0}};
    task.balances = {{{"une bonne base", ""}, session_count::good, 1, {}, 4}};
    task.station.duration_ms = 60'000;
    return task;
}

/// As a judge leaves it at that time: so many goals reached, none late.
exercise_standing standing_of(const exercise& task, std::int64_t ms, std::size_t reached = 0) {
    exercise_standing standing;
    standing.ms = ms;
    standing.goals.resize(task.goals.size());
    standing.bans.resize(task.bans.size());
    standing.total = total_points(task);
    for (std::size_t i = 0; i < reached; ++i) {
        standing.goals[i].state = goal_state::reached;
        standing.goals[i].reached_ms = 1000 * static_cast<std::int64_t>(i + 1) + 340;
        standing.points += task.goals[i].points;
    }
    if (reached == task.goals.size()) return standing;
    standing.goals[reached].state = goal_state::current;
    standing.next_goal = reached + 1;
    if (const auto within = task.goals[reached].within_ms)
        standing.goal_limit_ms = *within + (reached ? *standing.goals[reached - 1].reached_ms : 0);
    return standing;
}

exercise_board french(const exercise& task, const exercise_standing& standing,
                      const std::string& answer = "") {
    return board_of(task, standing, answer, language::french);
}

/// The line that begins so; one that says so where there is none.
board_line line_with(const exercise_board& board, const std::string& begin) {
    for (const board_line& each : board.lines)
        if (each.text.starts_with(begin)) return each;
    return {sign::text, "there is no " + begin, ""};
}

bool says(const exercise_board& board, const std::string& what) {
    const auto in = [&](const std::string& text) { return text.find(what) != text.npos; };
    bool found = in(board.title) || in(board.points) || in(board.time);
    for (const board_line& each : board.lines) found = found || in(each.text) || in(each.note);
    return found;
}

TEST(ExerciseBoard, AGoalIsToComeCurrentReachedOrTooLate) {
    const exercise task = three_goals();
    exercise_standing late = standing_of(task, 30'000, 1);
    late.goals[0].state = goal_state::too_late;
    late.goals[0].reached_ms = 25'120;
    exercise_standing ended = standing_of(task, 60'000, 1);
    ended.over_ms = 60'000;
    const struct {
        exercise_standing standing;
        std::string begin;
        board_sign sign;
        std::string note;
    } cases[] = {
        {standing_of(task, 0), "1.", sign::current, "reste 20 s"},
        {standing_of(task, 1), "1.", sign::current, "reste 20 s"},
        {standing_of(task, 1010), "1.", sign::current, "reste 19 s"},
        {standing_of(task, 20'000), "1.", sign::current, "reste 0 s"},
        {standing_of(task, 20'010), "1.", sign::overdue, "trop tard"},
        {standing_of(task, 0), "2.", sign::to_come, "2 points"},
        {standing_of(task, 1340, 1), "1.", sign::reached, "1.34 s"},
        {standing_of(task, 1340, 1), "2.", sign::current, "2 points"},
        {standing_of(task, 2340, 2), "3.", sign::current, "reste 10 s"},
        {late, "1.", sign::too_late, "trop tard, 25.12 s"},
        {ended, "2.", sign::missed, "pas atteint"},
        {ended, "3.", sign::missed, "pas atteint"},
    };
    for (const auto& [standing, begin, expected, note] : cases) {
        const board_line line = line_with(french(task, standing), begin);
        EXPECT_EQ(line.sign, expected) << begin << " at " << standing.ms << ": " << line.text;
        EXPECT_EQ(line.note, note) << begin << " at " << standing.ms;
    }
    EXPECT_EQ(line_with(french(task, standing_of(task, 0)), "2.").text, "2. deux (à tenir 0.5 s)");
}

TEST(ExerciseBoard, TheCurrentGoalIsTheLineToBeSeen) {
    const exercise task = three_goals();
    for (std::size_t reached = 0; reached < 3; ++reached) {
        const exercise_board board = french(task, standing_of(task, 5000, reached));
        const int line = current_line(board);
        ASSERT_GE(line, 0) << reached;
        EXPECT_TRUE(board.lines[static_cast<std::size_t>(line)].text.starts_with(
            std::to_string(reached + 1) + "."));
    }
    EXPECT_EQ(current_line(french(task, standing_of(task, 5000, 3))), -1);
}

TEST(ExerciseBoard, TellsPointsAndTheTimeThatIsLeft) {
    const exercise task = three_goals();
    const exercise_board board = french(task, standing_of(task, 12'340, 2));
    EXPECT_EQ(board.title, "Titre");
    EXPECT_EQ(board.points, "3 / 10 points");
    EXPECT_EQ(board.time, "reste 48 s");
    EXPECT_EQ(board.result, board_result::none);
    exercise endless = task;
    endless.station.duration_ms.reset();
    EXPECT_EQ(french(endless, standing_of(endless, 12'340)).time, "");
}

TEST(ExerciseBoard, IsTheSameAsLongAsNothingThatItTellsChanges) {
    const exercise task = three_goals();
    const exercise_board first = french(task, standing_of(task, 10));
    EXPECT_EQ(french(task, standing_of(task, 990)), first);
    EXPECT_NE(french(task, standing_of(task, 1000)), first);
}

TEST(ExerciseBoard, WhatMustNotHappenDidOrDidNot) {
    const exercise task = three_goals();
    exercise_standing standing = standing_of(task, 5000);
    standing.bans[1] = 4990;
    const exercise_board board = french(task, standing);
    EXPECT_EQ(line_with(board, "la colle").sign, sign::not_happened);
    EXPECT_EQ(line_with(board, "la colle").text, "la colle coule (-3 points)");
    EXPECT_EQ(line_with(board, "la presse").sign, sign::happened);
    EXPECT_EQ(line_with(board, "la presse").note, "à 4.99 s");
}

TEST(ExerciseBoard, ACountIsKeptUpToNowAndCountsInTheEnd) {
    const exercise task = three_goals();
    const struct {
        int good;
        bool over;
        board_sign sign;
        std::string note;
    } cases[] = {{0, false, sign::to_come, "0 / 1"},
                 {1, false, sign::kept, "1 / 1"},
                 {0, true, sign::missed, "0 / 1"},
                 {2, true, sign::reached, "2 / 1"}};
    for (const auto& [good, over, expected, note] : cases) {
        exercise_standing standing = standing_of(task, 5000);
        standing.counts[0] = good;
        if (over) standing.over_ms = 5000;
        const board_line line = line_with(french(task, standing), "une bonne base");
        EXPECT_EQ(line.sign, expected) << good << over;
        EXPECT_EQ(line.note, note);
    }
}

TEST(ExerciseBoard, SaysWhetherItIsPassed) {
    const exercise task = three_goals();
    exercise_standing standing = standing_of(task, 5000);
    standing.over_ms = 5000;
    EXPECT_EQ(french(task, standing).result, board_result::failed);
    EXPECT_EQ(french(task, standing).time, "Non réussi");
    standing.passed = true;
    EXPECT_EQ(french(task, standing).result, board_result::passed);
    EXPECT_EQ(board_of(task, standing, "", language::english).time, "Passed");
}

TEST(ExerciseBoard, ParagraphsAreNotBrokenWhereTheFileIs) {
    texts found;
    for (const board_line& each : task_of_board(three_goals(), language::french))
        found.push_back(each.text);
    EXPECT_EQ(found, (texts{"Une ligne qui continue.", "", "Un autre alinéa :", "- un point"}));
}

TEST(ExerciseBoard, IsEnglishWhereTheExerciseIs) {
    const exercise task = three_goals();
    const exercise_board board = board_of(task, standing_of(task, 0), "", language::english);
    EXPECT_EQ(board.title, "Title");
    EXPECT_EQ(line_with(board, "1.").text, "1. one");
    EXPECT_EQ(line_with(board, "1.").note, "left: 20 s");
    EXPECT_EQ(line_with(board, "2.").text, "2. deux (to be held for 0.5 s)") << "it has no English";
}

exercise with_faults() {
    exercise task = three_goals();
    task.station.faults = {{"te", fault_kind::stuck0}};
    task.station.hidden_faults = {{"b2s", fault_kind::stuck1}, {"MT", fault_kind::slow}};
    task.diagnosis = {{{"b2s", fault_kind::stuck1}}, 5};
    return task;
}

TEST(ExerciseBoard, HiddenFaultsAreToldOnceItIsOver) {
    const exercise task = with_faults();
    exercise_standing standing = standing_of(task, 5000);
    for (const language in : languages) {
        const exercise_board board = board_of(task, standing, "", in);
        const std::vector<board_line> told = task_of_board(task, in);
        EXPECT_TRUE(told.back().text.ends_with("(te=stuck0)")) << told.back().text;
        for (const char* const hidden : {"b2s", "stuck1", "slow", "MT"})
            EXPECT_FALSE(says(board, hidden) ||
                         std::ranges::any_of(told,
                                             [&](const board_line& each) {
                                                 return each.text.find(hidden) != std::string::npos;
                                             }))
                << hidden;
    }
    standing.over_ms = 5000;
    EXPECT_TRUE(says(french(task, standing), "b2s=stuck1"));
    EXPECT_TRUE(says(french(task, standing), "MT=slow"));
}

TEST(ExerciseBoard, ShowsTheLastAnswerButNotWhetherItIsRight) {
    const exercise task = with_faults();
    exercise_standing standing = standing_of(task, 5000);
    EXPECT_EQ(line_with(french(task, standing), "pas encore de réponse").sign, sign::to_come);
    const struct {
        std::string answer, first;
        board_sign before, after;
    } cases[] = {{"b2s=stuck1", "b2s : reste à 1", sign::kept, sign::reached},
                 {"te=late b2s=stuck1", "te : répond", sign::kept, sign::missed}};
    for (const auto& [answer, first, before, after] : cases) {
        exercise_standing answered = standing;
        answered.answer = answer;
        answered.answered_ms = 4000;
        EXPECT_EQ(line_with(french(task, answered, answer), first).sign, before) << answer;
        answered.over_ms = 5000;
        EXPECT_EQ(line_with(french(task, answered, answer), first).sign, after) << answer;
    }
    standing.over_ms = 5000;
    EXPECT_EQ(line_with(french(task, standing), "pas de réponse").sign, sign::missed);
}

// A character is as wide as a pixel here.
int count_of(std::string_view text) { return static_cast<int>(text.size()); }

TEST(Wrapped, BreaksAtBlanksAndInLongWords) {
    const struct {
        std::string text;
        int room;
        texts lines;
    } cases[] = {{"", 5, {""}},
                 {"un deux", 10, {"un deux"}},
                 {"un deux", 7, {"un deux"}},
                 {"un deux", 6, {"un", "deux"}},
                 {"un deux trois", 7, {"un deux", "trois"}},
                 {"un deux : trois", 7, {"un", "deux :", "trois"}},
                 {"un deux ! ? trois", 9, {"un", "deux ! ?", "trois"}},
                 {"abcdef", 4, {"abcd", "ef"}},
                 {"un abcdef", 4, {"un", "abcd", "ef"}},
                 {"éé", 2, {"é", "é"}},
                 {"ab", 0, {"a", "b"}}};
    for (const auto& [text, room, lines] : cases)
        EXPECT_EQ(wrapped(text, room, count_of), lines) << text << " in " << room;
}

TEST(Wrapped, MeasuresNoMoreThanALineOfALongText) {
    const std::string text(1 << 20, 'x');
    std::size_t longest = 0;
    const auto measure = [&](std::string_view part) {
        longest = std::max(longest, part.size());
        return count_of(part);
    };
    EXPECT_EQ(wrapped(text, 100, measure).size(), (text.size() + 99) / 100);
    EXPECT_LE(longest, 400u);
}

TEST(Wrapped, LosesNothingButBlanks) {
    const std::string text = "un deux  trois, quatre-vingt-dix-neuf  et à la fin";
    for (int room = 0; room < 60; ++room) {
        std::string joined, expected = text;
        for (const std::string& each : wrapped(text, room, count_of)) {
            EXPECT_TRUE(count_of(each) <= std::max(room, 2)) << each << " in " << room;
            joined += each;
        }
        std::erase(joined, ' ');
        std::erase(expected, ' ');
        EXPECT_EQ(joined, expected) << room;
    }
}

}  // namespace
