// A cylinder's rod, between its place at rest and the far end of its stroke, counted in
// milliseconds of travel.
#pragma once
#include <algorithm>

namespace station {

struct cylinder {
    int stroke_ms;
    int place_ms = 0;

    /// Within 2 % of the end, as the sensors see it.
    bool at_rest() const { return place_ms * 50 <= stroke_ms; }
    bool at_far_end() const { return (stroke_ms - place_ms) * 50 <= stroke_ms; }

    /// Whether a command to `direction` (1 to the far end, -1 back, 0 stay) asks for a motion: it
    /// does not when the rod is at that end already, as the sensors see it.
    bool asks_for_motion(int direction) const {
        return (direction > 0 && !at_far_end()) || (direction < 0 && !at_rest());
    }
    /// One millisecond of travel; stops at the ends.
    void move(int direction) { place_ms = std::clamp(place_ms + direction, 0, stroke_ms); }
    /// 0 at rest, 1 at the far end.
    double fraction() const { return static_cast<double>(place_ms) / stroke_ms; }
};

}  // namespace station
