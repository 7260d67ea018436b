// What the window has to know of a session's events: incidents that it has not shown yet, and
// whether anything has changed.
#pragma once
#include <cstdint>
#include <deque>
#include <string>
#include <vector>

#include "session/station_events.h"
#include "session/step_clock.h"

class session_news : public event_reader {
public:
    /// An incident with its own text.
    struct incident {
        /// Simulated.
        std::int64_t ms;
        /// French, as the events tell it.
        std::string text;
    };
    /// Of more incidents at once, only the last ones are kept.
    static constexpr std::size_t most_incidents = 100;

    /// `time` must live as long.
    explicit session_news(step_clock& time) : time_(time) {}

    void read(std::span<const station_event> events) override;

    /// The incidents since the last call, oldest first.
    std::deque<incident> take_incidents();
    /// Whether the session has begun, or a replay begun again, since the last call: what was shown
    /// before is over.
    bool take_begun_again();

    /// Whether anything was told since the last call of `forget_new`.
    bool anything_new() const { return anything_new_; }
    /// What was told so far has been shown.
    void forget_new() { anything_new_ = false; }

    /// Pauses, and steps until something is told, `most_steps` at most.
    void run_to_next_change();
    /// Whether such a run has ended without a change. Until the next run, or another request.
    bool nothing_changed() const;
    /// Somebody did something else: a run that goes on is no longer told of.
    void forget_run() { run_ = run_state::none; }

    /// A minute of simulated time: where nothing changes for so long, the run gives up.
    static constexpr int most_steps = 6000;

private:
    enum class run_state { none, going, changed };

    step_clock& time_;
    std::deque<incident> incidents_;
    bool begun_again_ = false, anything_new_ = false;
    run_state run_ = run_state::none;
};
