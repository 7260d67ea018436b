#include "workcell/press.h"

#include <algorithm>

namespace station {

void press::step(int speed, conveyor& belts, incident_log& incidents) {
    move(speed, belts, incidents);
    base* pressed = rod_.at_far_end() ? belts.at_zone(2) : nullptr;
    held_ms_ = pressed != nullptr ? std::min(held_ms_ + 1, press_hold_ms) : 0;
    if (timer_done()) pressed->pressed = true;
}

void press::move(int speed, const conveyor& belts, incident_log& incidents) {
    const bool hindered = speed > 0 && rod_.asks_for_motion(speed) && belts.misplaced_under_press();
    incidents.watch(incident::press_stopped, hindered && rod_.has_reached(press_contact_ms));
    if (hindered)
        rod_.move_up_to(press_contact_ms, speed);
    else
        rod_.move(speed);
}

}  // namespace station
