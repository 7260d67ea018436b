// The ZK4 station as a deterministic physical model: belts, blockers, dispenser, drawer, suction
// cup and press.
//
// The model has no clock, no window and no input or output of its own: `step` advances it. The same
// seed, commands, faults and steps give the same history, bit for bit, on any machine: it counts in
// whole micrometres and milliseconds. Nothing throws, save for memory. docs/workcell.md describes
// the station.
#pragma once
#include <array>
#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

#include "workcell/conveyor.h"
#include "workcell/faults.h"
#include "workcell/handling.h"
#include "workcell/incidents.h"
#include "workcell/press.h"
#include "workcell/station_names.h"

/// What the station has to work with, the first base included.
struct workcell_supplies {
    int bases = 1000;
    int parts = 1000;
};

/// A base as a drawing needs it.
struct workcell_base {
    int number;       ///< 1 for the first of the run; never used again.
    double front_mm;  ///< Leading edge: -400 to 0 on the waiting belt, 0 to 1280 on the main belt
                      ///< and over its end.
    bool glued, part, pressed;
};

/// A snapshot of everything that a drawing shows: what is, not what the sensors say.
struct workcell_state {
    double time_s;  ///< Simulated time.
    bool emergency_stop;
    bool waiting_belt_runs, main_belt_runs, dispensing, suction, vacuum;
    std::array<double, 3> blockers_out;  ///< 0 retracted to 1 extended.
    double drawer_out;                   ///< 0 in to 1 out.
    double cup_down, press_down;         ///< 0 high to 1 low.
    bool part_in_drawer, part_in_cup;
    std::vector<workcell_base> bases;  ///< The foremost first.
    int bases_in_stock, parts_in_magazine, parts_lost;
    int good, bad;   ///< Bases that left.
    int parts_left;  ///< Parts that left on them.
    int incidents;   ///< Since the start, taken or not.
};

class workcell_model {
public:
    /// A station at its start: at rest, every command off, no fault, one base on the waiting belt,
    /// at a place that the seed alone chooses. Supplies below 0 count as 0; with no base at all,
    /// the belt starts empty.
    explicit workcell_model(std::uint64_t seed, workcell_supplies supplies = {});

    /// Advances by `seconds`, rounded to the nearest nanosecond, in whole milliseconds: what is
    /// left over counts with the next call, so that ten steps of 0.001 are one of 0.010. At most an
    /// hour (3600 s) at a time; nothing happens for 0, a negative number or what is no number.
    void step(double seconds);

    /// Sets the command at `index` in `station_outputs`: on for exactly 1, off for any other value.
    /// It acts from the next step on. Does nothing for an index that does not exist.
    void set_command(int index, std::int32_t value);

    /// The desk: start and stop cycle (1 while held) and the emergency stop, which acts from the
    /// next step on.
    void set_dc(bool pushed) { dc_ = pushed; }
    void set_ac(bool pushed) { ac_ = pushed; }
    void set_atu(bool latched) { atu_ = latched; }

    /// The sensor at `index` in `station_inputs`, as the panel sees it, its fault included: 1 or 0.
    /// 0 for an index that does not exist.
    int sensor(int index) const;

    /// Sets a fault in the place of any that the name had. False, and nothing done, where
    /// `fault_fits` says no.
    bool add_fault(std::string_view name, workcell_fault_kind kind);
    /// Ends the fault of that name. False when it had none.
    bool remove_fault(std::string_view name);
    /// The faults now set: sensors first, each in its table's order.
    std::vector<workcell_fault> faults() const;

    /// The incidents since the last call, oldest first; they are kept until taken.
    std::vector<workcell_incident> take_incidents() { return incidents_.take(); }

    workcell_state state() const;

private:
    struct sensor_row;
    static const std::array<sensor_row, station_inputs.size()> sensor_rows;

    void latch_commands();
    void step_ms();
    void dispense();
    bool at_rest() const;
    std::optional<workcell_fault_kind>* fault_of(std::string_view name);

    std::array<std::int32_t, station_outputs.size()> commands_{};
    std::array<bool, station_outputs.size()>
        acting_{};  ///< The commands that have an effect in this step.
    std::array<std::optional<workcell_fault_kind>, station_inputs.size()> sensor_faults_{};
    std::array<std::optional<workcell_fault_kind>, station_outputs.size()> actuator_faults_{};
    bool dc_ = false, ac_ = false, atu_ = false;
    std::int64_t pending_ns_ = 0;
    station::incident_log incidents_;
    station::conveyor belts_;
    station::handling handling_;
    station::press press_;
};
