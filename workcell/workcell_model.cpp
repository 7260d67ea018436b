#include "workcell/workcell_model.h"

#include <algorithm>
#include <cmath>
#include <random>

namespace {

using station::base;

constexpr std::int64_t ns_per_ms = 1'000'000;
constexpr double longest_step_s = 3600;

// Outputs by their names, as indices that the compiler looks up.
consteval std::size_t at(std::string_view output) {
    return static_cast<std::size_t>(output_index(output));
}

// The generator's raw output is the same everywhere; a standard distribution's need not be.
int first_front_mm(std::uint64_t seed) {
    constexpr int places = station::waiting_belt_mm - station::base_mm + 1;
    std::mt19937_64 random(seed);
    return -static_cast<int>(random() % places);
}

double mm(int um) { return um / 1000.0; }

}  // namespace

struct workcell_model::sensor_row {
    std::string_view name;
    bool (*reads)(const workcell_model&);
};

// clang-format off
const std::array<workcell_model::sensor_row, station_inputs.size()> workcell_model::sensor_rows = {{
    {"b1e",   [](const workcell_model& m) { return m.belts_.blockers()[0].at_rest(); }},
    {"b1s",   [](const workcell_model& m) { return m.belts_.blockers()[0].at_far_end(); }},
    {"b2e",   [](const workcell_model& m) { return m.belts_.blockers()[1].at_rest(); }},
    {"b2s",   [](const workcell_model& m) { return m.belts_.blockers()[1].at_far_end(); }},
    {"b3e",   [](const workcell_model& m) { return m.belts_.blockers()[2].at_rest(); }},
    {"b3s",   [](const workcell_model& m) { return m.belts_.blockers()[2].at_far_end(); }},
    {"te",    [](const workcell_model& m) { return m.handling_.drawer().at_rest(); }},
    {"ts",    [](const workcell_model& m) { return m.handling_.drawer().at_far_end(); }},
    {"vh",    [](const workcell_model& m) { return m.handling_.cup().at_rest(); }},
    {"vb",    [](const workcell_model& m) { return m.handling_.cup().at_far_end(); }},
    {"ph",    [](const workcell_model& m) { return m.press_.rod().at_rest(); }},
    {"pb",    [](const workcell_model& m) { return m.press_.rod().at_far_end(); }},
    {"pp",    [](const workcell_model& m) { return m.handling_.part_in_drawer(); }},
    {"p1ok",  [](const workcell_model& m) { return m.belts_.at_zone(0) != nullptr; }},
    {"p2ok",  [](const workcell_model& m) { return m.belts_.at_zone(1) != nullptr; }},
    {"p3ok",  [](const workcell_model& m) { return m.belts_.at_zone(2) != nullptr; }},
    {"init",  [](const workcell_model& m) { return m.at_rest(); }},
    {"vide",  [](const workcell_model& m) { return m.handling_.vacuum(); }},
    {"colle", [](const workcell_model& m) { const base* b = m.belts_.at_zone(0); return b != nullptr && b->glued(); }},
    {"dc",    [](const workcell_model& m) { return m.dc_; }},
    {"ac",    [](const workcell_model& m) { return m.ac_; }},
    {"atu",   [](const workcell_model& m) { return m.atu_; }},
    {"timer10_term", [](const workcell_model& m) { return m.press_.timer_done(); }},
}};
// clang-format on

workcell_model::workcell_model(std::uint64_t seed, workcell_supplies supplies)
    : belts_(first_front_mm(seed), std::max(supplies.bases, 0)),
      handling_(std::max(supplies.parts, 0)) {}

void workcell_model::step(double seconds) {
    if (!(seconds > 0)) return;
    pending_ns_ += std::llround(std::min(seconds, longest_step_s) * 1e9);
    if (pending_ns_ < ns_per_ms) return;
    latch_commands();
    for (; pending_ns_ >= ns_per_ms; pending_ns_ -= ns_per_ms) step_ms();
}

void workcell_model::set_command(int index, std::int32_t value) {
    if (index >= 0 && index < static_cast<int>(commands_.size()))
        commands_[static_cast<std::size_t>(index)] = value;
}

void workcell_model::latch_commands() {
    for (std::size_t i = 0; i < acting_.size(); ++i)
        acting_[i] = commands_[i] == 1 && !actuator_faults_[i] && !atu_;
}

// Under the emergency stop nothing moves and none of the station's times runs: the springs, the
// vacuum and the press's timer are as they were.
void workcell_model::step_ms() {
    ++incidents_.now_ms;
    if (atu_) return;
    const auto direction = [this](std::size_t forth, std::size_t back) {
        return acting_[forth] - acting_[back];
    };
    handling_.step(
        {direction(at("SORT"), at("RENT")), direction(at("DESV"), at("MONV")), acting_[at("ASPI")]},
        belts_, incidents_);
    press_.step(direction(at("DESP"), at("MONP")), belts_, incidents_);
    belts_.step({acting_[at("MTA")],
                 acting_[at("MT")],
                 {acting_[at("BZ1")], acting_[at("BZ2")], acting_[at("BZ3")]},
                 press_.rod().at_rest()},
                incidents_);
    dispense();
}

// What is laid on a base stays with it, also when it leaves before it has enough.
void workcell_model::dispense() {
    base* below = acting_[at("DEPOSE")] ? belts_.at_zone(0) : nullptr;
    incidents_.watch(station::incident::glue_spilled, acting_[at("DEPOSE")] && below == nullptr);
    if (below != nullptr) below->glue_ms = std::min(below->glue_ms + 1, station::glue_ms);
}

bool workcell_model::at_rest() const {
    const auto retracted = [](const station::cylinder& blocker) { return blocker.at_rest(); };
    return handling_.drawer().at_rest() && handling_.cup().at_rest() && press_.rod().at_rest() &&
           std::ranges::all_of(belts_.blockers(), retracted) && !handling_.suction() &&
           !handling_.part_in_cup() && !acting_[at("DEPOSE")] && !acting_[at("MTA")] &&
           !acting_[at("MT")];
}

int workcell_model::sensor(int index) const {
    if (index < 0 || index >= static_cast<int>(sensor_rows.size())) return 0;
    const auto i = static_cast<std::size_t>(index);
    if (sensor_faults_[i] == workcell_fault_kind::stuck0) return 0;
    if (sensor_faults_[i] == workcell_fault_kind::stuck1) return 1;
    return sensor_rows[i].reads(*this) != (sensor_faults_[i] == workcell_fault_kind::inverted);
}

std::optional<workcell_fault_kind>* workcell_model::fault_of(std::string_view name) {
    if (const int input = input_index(name); input >= 0)
        return &sensor_faults_[static_cast<std::size_t>(input)];
    if (const int output = output_index(name); output >= 0)
        return &actuator_faults_[static_cast<std::size_t>(output)];
    return nullptr;
}

bool workcell_model::add_fault(std::string_view name, workcell_fault_kind kind) {
    if (!fault_fits(name, kind)) return false;
    *fault_of(name) = kind;
    return true;
}

bool workcell_model::remove_fault(std::string_view name) {
    std::optional<workcell_fault_kind>* fault = fault_of(name);
    if (fault == nullptr || !*fault) return false;
    fault->reset();
    return true;
}

std::vector<workcell_fault> workcell_model::faults() const {
    std::vector<workcell_fault> found;
    const auto collect = [&found](const auto& faults, const auto& names) {
        for (std::size_t i = 0; i < names.size(); ++i)
            if (faults[i]) found.push_back({names[i], *faults[i]});
    };
    collect(sensor_faults_, station_inputs);
    collect(actuator_faults_, station_outputs);
    return found;
}

workcell_state workcell_model::state() const {
    workcell_state now{};
    now.time_s = static_cast<double>(incidents_.now_ms) / 1000.0;
    now.emergency_stop = atu_;
    now.waiting_belt_runs = acting_[at("MTA")];
    now.main_belt_runs = acting_[at("MT")];
    now.dispensing = acting_[at("DEPOSE")];
    now.suction = handling_.suction();
    now.vacuum = handling_.vacuum();
    for (std::size_t i = 0; i < 3; ++i) now.blockers_out[i] = belts_.blockers()[i].fraction();
    now.drawer_out = handling_.drawer().fraction();
    now.cup_down = handling_.cup().fraction();
    now.press_down = press_.rod().fraction();
    now.part_in_drawer = handling_.part_in_drawer();
    now.part_in_cup = handling_.part_in_cup();
    for (const base& each : belts_.bases())
        now.bases.push_back(
            {each.number, mm(each.front_um), each.glued(), each.part, each.pressed});
    now.bases_in_stock = belts_.stock();
    now.parts_in_magazine = handling_.magazine();
    now.parts_lost = handling_.lost();
    now.good = belts_.good();
    now.bad = belts_.bad();
    now.parts_left = belts_.parts_left();
    now.incidents = incidents_.total();
    return now;
}
