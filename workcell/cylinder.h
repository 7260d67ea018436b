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

    /// Whether a motion in `direction` (1 to the far end, -1 back, 0 none) has any way left to go.
    bool can_move(int direction) const {
        return (direction > 0 && place_ms < stroke_ms) || (direction < 0 && place_ms > 0);
    }
    /// One millisecond of travel; stops at the ends.
    void move(int direction) { place_ms = std::clamp(place_ms + direction, 0, stroke_ms); }
    /// 0 at rest, 1 at the far end.
    double fraction() const { return static_cast<double>(place_ms) / stroke_ms; }
};

}  // namespace station
