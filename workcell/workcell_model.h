// The ZK4 station as a deterministic physical model: belts, blockers, dispenser, drawer, suction
// cup and press.
//
// The model has no clock, no window and no input or output of its own: `step` advances it. The same
// seed, commands and steps give the same history, bit for bit, on any machine: it counts in whole
// micrometres and milliseconds. Nothing throws, save for memory. docs/workcell.md describes the
// station.
#pragma once
#include <array>
#include <cstdint>
#include <string_view>
#include <vector>

#include "session/station_model.h"
#include "workcell/conveyor.h"
#include "workcell/handling.h"
#include "workcell/incidents.h"
#include "workcell/press.h"
#include "workcell/station_names.h"

/// Of bases, and of parts.
inline constexpr int most_workcell_supplies = 1'000'000;

/// What the station has to work with, the first base included.
struct workcell_supplies {
    /// How many of each; a session has `most_workcell_supplies` at most.
    int bases = 1000;
    int parts = 1000;
};

/// A base as a drawing needs it.
struct workcell_base {
    /// 1 for the first of the run; never used again.
    int number;
    /// Its leading edge: -400 to 0 on the waiting belt, above 0 on the main belt, up to 1280 over
    /// its end.
    double front_mm;
    /// What has been done to it; a good base has all three.
    bool glued, part, pressed;
    /// For how long glue was laid on it: glued at 1.0.
    double glue_s = 0;
    bool operator==(const workcell_base&) const = default;
};

/// A snapshot of everything that a drawing shows: what is, not what the sensors say. Places of
/// cylinders go from 0 to 1.
struct workcell_state {
    /// Simulated time.
    double time_s;
    /// Whether it is pushed: everything stands still from the next step on.
    bool emergency_stop;
    /// What acts: a command that an emergency stop or a fault keeps back does not. `vacuum` is a
    /// part firmly held.
    bool waiting_belt_runs, main_belt_runs, dispensing, suction, vacuum;
    /// 0 retracted, 1 extended.
    std::array<double, 3> blockers_out;
    /// 0 in, 1 out.
    double drawer_out;
    /// 0 high, 1 low.
    double cup_down, press_down;
    /// For how long the press has been low on a base at zone 3: 0 to 10.
    double press_held_s;
    /// How far the belts have run since the start, in micrometres, whether a base lay on them or
    /// not.
    std::int64_t waiting_belt_um, main_belt_um;
    /// Whether a part lies there, hangs there.
    bool part_in_drawer, part_in_cup;
    /// The foremost first.
    std::vector<workcell_base> bases;
    /// What the loader and the magazine still have, and the parts that fell elsewhere than on a
    /// base.
    int bases_in_stock, parts_in_magazine, parts_lost;
    /// Bases that left, and the parts that left on them.
    int good, bad, parts_left;
    /// How many there were since the start.
    int incidents;
    bool operator==(const workcell_state&) const = default;
};

class workcell_model : public station_model {
public:
    /// A station at its start: at rest, every command off, one base on the waiting belt, at a place
    /// that the seed alone chooses. Supplies below 0 count as 0; with no base at all, the belt
    /// starts empty.
    explicit workcell_model(std::uint64_t seed, workcell_supplies supplies = {});

    /// "zk4".
    std::string_view name() const override;
    /// `station_inputs` and `station_outputs`.
    name_span inputs() const override;
    name_span outputs() const override;

    /// Sets the command at that place in `station_outputs`: on for exactly 1, off for any other
    /// value. It acts from the next step on. Does nothing for a place that does not exist.
    void set_command(int output, std::int32_t value) override;

    /// What moves can be slow: all but DEPOSE and ASPI. A command for one way slows that way alone.
    bool can_be_slow(int output) const override;
    void set_slow(int output, bool slow) override;

    /// Advances by `seconds`, rounded to the nearest nanosecond, in whole milliseconds: what is
    /// left over counts with the next call, so that ten steps of 0.001 are one of 0.010. At most an
    /// hour (3600 s) at a time; nothing happens for 0, a negative number or what is no number.
    ///
    ///     workcell_model model(29);
    ///     model.set_command(place_of(station_output::BZ1), 1);
    ///     model.step(0.3);
    ///     model.sensor(place_of(station_input::b1s))  // 1
    void step(double seconds) override;

    /// The sensor at that place in `station_inputs`: 1 or 0. 0 for a place that does not exist.
    int sensor(int input) const override;

    /// Sets the desk: its buttons read so at once; the emergency stop acts from the next step on.
    void set_desk(const station_desk& desk) override { desk_ = desk; }
    bool restart() override;
    /// The bases that left.
    station_counts counts() const override;
    /// What went wrong in the last call of `step`, oldest first, each with the end of its
    /// millisecond; valid until the next call.
    std::span<const station_incident> incidents() const override { return incidents_.list(); }
    /// The seed and the supplies: "graine", "bases", "pieces".
    std::vector<station_fact> facts() const override;

    /// Everything that a drawing shows.
    [[nodiscard]] workcell_state state() const;

private:
    // The sensors' rows (station_names.cpp).
    friend struct sensor_table;

    void latch_commands();
    void step_ms();
    void dispense();
    bool acts(station_output output) const;
    int speed_of_rod(station_output forth, station_output back) const;
    int speed_of_belt(station_output motor) const;
    bool is_slow(station_output output) const;
    bool at_rest() const;

    std::uint64_t seed_;
    workcell_supplies supplies_;
    // The commands as they were given, and whether they have an effect in this step.
    std::array<std::int32_t, static_cast<std::size_t>(station_output::count)> commands_{};
    std::array<bool, static_cast<std::size_t>(station_output::count)> acting_{};
    std::array<bool, static_cast<std::size_t>(station_output::count)> slow_{};
    station_desk desk_;
    std::int64_t pending_ns_ = 0;
    station::incident_log incidents_;
    station::conveyor belts_;
    station::handling handling_;
    station::press press_;
};
