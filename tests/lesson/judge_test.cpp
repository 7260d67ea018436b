// The judge against one that looks through the whole history for each rule.
#include "lesson/judge.h"

#include <gtest/gtest.h>

#include <map>

#include "tests/lesson/random_exercise.h"

namespace {

constexpr std::uint32_t lessons = 10'000;

/// The words of a standing that two judges must agree on.
std::string text_of(const exercise_standing& standing) {
    std::ostringstream text;
    const auto time = [&](const std::optional<std::int64_t>& ms) {
        text << ' ' << (ms ? std::to_string(*ms) : "-");
    };
    time(standing.over_ms);
    text << " buts";
    for (const goal_standing& each : standing.goals) {
        time(each.reached_ms);
        if (each.state == goal_state::too_late) text << 'L';
    }
    text << " jamais";
    for (const auto& each : standing.bans) time(each);
    text << " indices";
    for (const auto& each : standing.hints) time(each);
    text << " '" << standing.answer << "' " << standing.points << '/' << standing.total
         << (standing.passed ? " reussi" : " echoue");
    return text.str();
}

std::string text_of(const slow_verdict& verdict) {
    exercise_standing standing;
    standing.over_ms = verdict.over_ms;
    for (const slow_goal& each : verdict.goals)
        standing.goals.push_back(
            {each.late ? goal_state::too_late : goal_state::open, each.reached_ms});
    standing.bans = verdict.bans;
    standing.hints = verdict.hints;
    standing.answer = verdict.answer;
    standing.points = verdict.points;
    standing.total = verdict.total;
    standing.passed = verdict.passed;
    return text_of(standing);
}

using steps_of_events = std::vector<std::vector<station_event>>;

/// As a session hands them over: step by step, and told the time after each.
void read_live(judge& judge, const steps_of_events& steps) {
    std::int64_t ms = 0;
    for (std::size_t i = 0; i + 1 < steps.size(); ++i, ms += 10) {
        judge.read(steps[i]);
        judge.look_until(ms);
    }
    judge.read(steps.back());
}

std::vector<station_event> all_of(const steps_of_events& steps) {
    std::vector<station_event> all;
    for (const auto& each : steps) all.insert(all.end(), each.begin(), each.end());
    return all;
}

/// In pieces that know nothing of steps.
void read_in_pieces(judge& judge, std::span<const station_event> events, random_lesson& random) {
    while (!events.empty()) {
        const auto most = std::min<std::int64_t>(std::ssize(events), 1 + random.below(9));
        const auto count = static_cast<std::size_t>(most);
        judge.read(events.first(count));
        events = events.subspan(count);
    }
}

TEST(Judge, AgreesWithTheSlowOneHoweverTheEventsCome) {
    for (std::uint32_t seed = 0; seed < lessons; ++seed) {
        random_lesson random(seed);
        const exercise task = random.task();
        const history looks = random.looks();
        const std::string right = text_of(slow_judge(task, looks).verdict());
        const steps_of_events steps = events_of(looks);
        const std::vector<station_event> all = all_of(steps);
        judge live(task), at_once(task), one_by_one(task), pieces(task);
        read_live(live, steps);
        at_once.read(all);
        for (const station_event& each : all) one_by_one.read({&each, 1});
        read_in_pieces(pieces, all, random);
        ASSERT_EQ(text_of(live.standing()), right) << "seed " << seed;
        ASSERT_EQ(text_of(at_once.standing()), right) << "at once, seed " << seed;
        ASSERT_EQ(text_of(one_by_one.standing()), right) << "one by one, seed " << seed;
        ASSERT_EQ(text_of(pieces.standing()), right) << "pieces, seed " << seed;
    }
}

// What the random lessons are worth: each of these happens, and more than now and then.
TEST(Judge, TheRandomLessonsHaveItAll) {
    std::map<std::string, int> found;
    for (std::uint32_t seed = 0; seed < lessons; ++seed) {
        random_lesson random(seed);
        const exercise task = random.task();
        const history looks = random.looks();
        const slow_verdict verdict = slow_judge(task, looks).verdict();
        const auto last = static_cast<std::int64_t>(looks.size() - 1) * 10;
        std::int64_t before = 0;
        for (std::size_t i = 0; i < verdict.goals.size(); ++i) {
            const auto& [reached, late] = verdict.goals[i];
            const exercise_goal& goal = task.goals[i];
            if (!reached) break;
            found["late"] += late;
            found["just in time"] += goal.within_ms == *reached - before;
            found["at once with the one before"] += i > 0 && *reached == before;
            found["at 0"] += *reached == 0;
            found["after a hold"] += goal.hold_ms > 0;
            before = *reached;
        }
        for (const auto& each : verdict.bans)
            found["a ban at the last look"] += each == verdict.over_ms;
        found["a hint"] += std::ranges::count_if(verdict.hints, [](auto& each) { return !!each; });
        found["over before the session"] += verdict.over_ms < last;
        found["over by its duration"] += task.station.duration_ms <= verdict.over_ms;
        found["answered"] += !verdict.answer.empty() && task.diagnosis;
        found["passed"] += verdict.passed;
        found["more taken off than won"] += verdict.points == 0 && verdict.total > 0;
    }
    EXPECT_EQ(found.size(), 12U);
    for (const auto& [what, times] : found) EXPECT_GT(times, 200) << what;
}

/// Where a lesson stands after a part of its events.
std::vector<exercise_standing> standings_of(const exercise& task, const steps_of_events& steps) {
    std::vector<exercise_standing> found;
    judge judge(task);
    std::int64_t ms = 0;
    for (const auto& each : steps) {
        judge.read(each);
        judge.look_until(ms);
        found.push_back(judge.standing());
        ms += 10;
    }
    return found;
}

TEST(Judge, WhatItSaysOnTheWayKeepsItsLaws) {
    for (std::uint32_t seed = 0; seed < 2000; ++seed) {
        random_lesson random(seed);
        const exercise task = random.task();
        const history looks = random.looks();
        const auto standings = standings_of(task, events_of(looks));
        for (std::size_t i = 0; i < standings.size(); ++i) {
            const exercise_standing& now = standings[i];
            ASSERT_GE(now.points, 0);
            ASSERT_LE(now.points, now.total) << "seed " << seed;
            ASSERT_EQ(now.total, total_points(task));
            std::int64_t before = 0;
            std::size_t reached = 0;
            for (const goal_standing& each : now.goals) {
                if (!each.reached_ms) break;
                ASSERT_GE(*each.reached_ms, before) << "seed " << seed;
                before = *each.reached_ms;
                ++reached;
            }
            for (std::size_t j = reached; j < now.goals.size(); ++j)
                ASSERT_EQ(now.goals[j].state,
                          j == reached ? goal_state::current : goal_state::open);
            ASSERT_EQ(now.next_goal, reached < now.goals.size() ? reached + 1 : 0);
            if (i == 0 || !standings[i - 1].over_ms) continue;
            ASSERT_EQ(text_of(now), text_of(standings[i - 1])) << "seed " << seed;
        }
    }
}

TEST(Judge, NothingChangesItsVerdictAfterTheEnd) {
    for (std::uint32_t seed = 0; seed < 2000; ++seed) {
        random_lesson random(seed);
        const exercise task = random.task();
        const history looks = random.looks();
        judge judge(task);
        for (const auto& each : events_of(looks)) judge.read(each);
        const std::string verdict = text_of(judge.standing());
        const history more = random.looks();
        for (const auto& step : events_of(more))
            for (station_event each : step) {
                each.ms += 1'000'000;
                if (!begins_a_run(each)) judge.read({&each, 1});
            }
        judge.look_until(10'000'000);
        judge.end(20'000'000);
        ASSERT_EQ(text_of(judge.standing()), verdict) << "seed " << seed;
    }
}

TEST(Judge, ARunThatBeginsAgainIsJudgedAnew) {
    for (std::uint32_t seed = 0; seed < 2000; ++seed) {
        random_lesson random(seed);
        const exercise task = random.task();
        const history first = random.looks(), second = random.looks();
        judge judge(task);
        auto left = random.below(40);
        for (const auto& each : events_of(first))
            if (left-- > 0) judge.read(each);
        for (const auto& each : events_of(second)) judge.read(each);
        ASSERT_EQ(text_of(judge.standing()), text_of(slow_judge(task, second).verdict()))
            << "seed " << seed;
    }
}

// Cut off after any row: it is over at the last look that is whole, and no row of the next one
// counts.
TEST(Judge, ARecordingThatWasCutIsJudgedToItsLastWholeStep) {
    for (std::uint32_t seed = 0; seed < 2000; ++seed) {
        random_lesson random(seed);
        const exercise task = random.task();
        const history looks = random.looks();
        const steps_of_events steps = events_of(looks);
        const auto whole = static_cast<std::size_t>(random.below(std::ssize(looks)));
        judge judge(task);
        for (std::size_t i = 0; i <= whole; ++i) judge.read(steps[i]);
        if (const auto& next = steps[whole + 1]; !next.empty()) {
            const auto some = static_cast<std::size_t>(random.below(std::ssize(next)));
            judge.read(std::span(next).first(some));
        }
        judge.end(static_cast<std::int64_t>(whole) * 10);
        const history seen(looks.begin(), looks.begin() + static_cast<std::ptrdiff_t>(whole) + 1);
        ASSERT_EQ(text_of(judge.standing()), text_of(slow_judge(task, seen).verdict()))
            << "seed " << seed;
    }
}

// A quiet hour has no rows: what is held is reached in it all the same, at its own time.
TEST(Judge, TimeAloneReachesGoalsAndEndsExercises) {
    exercise task;
    task.goals.push_back({{}, {{condition_place::input, "a", 1, 0}}, 1'800'005, {}, 2});
    task.goals.push_back({{}, {{condition_place::input, "a", 1, 0}}, 600'000, 599'999, 2});
    task.station.duration_ms = 7'200'000;
    task.balances.push_back({{}, session_count::good, 1, {}, 1});
    judge judge(task);
    history looks(1);
    looks[0] = {{1, 0, 0}, {0, 0}, {0, 0, 0}};
    judge.read(events_of(looks).front());
    EXPECT_EQ(judge.standing().goal_limit_ms, std::nullopt);
    judge.look_until(1'800'009);
    EXPECT_EQ(judge.standing().next_goal, 1U);
    EXPECT_EQ(judge.standing().ms, 1'800'000);
    judge.look_until(1'800'010);
    EXPECT_EQ(judge.standing().goals[0].reached_ms, 1'800'010);
    EXPECT_EQ(judge.standing().goal_limit_ms, 2'400'009);
    EXPECT_EQ(judge.standing().points, 2);
    judge.end(10'000'000);
    EXPECT_EQ(judge.standing().goals[1].reached_ms, 2'400'010);
    EXPECT_EQ(judge.standing().goals[1].state, goal_state::too_late);
    EXPECT_EQ(judge.standing().over_ms, 7'200'000);
    EXPECT_EQ(judge.standing().points, 2);
    EXPECT_EQ(judge.standing().total, 5);
}

}  // namespace
