// A cylinder's rod, between its place at rest and the far end of its stroke.
//
// Its place is counted in quarters of a millisecond of travel, so that a slow one makes one of them
// in each millisecond, and the others four.
#pragma once
#include <algorithm>

namespace station {

/// How finely places are counted.
inline constexpr int quarters_per_ms = 4;

/// How many quarters a rod makes in a millisecond.
constexpr int rod_speed(bool slow) { return slow ? 1 : quarters_per_ms; }

struct cylinder {
    /// How long it takes from one end to the other at its full speed.
    int stroke_ms;
    /// 0 at rest, `stroke_quarters` at the far end.
    int place_quarters = 0;

    /// Its stroke as places are counted.
    int stroke_quarters() const { return stroke_ms * quarters_per_ms; }
    /// Whether it has made so many milliseconds' way from its place at rest.
    bool has_reached(int place_ms) const { return place_quarters >= place_ms * quarters_per_ms; }
    /// Whether it has made more than that.
    bool is_beyond(int place_ms) const { return place_quarters > place_ms * quarters_per_ms; }

    /// Within 2 % of the end, as the sensors see it.
    bool at_rest() const { return place_quarters * 50 <= stroke_quarters(); }
    bool at_far_end() const {
        return (stroke_quarters() - place_quarters) * 50 <= stroke_quarters();
    }

    /// Whether a command to `speed` (above 0 to the far end, below 0 back, 0 stay) asks for a
    /// motion: it does not when the rod is at that end already, as the sensors see it.
    bool asks_for_motion(int speed) const {
        return (speed > 0 && !at_far_end()) || (speed < 0 && !at_rest());
    }
    /// One millisecond of travel at a speed in quarters, above 0 to the far end, below 0 back;
    /// stops at the ends.
    void move(int speed) {
        place_quarters = std::clamp(place_quarters + speed, 0, stroke_quarters());
    }
    /// The same, but goes no further than so many milliseconds' way, if it is not there yet.
    void move_up_to(int limit_ms, int speed) {
        const int limit = std::max(place_quarters, limit_ms * quarters_per_ms);
        move(speed);
        place_quarters = std::min(place_quarters, limit);
    }
    /// 0 at rest, 1 at the far end.
    double fraction() const { return static_cast<double>(place_quarters) / stroke_quarters(); }
};

}  // namespace station
