// A session's time: when a step is due.
#pragma once
#include <chrono>
#include <optional>

/// Simulated seconds of one step.
inline constexpr double step_s = 0.010;
/// The same in milliseconds.
inline constexpr int step_ms = 10;

/// The bounds of the speeds that users can ask for.
inline constexpr double least_speed = 0.1, most_speed = 100;

/// Keeps simulated time beside real time: running at a speed, or paused, and then stepped a number
/// of steps as fast as the caller can. It never sleeps and has no clock of its own: it is told the
/// time.
class step_clock {
public:
    /// Real time, which nobody sets: whoever calls reads the clock.
    using moment = std::chrono::steady_clock::time_point;
    using duration = std::chrono::steady_clock::duration;

    /// `speed`: simulated seconds per real second, above 0.
    step_clock(double speed, bool paused, moment now);

    /// Whether a step is due. After a stop of the whole process it catches up a second at most.
    [[nodiscard]] bool due(moment now);
    /// Tells that a step was made.
    void stepped();
    /// How long until the next step is due, 0 when it is; nothing while paused.
    [[nodiscard]] std::optional<duration> until_due(moment now) const;
    /// How long a station that rests may be left alone: 30 ms at least, where no step is due now
    /// and the speed is 1 at most; else as `until_due`. Each waking costs several times what a step
    /// does; at a higher speed a command would come late by much simulated time.
    [[nodiscard]] std::optional<duration> until_several_due(moment now) const;

    /// From now on no step is due but those that `run` asks for.
    void pause();
    /// Goes on from `now`; steps asked for in the pause and not yet made are forgotten.
    void resume(moment now);
    /// What is left of the coming step is left at the new speed, above 0: however often the speed
    /// changes, the step comes.
    void set_speed(double speed, moment now);
    /// Asks for so many steps; only in a pause.
    void run(long long steps) { steps_left_ = steps; }

    /// Whether it stands still, but for the steps asked for.
    bool paused() const { return paused_; }
    /// Simulated seconds per real second; kept through a pause.
    double speed() const { return speed_; }
    /// Steps asked for in the pause and not yet made.
    long long steps_left() const { return steps_left_; }

private:
    duration interval() const;

    double speed_;
    bool paused_;
    moment next_;
    long long steps_left_ = 0;
};
