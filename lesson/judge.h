// The judge of an exercise: reads a session's events, and says what was reached, when, and when it
// was over.
//
// It goes by the times of the events, not by how they come: handed over step by step as they
// happen, or row by row from a recording in which quiet steps have no rows, at any speed, the
// standing is the same. It looks at 0 and at the end of each step. What the station answers counts
// at the look of its own time; what a step takes, outputs and desk, at the look that ends the step.
#pragma once
#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "lesson/exercise.h"
#include "session/station_events.h"

/// Whether something held at the last look, and since which look that has been so without a break.
struct held_since {
    /// `since_ms` is simulated, and counts while it holds.
    bool holds = false;
    std::int64_t since_ms = 0;
};

/// Conditions, one by one and all at once.
struct conditions_standing {
    /// In the order of the exercise.
    std::vector<held_since> each;
    /// Since when the last of them came to hold.
    held_since all;
};

/// Where a goal stands: its turn has not come, it is the next one to be reached, it was reached, or
/// it was reached "trop tard".
enum class goal_state { open, current, reached, too_late };

/// Where one goal stands.
struct goal_standing {
    /// Only ever goes on to a later one, unless a run begins anew.
    goal_state state = goal_state::open;
    /// When it was reached, late or not.
    std::optional<std::int64_t> reached_ms = {};
    conditions_standing conditions = {};
};

/// Where an exercise stands: at its last look, or at its end, from which on nothing changes.
struct exercise_standing {
    /// Of the last look; below 0 before the first.
    std::int64_t ms = -1;
    /// When the exercise was over, by itself or with the session.
    std::optional<std::int64_t> over_ms;
    /// In the order of the exercise.
    std::vector<goal_standing> goals;
    /// The number of the next goal, from 1; 0 when every one has been reached, or there is none.
    std::size_t next_goal = 0;
    /// The last time at which the next goal is not yet "trop tard"; nothing where it has no limit.
    std::optional<std::int64_t> goal_limit_ms;
    /// Of each `[[jamais]]` and each `[[indice]]` its first time, where it happened.
    std::vector<std::optional<std::int64_t>> bans, hints;
    /// Good bases, bad ones, incidents.
    std::array<std::int64_t, 3> counts = {};
    /// The last answer to the diagnosis, as it was given, and from which look on it counts.
    std::string answer;
    std::optional<std::int64_t> answered_ms;
    /// While it goes on: what the goals reached so far are worth, less what was taken off. Once it
    /// is over: with what depends on the end, the `[[bilan]]` and the diagnosis.
    std::int64_t points = 0;
    /// Of all points that there are.
    std::int64_t total = 0;
    /// Once it is over.
    bool passed = false;
};

/// Whether a `[[bilan]]` holds with these counts.
[[nodiscard]] bool holds(const exercise_balance& balance, const exercise_standing& standing);
/// Whether the last answer names the faults that are asked for, all and no other, in any order.
[[nodiscard]] bool is_right(const exercise_diagnosis& diagnosis, const exercise_standing& standing);

/// Faults as answers write them: "b2s=stuck1 te=stuck0".
[[nodiscard]] std::string answer_text(const std::vector<station_fault>& faults);

class judge : public event_reader {
public:
    /// `task` must outlive it.
    explicit judge(const exercise& task);

    /// Takes events, in the order in which they happened: all at once, by steps or one by one. The
    /// first event of a run begins anew, its last one, `fin`, ends it.
    void read(std::span<const station_event> events) override;
    /// Nothing more happens up to that time, which is simulated: makes every look that is not later
    /// and was not made yet.
    void look_until(std::int64_t ms);
    /// The session is over then, where no `fin` tells it: a recording that was cut off.
    void end(std::int64_t ms);

    /// At the last look, or at the end; valid as long as the judge, and changed by each look.
    [[nodiscard]] const exercise_standing& standing() const { return standing_; }
    /// Whether it is over: passed, failed, or cut off with the session.
    [[nodiscard]] bool over() const { return standing_.over_ms.has_value(); }

private:
    void begin();
    void take(const station_event& event);
    void take_command(condition_place place, int index, const station_event& event);
    void take_session(const station_event& event);
    [[nodiscard]] std::int64_t value_at(condition_place place, int index) const;
    void set_value(condition_place place, int index, std::int64_t value);
    void look(std::int64_t ms);
    void look_at_conditions(std::int64_t ms);
    void look_at(const std::vector<exercise_condition>& conditions, conditions_standing& standing,
                 std::int64_t ms) const;
    void take_answer(std::int64_t ms);
    void reach_goals(std::int64_t ms);
    void look_at_bans_and_hints(std::int64_t ms);
    [[nodiscard]] std::int64_t next_due() const;
    [[nodiscard]] bool may_end(std::int64_t ms) const;
    void be_over(std::int64_t ms);
    void find_next_goal();
    void sum_up();

    const exercise& task_;
    exercise_standing standing_;
    std::vector<conditions_standing> bans_, hints_;
    // By their places on the link and the desk: inputs, outputs, buttons.
    std::array<std::vector<std::int64_t>, 3> values_;
    // As the next look finds them; the answer, where one was given since the last.
    std::array<std::int64_t, 3> counts_ = {};
    std::optional<std::string> new_answer_;
    std::int64_t next_look_ms_ = 0, last_goal_ms_ = 0;
    // As long as nothing changes, nothing can come to hold for long enough before.
    std::int64_t due_ms_ = 0;
    bool changed_ = true;
};
