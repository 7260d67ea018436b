// Who sets a session a task: it may hide faults, looks at each step, says when the session is over
// and what came of it.
#pragma once
#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "session/faults.h"
#include "session/station_events.h"

class session_examiner {
public:
    virtual ~session_examiner() = default;

    /// The events that it adds to a session's: each of these calls returns some, valid until the
    /// next one. For the first block, behind the faults; their texts live as long as the examiner;
    [[nodiscard]] virtual std::span<const station_event> introduce() = 0;
    /// after the first block and after each step that ends at `ms`, of all that `happened`; these
    /// texts, too, are valid until the next call;
    [[nodiscard]] virtual std::span<const station_event> examine(
        std::int64_t ms, std::span<const station_event> happened) = 0;
    /// and before the session's end.
    [[nodiscard]] virtual std::span<const station_event> conclude(std::int64_t ms) = 0;

    /// What the station has from its start, and is told to nobody while the session goes on.
    [[nodiscard]] virtual std::vector<station_fault> hidden_faults() const = 0;

    /// Whether the session is to end, for there is nothing left to do.
    [[nodiscard]] virtual bool over() const = 0;

    /// Whether it asks which faults the station has.
    [[nodiscard]] virtual bool asks_for_faults() const = 0;
    /// Takes an answer to that, which counts from the next `examine` on.
    virtual void take_answer(const std::vector<station_fault>& faults) = 0;

    /// For those who ask how the session stands.
    struct status {
        /// The task's title, the number of the next goal (empty: none is left) and the points so
        /// far, "2/15".
        std::string title, goal, points;
    };
    /// At the last `examine`.
    [[nodiscard]] virtual status standing() const = 0;

    /// After the end: whether the task was fulfilled, and the verdict, a sentence a line.
    [[nodiscard]] virtual bool passed() const = 0;
    [[nodiscard]] virtual std::vector<std::string> verdict() const = 0;
};
