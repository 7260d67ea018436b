#include "lesson/judge.h"

#include <algorithm>
#include <iterator>
#include <limits>
#include <set>
#include <sstream>

#include "session/desk.h"
#include "session/step_clock.h"

namespace {

constexpr std::int64_t never = std::numeric_limits<std::int64_t>::max();

/// The first look that is not before that time.
std::int64_t look_at_or_after(std::int64_t ms) {
    return ms < never - step_ms ? (ms + step_ms - 1) / step_ms * step_ms : never;
}

/// The first look at which what holds has held for so long since `from`.
std::int64_t when_held(const held_since& all, std::int64_t hold_ms, std::int64_t from) {
    const std::int64_t since = std::max(all.since_ms, from);
    return all.holds && hold_ms < never - since ? look_at_or_after(since + hold_ms) : never;
}

void note(held_since& what, bool holds, std::int64_t ms) {
    if (what.holds != holds) what = {holds, ms};
}

std::set<std::string> words_of(const std::string& text) {
    std::istringstream words(text);
    return {std::istream_iterator<std::string>(words), {}};
}

}  // namespace

bool holds(const exercise_balance& balance, const exercise_standing& standing) {
    const std::int64_t count = standing.counts[static_cast<std::size_t>(balance.count)];
    return (!balance.at_least || count >= *balance.at_least) &&
           (!balance.at_most || count <= *balance.at_most);
}

bool is_right(const exercise_diagnosis& diagnosis, const exercise_standing& standing) {
    return words_of(standing.answer) == words_of(answer_text(diagnosis.faults));
}

std::string answer_text(const std::vector<station_fault>& faults) {
    std::string text;
    for (const station_fault& each : faults) text += (text.empty() ? "" : " ") + text_of(each);
    return text;
}

judge::judge(const exercise& task) : task_(task) { begin(); }

void judge::begin() {
    standing_ = {};
    standing_.goals.resize(task_.goals.size());
    standing_.bans.resize(task_.bans.size());
    standing_.hints.resize(task_.hints.size());
    standing_.total = total_points(task_);
    bans_.assign(task_.bans.size(), {});
    hints_.assign(task_.hints.size(), {});
    values_ = {};
    counts_ = {};
    new_answer_.reset();
    next_look_ms_ = last_goal_ms_ = due_ms_ = 0;
    changed_ = true;
    sum_up();
}

void judge::read(std::span<const station_event> events) {
    for (const station_event& each : events) {
        if (begins_a_run(each)) begin();
        if (!over()) take(each);
    }
}

// What the station answers with counts at the look of its own time, and all looks before are made.
void judge::take(const station_event& event) {
    switch (event.kind) {
        case event_kind::input:
            look_until(event.ms - 1);
            return set_value(condition_place::input, event.index, event.value);
        case event_kind::output:
            return take_command(condition_place::output, event.index, event);
        case event_kind::desk:
            if (const desk_row* const button = desk_button_named(event.name))
                take_command(condition_place::desk, static_cast<int>(button->key), event);
            return;
        case event_kind::session:
            return take_session(event);
        case event_kind::exercise:
            look_until(event.ms - 1);
            if (event.name != "diagnostic") return;
            new_answer_ = event.text;
            changed_ = true;
            return;
        default:
            return;
    }
}

// What a step takes counts at the look that ends it. The first block has such rows, too; they tell
// what is so already.
void judge::take_command(condition_place place, int index, const station_event& event) {
    if (value_at(place, index) == event.value) return;
    look_until(event.ms);
    set_value(place, index, event.value);
}

void judge::take_session(const station_event& event) {
    if (ends_a_run(event)) return end(event.ms);
    const std::optional<session_count> count = session_count_called(event.name);
    if (!count) return;
    look_until(event.ms - 1);
    counts_[static_cast<std::size_t>(*count)] = event.value;
    changed_ = true;
}

std::int64_t judge::value_at(condition_place place, int index) const {
    const auto& values = values_[static_cast<std::size_t>(place)];
    const auto at = static_cast<std::size_t>(index);
    return at < values.size() ? values[at] : 0;
}

void judge::set_value(condition_place place, int index, std::int64_t value) {
    if (over() || index < 0) return;
    auto& values = values_[static_cast<std::size_t>(place)];
    const auto at = static_cast<std::size_t>(index);
    if (at >= values.size()) values.resize(at + 1);
    values[at] = value;
    changed_ = true;
}

void judge::look_until(std::int64_t ms) {
    while (!over() && next_look_ms_ <= ms) {
        const std::int64_t at = changed_ ? next_look_ms_ : std::max(next_look_ms_, due_ms_);
        if (at > ms) {
            next_look_ms_ = ms / step_ms * step_ms + step_ms;
            standing_.ms = next_look_ms_ - step_ms;
            return;
        }
        next_look_ms_ = at + step_ms;
        look(at);
    }
}

void judge::look(std::int64_t ms) {
    standing_.ms = ms;
    standing_.counts = counts_;
    take_answer(ms);
    look_at_conditions(ms);
    reach_goals(ms);
    look_at_bans_and_hints(ms);
    changed_ = false;
    due_ms_ = next_due();
    sum_up();
    if (may_end(ms)) be_over(ms);
}

void judge::take_answer(std::int64_t ms) {
    if (!new_answer_) return;
    standing_.answer = *new_answer_;
    standing_.answered_ms = ms;
    new_answer_.reset();
}

void judge::look_at(const std::vector<exercise_condition>& conditions,
                    conditions_standing& standing, std::int64_t ms) const {
    standing.each.resize(conditions.size());
    bool all = true;
    for (std::size_t i = 0; i < conditions.size(); ++i) {
        const exercise_condition& each = conditions[i];
        const bool holds = value_at(each.place, each.index) == each.value;
        note(standing.each[i], holds, ms);
        all = all && holds;
    }
    note(standing.all, all, ms);
}

void judge::look_at_conditions(std::int64_t ms) {
    if (!changed_) return;
    for (std::size_t i = 0; i < task_.goals.size(); ++i)
        look_at(task_.goals[i].conditions, standing_.goals[i].conditions, ms);
    for (std::size_t i = 0; i < task_.bans.size(); ++i)
        look_at(task_.bans[i].conditions, bans_[i], ms);
    for (std::size_t i = 0; i < task_.hints.size(); ++i)
        look_at(task_.hints[i].conditions, hints_[i], ms);
}

void judge::reach_goals(std::int64_t ms) {
    for (std::size_t i = 0; i < task_.goals.size(); ++i) {
        const exercise_goal& goal = task_.goals[i];
        goal_standing& standing = standing_.goals[i];
        if (standing.reached_ms) continue;
        if (when_held(standing.conditions.all, goal.hold_ms, last_goal_ms_) > ms) return;
        const bool late = goal.within_ms && ms - last_goal_ms_ > *goal.within_ms;
        standing.state = late ? goal_state::too_late : goal_state::reached;
        standing.reached_ms = last_goal_ms_ = ms;
    }
}

void judge::look_at_bans_and_hints(std::int64_t ms) {
    for (std::size_t i = 0; i < bans_.size(); ++i)
        if (!standing_.bans[i] && bans_[i].all.holds) standing_.bans[i] = ms;
    for (std::size_t i = 0; i < hints_.size(); ++i)
        if (!standing_.hints[i] && when_held(hints_[i].all, task_.hints[i].hold_ms, 0) <= ms)
            standing_.hints[i] = ms;
}

// The next look at which time alone can bring something about.
std::int64_t judge::next_due() const {
    std::int64_t due = never;
    if (task_.station.duration_ms) due = look_at_or_after(*task_.station.duration_ms);
    for (std::size_t i = 0; i < hints_.size(); ++i)
        if (!standing_.hints[i])
            due = std::min(due, when_held(hints_[i].all, task_.hints[i].hold_ms, 0));
    for (std::size_t i = 0; i < task_.goals.size(); ++i) {
        const goal_standing& goal = standing_.goals[i];
        if (!goal.reached_ms)
            return std::min(due,
                            when_held(goal.conditions.all, task_.goals[i].hold_ms, last_goal_ms_));
    }
    return due;
}

bool judge::may_end(std::int64_t ms) const {
    if (task_.station.duration_ms && ms >= *task_.station.duration_ms) return true;
    if (task_.goals.empty() && !task_.diagnosis) return false;
    const auto holds_now = [this](const auto& each) { return holds(each, standing_); };
    return std::ranges::all_of(standing_.goals,
                               [](const auto& each) { return !!each.reached_ms; }) &&
           std::ranges::all_of(task_.balances, holds_now) &&
           (!task_.diagnosis || standing_.answered_ms);
}

void judge::end(std::int64_t ms) {
    look_until(ms);
    if (!over()) be_over(ms);
}

void judge::be_over(std::int64_t ms) {
    standing_.over_ms = ms;
    sum_up();
}

void judge::find_next_goal() {
    standing_.next_goal = 0;
    standing_.goal_limit_ms.reset();
    for (std::size_t i = 0; i < task_.goals.size(); ++i) {
        goal_standing& goal = standing_.goals[i];
        if (goal.reached_ms) continue;
        goal.state = goal_state::current;
        standing_.next_goal = i + 1;
        if (task_.goals[i].within_ms)
            standing_.goal_limit_ms = last_goal_ms_ + *task_.goals[i].within_ms;
        return;
    }
}

void judge::sum_up() {
    find_next_goal();
    std::int64_t points = 0;
    bool passed = over();
    const auto count = [&](bool good, std::int64_t worth) {
        points += good ? worth : 0;
        passed = passed && good;
    };
    for (std::size_t i = 0; i < task_.goals.size(); ++i)
        count(standing_.goals[i].state == goal_state::reached, task_.goals[i].points);
    if (over()) {
        for (const exercise_balance& each : task_.balances)
            count(holds(each, standing_), each.points);
        if (task_.diagnosis) count(is_right(*task_.diagnosis, standing_), task_.diagnosis->points);
    }
    for (std::size_t i = 0; i < task_.bans.size(); ++i) {
        if (!standing_.bans[i]) continue;
        points -= task_.bans[i].penalty;
        passed = false;
    }
    standing_.points = std::max<std::int64_t>(points, 0);
    standing_.passed = passed;
}
