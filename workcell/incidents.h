// What goes wrong at the station, and the list in which it is kept.
#pragma once
#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

/// One incident: when it happened, in simulated seconds, and what, in French (UTF-8, one line,
/// never freed).
struct workcell_incident {
    double time_s;
    const char* text;
};

namespace station {

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

class incident_log {
public:
    /// The time that the next incidents carry.
    std::int64_t now_ms = 0;

    /// Adds an incident that has no duration.
    void add(incident kind);

    /// Tells whether a condition holds in this step: an incident when it did not hold before.
    void watch(incident kind, bool holds) {
        bool& held = holding_[static_cast<std::size_t>(kind)];
        if (holds && !held) add(kind);
        held = holds;
    }

    int total() const { return total_; }
    std::vector<workcell_incident> take();

private:
    std::vector<workcell_incident> list_;
    std::array<bool, static_cast<std::size_t>(incident::count)> holding_{};
    int total_ = 0;
};

}  // namespace station
