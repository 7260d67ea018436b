// What happened in a session, look by look, and a judge that looks through all of it for each rule
// by itself: slow, and written from the rules alone.
#pragma once
#include <algorithm>
#include <array>
#include <cstdint>
#include <iterator>
#include <optional>
#include <set>
#include <sstream>
#include <string>
#include <vector>

#include "lesson/exercise.h"

/// The values that a look finds: at 0, and at the end of each step.
struct seen {
    std::vector<std::int32_t> inputs, outputs, desk;
    std::array<std::int64_t, 3> counts = {};
    /// Answers to the diagnosis that count from this look on.
    std::vector<std::string> answers = {};
};

/// The looks, ten milliseconds apart; the session ends with the last one.
using history = std::vector<seen>;

struct slow_goal {
    std::optional<std::int64_t> reached_ms = {};
    bool late = false;
};

struct slow_verdict {
    std::int64_t over_ms = 0;
    std::vector<slow_goal> goals;
    std::vector<std::optional<std::int64_t>> bans, hints;
    std::string answer;
    std::int64_t points = 0, total = 0;
    bool passed = false;
};

class slow_judge {
public:
    slow_judge(const exercise& task, const history& looks) : task_(task), looks_(looks) {}

    slow_verdict verdict() const {
        slow_verdict found;
        const std::vector<slow_goal> goals = all_goals();
        found.over_ms = end(goals);
        for (slow_goal each : goals) {
            if (each.reached_ms && *each.reached_ms > found.over_ms) each = {};
            found.goals.push_back(each);
        }
        for (const exercise_ban& each : task_.bans)
            found.bans.push_back(first_time(each.conditions, 0, 0, found.over_ms));
        for (const exercise_hint& each : task_.hints)
            found.hints.push_back(first_time(each.conditions, each.hold_ms, 0, found.over_ms));
        found.answer = last_answer(found.over_ms);
        add_points(found);
        return found;
    }

private:
    bool holds(const exercise_condition& condition, std::int64_t ms) const {
        const seen& now = looks_[static_cast<std::size_t>(ms / 10)];
        const auto& values = condition.place == condition_place::input    ? now.inputs
                             : condition.place == condition_place::output ? now.outputs
                                                                          : now.desk;
        return values[static_cast<std::size_t>(condition.index)] == condition.value;
    }
    bool hold(const std::vector<exercise_condition>& conditions, std::int64_t ms) const {
        return std::ranges::all_of(conditions, [&](const auto& each) { return holds(each, ms); });
    }
    std::int64_t last_ms() const { return static_cast<std::int64_t>(looks_.size() - 1) * 10; }

    /// The first look from `from` to `to` at which they have held for so long, where what was
    /// before `from` does not count.
    std::optional<std::int64_t> first_time(const std::vector<exercise_condition>& conditions,
                                           std::int64_t hold_ms, std::int64_t from,
                                           std::int64_t to) const {
        for (std::int64_t t = from; t <= to; t += 10) {
            if (!hold(conditions, t)) continue;
            std::int64_t s = t;
            while (s - 10 >= from && hold(conditions, s - 10)) s -= 10;
            if (t - s >= hold_ms) return t;
        }
        return std::nullopt;
    }

    /// As if nothing ended the exercise.
    std::vector<slow_goal> all_goals() const {
        std::vector<slow_goal> goals(task_.goals.size());
        std::int64_t before = 0;
        for (std::size_t i = 0; i < goals.size(); ++i) {
            const exercise_goal& goal = task_.goals[i];
            goals[i].reached_ms = first_time(goal.conditions, goal.hold_ms, before, last_ms());
            if (!goals[i].reached_ms) break;
            goals[i].late = goal.within_ms && *goals[i].reached_ms - before > *goal.within_ms;
            before = *goals[i].reached_ms;
        }
        return goals;
    }

    bool holds(const exercise_balance& balance, std::int64_t ms) const {
        const std::int64_t count = looks_[static_cast<std::size_t>(ms / 10)]
                                       .counts[static_cast<std::size_t>(balance.count)];
        return (!balance.at_least || count >= *balance.at_least) &&
               (!balance.at_most || count <= *balance.at_most);
    }
    bool all_is_done(const std::vector<slow_goal>& goals, std::int64_t ms) const {
        for (const slow_goal& each : goals)
            if (!each.reached_ms || *each.reached_ms > ms) return false;
        for (const exercise_balance& each : task_.balances)
            if (!holds(each, ms)) return false;
        return !task_.diagnosis || !last_answer(ms).empty();
    }
    std::int64_t end(const std::vector<slow_goal>& goals) const {
        const bool ends_by_itself = !task_.goals.empty() || task_.diagnosis;
        for (std::int64_t t = 0; t <= last_ms(); t += 10) {
            if (ends_by_itself && all_is_done(goals, t)) return t;
            if (task_.station.duration_ms && t >= *task_.station.duration_ms) return t;
        }
        return last_ms();
    }

    std::string last_answer(std::int64_t ms) const {
        std::string last;
        for (std::int64_t t = 0; t <= ms; t += 10)
            for (const std::string& each : looks_[static_cast<std::size_t>(t / 10)].answers)
                last = each;
        return last;
    }
    bool is_right(const std::string& answer) const {
        std::istringstream words(answer);
        const std::set<std::string> named(std::istream_iterator<std::string>(words), {});
        std::set<std::string> asked;
        for (const station_fault& each : task_.diagnosis->faults)
            asked.insert(each.name + "=" + std::string(fault_kind_word(each.kind)));
        return named == asked;
    }

    void add_points(slow_verdict& found) const {
        std::int64_t won = 0, lost = 0;
        found.passed = true;
        const auto count = [&](bool good, std::int64_t points) {
            found.total += points;
            if (good) won += points;
            if (!good) found.passed = false;
        };
        for (std::size_t i = 0; i < task_.goals.size(); ++i)
            count(found.goals[i].reached_ms && !found.goals[i].late, task_.goals[i].points);
        for (const exercise_balance& each : task_.balances)
            count(holds(each, found.over_ms), each.points);
        if (task_.diagnosis) count(is_right(found.answer), task_.diagnosis->points);
        for (std::size_t i = 0; i < task_.bans.size(); ++i) {
            if (!found.bans[i]) continue;
            lost += task_.bans[i].penalty;
            found.passed = false;
        }
        found.points = std::max<std::int64_t>(0, won - lost);
    }

    const exercise& task_;
    const history& looks_;
};
