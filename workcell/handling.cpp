#include "workcell/handling.h"

namespace station {

void handling::step(const handling_step& now, conveyor& belts, incident_log& incidents) {
    cup_.move(now.cup);
    move_drawer(now.drawer, incidents);
    run_magazine();
    suction_ = now.suction;
    if (suction_)
        suck();
    else
        let_go(belts, incidents);
}

// A refusal of the opposite command is another one.
void handling::move_drawer(int speed, incident_log& incidents) {
    const bool free = !cup_.is_beyond(cup_clear_ms);
    if (free) drawer_.move(speed);
    const int refused = free || !drawer_.asks_for_motion(speed) ? 0 : speed > 0 ? 1 : -1;
    if (refused != 0 && refused != refused_direction_) incidents.add(incident::drawer_refused);
    refused_direction_ = refused;
}

void handling::run_magazine() {
    const bool waits = drawer_.at_rest() && !part_in_drawer_ && magazine_ > 0;
    magazine_ms_ = waits ? magazine_ms_ + 1 : 0;
    if (magazine_ms_ < station::magazine_ms) return;
    magazine_ms_ = 0;
    --magazine_;
    part_in_drawer_ = true;
}

// A part is taken from the drawer only: one that lies on a base stays there.
void handling::suck() {
    release_ms_ = 0;
    if (part_in_cup_ && vacuum_ms_ < vacuum_rise_ms) ++vacuum_ms_;
    if (!part_in_cup_ && part_in_drawer_ && cup_.at_far_end() && drawer_.at_far_end()) {
        part_in_drawer_ = false;
        part_in_cup_ = true;
    }
}

void handling::let_go(conveyor& belts, incident_log& incidents) {
    if (!part_in_cup_ || ++release_ms_ < vacuum_fall_ms) return;
    vacuum_ms_ = release_ms_ = 0;
    part_in_cup_ = false;
    const bool above_base = cup_.at_far_end() && drawer_.at_rest();
    drop_part(above_base ? belts.at_zone(1) : nullptr, incidents);
}

void handling::drop_part(base* below, incident_log& incidents) {
    if (below != nullptr && !below->part) {
        below->part = true;
        return;
    }
    ++lost_;
    incidents.add(below == nullptr ? incident::part_lost : incident::second_part);
}

}  // namespace station
