// What goes wrong at the station, and the list in which it is kept.
#pragma once
#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

#include "session/station_model.h"

namespace station {

/// What can go wrong; docs/workcell.md tells when each does.
enum class incident {
    glue_spilled,
    part_lost,
    second_part,
    drawer_refused,
    press_stopped,
    base_held,
    blocker_1_refused,
    blocker_2_refused,
    blocker_3_refused,
    count
};

/// What an incident says, in French (UTF-8, one line).
[[nodiscard]] std::string_view incident_text(incident kind);

/// The incidents of a step, and the milliseconds in which they happen.
class incident_log {
public:
    /// Forgets the incidents of the step before.
    void begin_step() { list_.clear(); }
    /// Begins the next millisecond; its incidents carry its end.
    void begin_ms() { ++now_ms_; }

    /// Adds an incident that has no duration.
    void add(incident kind);

    /// Tells whether a condition holds in this millisecond: an incident when it did not hold in the
    /// one before.
    void watch(incident kind, bool holds);

    /// The milliseconds that have begun.
    std::int64_t now_ms() const { return now_ms_; }
    /// The incidents of this step, oldest first.
    std::span<const station_incident> list() const { return list_; }
    /// How many there were since the start.
    int total() const { return total_; }

private:
    std::int64_t now_ms_ = 0;
    std::vector<station_incident> list_;
    std::array<bool, static_cast<std::size_t>(incident::count)> holding_{};
    int total_ = 0;
};

}  // namespace station
