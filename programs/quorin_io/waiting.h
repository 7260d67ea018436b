// Waiting for the values of a segment.
#pragma once
#include <chrono>
#include <optional>

#include "programs/quorin_io/conditions.h"

/// Seconds since it was made, however the machine's date moves.
class stopwatch {
public:
    [[nodiscard]] double seconds() const {
        return std::chrono::duration<double>(std::chrono::steady_clock::now() - start_).count();
    }

private:
    std::chrono::steady_clock::time_point start_ = std::chrono::steady_clock::now();
};

/// Sleeps between two looks at a segment, 2 ms.
void pause_between_looks();

/// The same, and throws `refusal` once nobody is left to read what print_patiently() prints.
void pause_between_printed_looks();

/// Looks every 2 ms and returns once all the conditions hold at once. Throws a `failure`:
/// `session_over` when the session ends first, `not_reached` after `timeout_s` seconds, if there is
/// such a limit.
void wait_until_all_hold(io_observer& segment, const condition_list& conditions,
                         std::optional<double> timeout_s);
