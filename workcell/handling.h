// From the magazine to the base: the drawer that brings a part, and the suction cup that places it.
#pragma once
#include "workcell/conveyor.h"
#include "workcell/cylinder.h"
#include "workcell/incidents.h"
#include "workcell/station_figures.h"

namespace station {

/// The commands that act on the drawer and the cup in one step.
struct handling_step {
    int drawer;  ///< 1 out, -1 in, 0 stay
    int cup;     ///< 1 down, -1 up, 0 stay
    bool suction;
};

class handling {
public:
    explicit handling(int magazine) : magazine_(magazine) {}

    /// One millisecond.
    void step(const handling_step& now, conveyor& belts, incident_log& incidents);

    const cylinder& drawer() const { return drawer_; }  ///< At rest in, at its far end out.
    const cylinder& cup() const { return cup_; }        ///< At rest high, at its far end low.
    bool suction() const { return suction_; }
    bool vacuum() const { return vacuum_ms_ >= vacuum_rise_ms; }
    bool part_in_drawer() const { return part_in_drawer_; }
    bool part_in_cup() const { return part_in_cup_; }
    int magazine() const { return magazine_; }
    int lost() const { return lost_; }

private:
    void move_drawer(int direction, incident_log& incidents);
    void run_magazine();
    void suck();
    void let_go(conveyor& belts, incident_log& incidents);
    void drop_part(base* below, incident_log& incidents);

    cylinder drawer_{drawer_stroke_ms};
    cylinder cup_{cup_stroke_ms};
    bool suction_ = false, part_in_drawer_ = false, part_in_cup_ = false;
    int vacuum_ms_ = 0;   ///< How long a held part was sucked.
    int release_ms_ = 0;  ///< How long a held part was no longer sucked.
    int magazine_ms_ = 0;
    int magazine_, lost_ = 0;
};

}  // namespace station
