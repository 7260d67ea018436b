#include "workcell/conveyor.h"

#include <algorithm>
#include <cstdlib>
#include <limits>

namespace station {
namespace {

constexpr int um_per_mm = 1000;
constexpr int base_um = base_mm * um_per_mm;
constexpr int pitch_um = waiting_pitch_mm * um_per_mm;
constexpr int belt_end_um = main_belt_mm * um_per_mm;
// A new base lies at the waiting belt's beginning.
constexpr int loading_um = (base_mm - waiting_belt_mm) * um_per_mm;
constexpr int nowhere_um = std::numeric_limits<int>::max();

constexpr int stop_um(int zone) { return stop_mm[static_cast<std::size_t>(zone)] * um_per_mm; }

bool within_presence(int front_um, int zone) {
    return std::abs(front_um - stop_um(zone)) <= presence_mm * um_per_mm;
}

bool under_press(int front_um) {
    return front_um > press_head_begin_mm * um_per_mm &&
           front_um - base_um < press_head_end_mm * um_per_mm;
}

}  // namespace

void conveyor::step(const conveyor_step& now, incident_log& incidents) {
    waiting_belt_um_ += now.waiting_belt_um;
    main_belt_um_ += now.main_belt_um;
    move_blockers(now, incidents);
    move_bases(now, incidents);
    count_base_past_end();
    run_loader();
}

base* conveyor::at_zone(int zone) {
    for (base& each : bases_)
        if (within_presence(each.front_um, zone)) return &each;
    return nullptr;
}

bool conveyor::misplaced_under_press() const {
    return std::ranges::any_of(bases_, [](const base& each) {
        return under_press(each.front_um) && !within_presence(each.front_um, 2);
    });
}

// A base above a blocker stops it where it touches.
void conveyor::move_blockers(const conveyor_step& now, incident_log& incidents) {
    constexpr incident refusals[] = {incident::blocker_1_refused, incident::blocker_2_refused,
                                     incident::blocker_3_refused};
    for (int zone = 0; zone < 3; ++zone) {
        const auto i = static_cast<std::size_t>(zone);
        cylinder& blocker = blockers_[i];
        const int speed = now.blocker_speeds[i];
        const bool covered =
            now.extend[i] && !blocker.is_beyond(blocker_touch_ms) && base_above(zone);
        incidents.watch(refusals[i], covered && blocker.has_reached(blocker_touch_ms));
        if (covered)
            blocker.move_up_to(blocker_touch_ms, speed);
        else
            blocker.move(now.extend[i] ? speed : -speed);
    }
}

// At half its stroke it has reached the bases' path.
bool conveyor::blocks(int zone) const {
    return blockers_[static_cast<std::size_t>(zone)].has_reached(blocker_touch_ms);
}

bool conveyor::base_above(int zone) const {
    return std::ranges::any_of(bases_, [stop = stop_um(zone)](const base& each) {
        return each.front_um > stop && each.front_um - base_um < stop;
    });
}

// However many bases the press holds, it is one command that is refused.
void conveyor::move_bases(const conveyor_step& now, incident_log& incidents) {
    const bool may_step_over = now.main_belt_um > 0 && entry_is_free();
    bool held = false;
    for (std::size_t i = 0; i < bases_.size(); ++i) {
        const bool waiting = bases_[i].front_um <= 0;
        const int way_um = waiting ? now.waiting_belt_um : now.main_belt_um;
        if (way_um == 0) continue;
        const int limit_um =
            waiting ? limit_on_waiting_belt(i, may_step_over) : limit_on_main_belt(i);
        if (!move_base(bases_[i], way_um, limit_um, now.press_high)) held = true;
    }
    incidents.watch(incident::base_held, held);
}

// Moves a base by a millisecond's way, up to the limit; false when the press does not let it.
bool conveyor::move_base(base& moving, int way_um, int limit_um, bool press_high) {
    const int target_um = std::min(moving.front_um + way_um, limit_um);
    if (target_um <= moving.front_um) return true;
    if (press_high || (!under_press(moving.front_um) && !under_press(target_um))) {
        moving.front_um = target_um;
        return true;
    }
    // One that only settles against its blocker stays where the press caught it, and nothing went
    // wrong then.
    return within_presence(moving.front_um, 2) && blocks(2) && moving.front_um <= stop_um(2);
}

// Whether the whole of a base that steps over will have room.
bool conveyor::entry_is_free() const {
    return std::ranges::none_of(
        bases_, [](const base& each) { return each.front_um > 0 && each.front_um < 2 * base_um; });
}

int conveyor::limit_on_waiting_belt(std::size_t index, bool may_step_over) const {
    const int way_um = may_step_over ? nowhere_um : 0;
    return index == 0 ? way_um : std::min(bases_[index - 1].front_um - pitch_um, way_um);
}

int conveyor::limit_on_main_belt(std::size_t index) const {
    const int front_um = bases_[index].front_um;
    int limit_um = index == 0 ? nowhere_um : bases_[index - 1].front_um - base_um;
    for (int zone = 0; zone < 3; ++zone)
        if (blocks(zone) && front_um <= stop_um(zone)) limit_um = std::min(limit_um, stop_um(zone));
    return limit_um;
}

void conveyor::count_base_past_end() {
    if (bases_.empty() || bases_.front().front_um - base_um < belt_end_um) return;
    ++(bases_.front().good() ? good_ : bad_);
    parts_left_ += bases_.front().part;
    bases_.erase(bases_.begin());
}

// The loader makes a base ready in 5 s, then lays it down as soon as there is room.
void conveyor::run_loader() {
    if (stock_ == 0) return;
    loader_ms_ = std::min(loader_ms_ + 1, base_loading_ms);
    const bool room = bases_.empty() || bases_.back().front_um - pitch_um >= loading_um;
    if (loader_ms_ < base_loading_ms || !room) return;
    load(loading_um / um_per_mm);
    loader_ms_ = 0;
}

void conveyor::load(int front_mm) {
    if (stock_ == 0) return;
    --stock_;
    bases_.push_back({++loaded_, front_mm * um_per_mm});
}

}  // namespace station
