// Who commands a session's station in the place of the link's clients: a replay.
#pragma once
#include <cstdint>
#include <optional>
#include <string>

#include "session/station_run.h"

class session_driver {
public:
    virtual ~session_driver() = default;
    /// The title under which the session is told; empty: none.
    [[nodiscard]] virtual std::string title() const = 0;
    /// How long it is, in simulated milliseconds, where it is known.
    [[nodiscard]] virtual std::optional<std::int64_t> length_ms() const { return std::nullopt; }
    /// Goes back to its beginning: the run is begun again. False where it cannot, and then nothing
    /// was done.
    [[nodiscard]] virtual bool restart() { return false; }
    /// Before the first block is told: what the session begins with.
    virtual void before_begin(station_run& run) = 0;
    /// Before each step: sets the desk and the faults of the run, as the step takes them. Why the
    /// session is over, where there is nothing left to do; nothing as long as there is.
    [[nodiscard]] virtual std::optional<std::string> before_step(station_run& run) = 0;
    /// What the output at that place is commanded in the step.
    [[nodiscard]] virtual std::int32_t command(int output) const = 0;
};
