// The press at zone 3 and its ten-second timer.
#pragma once
#include "workcell/conveyor.h"
#include "workcell/cylinder.h"
#include "workcell/incidents.h"
#include "workcell/station_figures.h"

namespace station {

class press {
public:
    /// One millisecond; `speed` in quarters, above 0 down, below 0 up, 0 stay.
    void step(int speed, conveyor& belts, incident_log& incidents);

    /// At rest high, at its far end low.
    const cylinder& rod() const { return rod_; }
    /// Whether it was low on a base for its ten seconds, and still is.
    bool timer_done() const { return held_ms_ >= press_hold_ms; }
    /// For how long it has been low on a base, at most `press_hold_ms`.
    int held_ms() const { return held_ms_; }

private:
    void move(int speed, const conveyor& belts, incident_log& incidents);

    cylinder rod_{press_stroke_ms};
    int held_ms_ = 0;
};

}  // namespace station
