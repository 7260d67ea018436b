// The two belts, the bases on them, the three zones and their blockers.
#pragma once
#include <array>
#include <cstdint>
#include <vector>

#include "workcell/cylinder.h"
#include "workcell/incidents.h"
#include "workcell/station_figures.h"

namespace station {

/// A base (support) on one of the belts. Lengths in micrometres: a belt moves 100 of them a
/// millisecond, a slow one 25.
struct base {
    /// 1 for the first base of the run.
    int number;
    /// Its leading edge; 0 or less on the waiting belt.
    int front_um;
    /// For how long glue was laid on it, at most `glue_ms`.
    int glue_ms = 0;
    /// Whether a part was placed on it, and whether the press held it for its ten seconds.
    bool part = false;
    bool pressed = false;

    /// Whether it has all of its glue.
    bool glued() const { return glue_ms >= station::glue_ms; }
    /// Whether it counts as good once it leaves.
    bool good() const { return glued() && part && pressed; }
};

/// The commands that act on the belts in one millisecond, and what stands in the way.
struct conveyor_step {
    /// Micrometres a millisecond; 0 for one that stands.
    int waiting_belt_um, main_belt_um;
    /// Whether each blocker is commanded out; its spring takes it back otherwise.
    std::array<bool, 3> extend;
    /// Quarters a millisecond, above 0, whichever way they move.
    std::array<int, 3> blocker_speeds;
    /// Whether the press lets bases pass below it.
    bool press_high;
};

/// How far a belt moves in a millisecond.
constexpr int belt_speed_um(bool slow) {
    return slow ? belt_mm_per_s / quarters_per_ms : belt_mm_per_s;
}
static_assert(belt_mm_per_s % quarters_per_ms == 0);

class conveyor {
public:
    /// With a base at that place, out of a stock of so many.
    conveyor(int first_front_mm, int stock) : stock_(stock) { load(first_front_mm); }

    /// One millisecond: the blockers first, then the bases, the foremost first, then the loader.
    void step(const conveyor_step& now, incident_log& incidents);

    /// The base within 5 mm of the stop of zone 0, 1 or 2; null when there is none. There is room
    /// for one only.
    base* at_zone(int zone);
    const base* at_zone(int zone) const { return const_cast<conveyor*>(this)->at_zone(zone); }

    /// Whether a base stands under the press's head without being at its stop.
    bool misplaced_under_press() const;

    /// The foremost first.
    const std::vector<base>& bases() const { return bases_; }
    /// Of zone 1, 2 and 3; at rest retracted.
    const std::array<cylinder, 3>& blockers() const { return blockers_; }
    /// The bases that the loader still has.
    int stock() const { return stock_; }
    /// The bases that left, and the parts that left on them.
    int good() const { return good_; }
    int bad() const { return bad_; }
    int parts_left() const { return parts_left_; }
    /// How far the belts have run since the start.
    std::int64_t waiting_belt_um() const { return waiting_belt_um_; }
    std::int64_t main_belt_um() const { return main_belt_um_; }

private:
    void move_blockers(const conveyor_step& now, incident_log& incidents);
    void move_bases(const conveyor_step& now, incident_log& incidents);
    bool move_base(base& moving, int way_um, int limit_um, bool press_high);
    bool entry_is_free() const;
    int limit_on_waiting_belt(std::size_t index, bool may_step_over) const;
    int limit_on_main_belt(std::size_t index) const;
    bool blocks(int zone) const;
    bool base_above(int zone) const;
    void count_base_past_end();
    void run_loader();
    void load(int front_mm);

    std::vector<base> bases_;
    std::array<cylinder, 3> blockers_ = {
        {{blocker_stroke_ms}, {blocker_stroke_ms}, {blocker_stroke_ms}}};
    int stock_;
    int loader_ms_ = 0;
    std::int64_t waiting_belt_um_ = 0, main_belt_um_ = 0;
    int loaded_ = 0, good_ = 0, bad_ = 0, parts_left_ = 0;
};

}  // namespace station
