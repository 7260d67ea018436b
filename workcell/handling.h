// From the magazine to the base: the drawer that brings a part, and the suction cup that places it.
#pragma once
#include "workcell/conveyor.h"
#include "workcell/cylinder.h"
#include "workcell/incidents.h"
#include "workcell/station_figures.h"

namespace station {

/// The commands that act on the drawer and the cup in one millisecond.
struct handling_step {
    /// Quarters a millisecond: above 0 out, below 0 in, 0 stay.
    int drawer;
    /// The same: above 0 down, below 0 up, 0 stay.
    int cup;
    /// Whether the cup sucks.
    bool suction;
};

class handling {
public:
    /// With so many parts in the magazine.
    explicit handling(int magazine) : magazine_(magazine) {}

    /// One millisecond: the cup first, then the drawer, the magazine and the suction.
    void step(const handling_step& now, conveyor& belts, incident_log& incidents);

    /// At rest in, at its far end out.
    const cylinder& drawer() const { return drawer_; }
    /// At rest high, at its far end low.
    const cylinder& cup() const { return cup_; }
    /// Whether the cup sucks, a part or nothing.
    bool suction() const { return suction_; }
    /// Whether it holds a part firmly, as the sensor `vide` says.
    bool vacuum() const { return vacuum_ms_ >= vacuum_rise_ms; }
    /// Whether a part lies in the drawer, and whether one hangs from the cup.
    bool part_in_drawer() const { return part_in_drawer_; }
    bool part_in_cup() const { return part_in_cup_; }
    /// The parts that the magazine still has, and those that were lost.
    int magazine() const { return magazine_; }
    int lost() const { return lost_; }

private:
    void move_drawer(int speed, incident_log& incidents);
    void run_magazine();
    void suck();
    void let_go(conveyor& belts, incident_log& incidents);
    void drop_part(base* below, incident_log& incidents);

    cylinder drawer_{drawer_stroke_ms};
    cylinder cup_{cup_stroke_ms};
    bool suction_ = false, part_in_drawer_ = false, part_in_cup_ = false;
    // Which motion of the drawer was refused in the last millisecond: 1 out, -1 in, 0 none.
    int refused_direction_ = 0;
    // For how long a held part was sucked, and for how long it no longer is.
    int vacuum_ms_ = 0;
    int release_ms_ = 0;
    int magazine_ms_ = 0;
    int magazine_, lost_ = 0;
};

}  // namespace station
