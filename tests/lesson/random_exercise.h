// Exercises and histories at random, so small and so dense that what can coincide does.
#pragma once
#include <random>
#include <string>
#include <utility>
#include <vector>

#include "session/desk.h"
#include "session/station_events.h"
#include "tests/lesson/slow_judge.h"

inline constexpr std::string_view small_inputs[] = {"a", "b", "c"};
inline constexpr std::string_view small_outputs[] = {"X", "Y"};

class random_lesson {
public:
    explicit random_lesson(std::uint32_t seed) : random_(seed) {}

    exercise task() {
        exercise made;
        if (one_in(2)) made.station.duration_ms = below(30) * 5 + 1;
        for (auto left = below(5); left > 0; --left) made.goals.push_back(goal());
        for (auto left = below(3); left > 0; --left)
            made.bans.push_back({{}, conditions(), below(4)});
        for (auto left = below(3); left > 0; --left)
            made.hints.push_back({{}, conditions(), below(7) * 5});
        for (auto left = below(3); left > 0; --left) made.balances.push_back(balance());
        if (one_in(2)) {
            made.diagnosis = exercise_diagnosis{{{"a", fault_kind::stuck0}}, below(4)};
            if (one_in(2)) made.diagnosis->faults.push_back({"X", fault_kind::dead});
        }
        return made;
    }

    history looks() {
        history made(static_cast<std::size_t>(1 + below(30)));
        made[0] = {{bit(), bit(), bit()}, {0, 0}, {0, 0, 0}};
        const auto busy = 1 + below(6);
        for (std::size_t i = 1; i < made.size(); ++i) {
            made[i] = made[i - 1];
            made[i].answers.clear();
            if (one_in(busy)) change(made[i]);
            if (one_in(4 * busy)) answer(made[i].answers);
            if (one_in(20)) answer(made[i].answers);
        }
        return made;
    }

    std::int64_t below(std::int64_t limit) {
        return static_cast<std::int64_t>(random_() % static_cast<std::uint64_t>(limit));
    }
    bool one_in(std::int64_t count) { return below(count) == 0; }

private:
    std::int32_t bit() { return static_cast<std::int32_t>(below(2)); }

    exercise_condition condition() {
        switch (below(4)) {
            case 0:
                return {condition_place::output, "", static_cast<std::int32_t>(below(3)),
                        static_cast<int>(below(2))};
            case 1:
                return {condition_place::desk, "", bit(), static_cast<int>(below(3))};
            default:
                return {condition_place::input, "", bit(), static_cast<int>(below(3))};
        }
    }
    std::vector<exercise_condition> conditions() {
        std::vector<exercise_condition> made;
        for (auto left = 1 + below(2); left > 0; --left) {
            made.push_back(condition());
            made.back().name = name_of(made.back());
        }
        return made;
    }
    static std::string name_of(const exercise_condition& condition) {
        const auto i = static_cast<std::size_t>(condition.index);
        if (condition.place == condition_place::desk) return std::string(desk_rows[i].name);
        return std::string(condition.place == condition_place::input ? small_inputs[i]
                                                                     : small_outputs[i]);
    }
    exercise_goal goal() {
        exercise_goal made{{}, conditions(), one_in(2) ? 0 : below(7) * 5, {}, below(4)};
        if (one_in(2)) made.within_ms = below(9) * 5;
        return made;
    }
    exercise_balance balance() {
        exercise_balance made;
        made.count = static_cast<session_count>(below(3));
        if (one_in(2)) made.at_least = below(3);
        if (!made.at_least || one_in(3)) made.at_most = below(3);
        made.points = below(4);
        return made;
    }
    void change(seen& now) {
        for (auto left = 1 + below(2); left > 0; --left) {
            now.inputs[static_cast<std::size_t>(below(3))] = bit();
            now.outputs[static_cast<std::size_t>(below(2))] = static_cast<std::int32_t>(below(3));
            if (one_in(2)) now.desk[static_cast<std::size_t>(below(3))] = bit();
            if (one_in(4)) ++now.counts[static_cast<std::size_t>(below(3))];
        }
    }
    void answer(std::vector<std::string>& answers) {
        static const std::string some[] = {
            "a=stuck0", "a=stuck0 X=dead", "X=dead a=stuck0",   "a=stuck1",
            "X=dead",   "X=dead X=dead",   "a=stuck0 a=stuck0", "b=late"};
        answers.push_back(some[below(std::ssize(some))]);
    }

    std::mt19937 random_;
};

/// The events that a session tells of such a history: a list for the first block, one for each step
/// and one for the end. Their texts are the history's.
inline std::vector<std::vector<station_event>> events_of(const history& looks) {
    using enum event_kind;
    std::vector<std::vector<station_event>> steps(1);
    const auto tell = [&](std::int64_t ms, event_kind kind, std::string_view name,
                          std::int64_t value, std::string_view text = {}, std::size_t index = 0) {
        const bool placed = kind == input || kind == output;
        steps.back().push_back(
            {ms, kind, name, value, text, placed ? static_cast<int>(index) : -1});
    };
    tell(0, session, "format", 1);
    tell(0, session, "station", 0, "petite");
    tell(0, fault, "a", 0, "late");
    tell(0, exercise, "titre", 0, "Un exercice");
    for (std::size_t i = 0; i < 3; ++i) tell(0, desk, desk_rows[i].name, 0);
    for (std::size_t i = 0; i < 3; ++i) tell(0, input, small_inputs[i], looks[0].inputs[i], {}, i);
    for (std::size_t i = 0; i < 2; ++i) tell(0, output, small_outputs[i], 0, {}, i);
    constexpr std::string_view counts[] = {"bonnes", "mauvaises", "incidents"};
    for (std::size_t k = 1; k < looks.size(); ++k) {
        const seen &now = looks[k], &before = looks[k - 1];
        const auto end = static_cast<std::int64_t>(k) * 10;
        steps.emplace_back();
        for (std::size_t i = 0; i < 3; ++i)
            if (now.desk[i] != before.desk[i]) tell(end - 10, desk, desk_rows[i].name, now.desk[i]);
        for (std::size_t i = 0; i < 2; ++i)
            if (now.outputs[i] != before.outputs[i])
                tell(end - 10, output, small_outputs[i], now.outputs[i], {}, i);
        for (auto i = before.counts[2]; i < now.counts[2]; ++i)
            tell(end - 3, incident, {}, i + 1, "un incident");
        for (std::size_t i = 0; i < 3; ++i)
            if (now.inputs[i] != before.inputs[i])
                tell(end, input, small_inputs[i], now.inputs[i], {}, i);
        for (std::size_t i = 0; i < 3; ++i)
            if (now.counts[i] != before.counts[i]) tell(end, session, counts[i], now.counts[i]);
        for (const std::string& each : now.answers) tell(end, exercise, "diagnostic", 0, each);
    }
    steps.emplace_back();
    tell(static_cast<std::int64_t>(looks.size() - 1) * 10, session, "fin", 0, "fin demandée");
    return steps;
}
