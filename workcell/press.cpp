#include "workcell/press.h"

#include <algorithm>

namespace station {

void press::step(int direction, conveyor& belts, incident_log& incidents) {
    move(direction, belts, incidents);
    base* pressed = rod_.at_far_end() ? belts.at_zone(2) : nullptr;
    held_ms_ = pressed != nullptr ? std::min(held_ms_ + 1, press_hold_ms) : 0;
    if (timer_done()) pressed->pressed = true;
}

void press::move(int direction, const conveyor& belts, incident_log& incidents) {
    const bool refused = direction > 0 && rod_.asks_for_motion(direction) &&
                         rod_.place_ms >= press_contact_ms && belts.misplaced_under_press();
    incidents.watch(incident::press_stopped, refused);
    if (!refused) rod_.move(direction);
}

}  // namespace station
