#include "workcell/workcell_model.h"

#include <algorithm>
#include <cmath>
#include <random>
#include <utility>

namespace {

using station::base;

constexpr std::int64_t ns_per_ms = 1'000'000;
constexpr double longest_step_s = 3600;

// The generator's raw output is the same everywhere; a standard distribution's need not be.
int first_front_mm(std::uint64_t seed) {
    constexpr int places = station::waiting_belt_mm - station::base_mm + 1;
    std::mt19937_64 random(seed);
    return -static_cast<int>(random() % places);
}

double mm(int um) { return um / 1000.0; }
double seconds(std::int64_t ms) { return static_cast<double>(ms) / 1000.0; }

}  // namespace

workcell_model::workcell_model(std::uint64_t seed, workcell_supplies supplies)
    : seed_(seed),
      supplies_{std::max(supplies.bases, 0), std::max(supplies.parts, 0)},
      belts_(first_front_mm(seed), supplies_.bases),
      handling_(supplies_.parts) {}

std::string_view workcell_model::name() const { return "zk4"; }

name_span workcell_model::inputs() const { return station_inputs; }

name_span workcell_model::outputs() const { return station_outputs; }

void workcell_model::set_command(int output, std::int32_t value) {
    if (output >= 0 && std::cmp_less(output, commands_.size()))
        commands_[static_cast<std::size_t>(output)] = value;
}

bool workcell_model::can_be_slow(int output) const {
    const auto is = [output](station_output other) { return output == place_of(other); };
    return output >= 0 && std::cmp_less(output, slow_.size()) && !is(station_output::DEPOSE) &&
           !is(station_output::ASPI);
}

void workcell_model::set_slow(int output, bool slow) {
    if (can_be_slow(output)) slow_[static_cast<std::size_t>(output)] = slow;
}

void workcell_model::step(double seconds) {
    incidents_.begin_step();
    if (!(seconds > 0)) return;
    pending_ns_ += std::llround(std::min(seconds, longest_step_s) * 1e9);
    if (pending_ns_ < ns_per_ms) return;
    latch_commands();
    for (; pending_ns_ >= ns_per_ms; pending_ns_ -= ns_per_ms) step_ms();
}

void workcell_model::latch_commands() {
    for (std::size_t i = 0; i < acting_.size(); ++i) acting_[i] = commands_[i] == 1 && !desk_.atu;
}

bool workcell_model::acts(station_output output) const {
    return acting_[static_cast<std::size_t>(output)];
}

bool workcell_model::is_slow(station_output output) const {
    return slow_[static_cast<std::size_t>(output)];
}

// Above 0 towards one end, below 0 towards the other; opposite commands together ask for nothing.
int workcell_model::speed_of_rod(station_output forth, station_output back) const {
    if (acts(forth) == acts(back)) return 0;
    return acts(forth) ? station::rod_speed(is_slow(forth)) : -station::rod_speed(is_slow(back));
}

int workcell_model::speed_of_belt(station_output motor) const {
    return acts(motor) ? station::belt_speed_um(is_slow(motor)) : 0;
}

// Under the emergency stop nothing moves and none of the station's times runs: the springs, the
// vacuum and the press's timer are as they were.
void workcell_model::step_ms() {
    using enum station_output;
    incidents_.begin_ms();
    if (desk_.atu) return;
    const auto blocker_speed = [this](station_output blocker) {
        return station::rod_speed(is_slow(blocker));
    };
    handling_.step({speed_of_rod(SORT, RENT), speed_of_rod(DESV, MONV), acts(ASPI)}, belts_,
                   incidents_);
    press_.step(speed_of_rod(DESP, MONP), belts_, incidents_);
    belts_.step({speed_of_belt(MTA),
                 speed_of_belt(MT),
                 {acts(BZ1), acts(BZ2), acts(BZ3)},
                 {blocker_speed(BZ1), blocker_speed(BZ2), blocker_speed(BZ3)},
                 press_.rod().at_rest()},
                incidents_);
    dispense();
}

// What is laid on a base stays with it, also when it leaves before it has enough.
void workcell_model::dispense() {
    const bool lays = acts(station_output::DEPOSE);
    base* below = lays ? belts_.at_zone(0) : nullptr;
    incidents_.watch(station::incident::glue_spilled, lays && below == nullptr);
    if (below != nullptr) below->glue_ms = std::min(below->glue_ms + 1, station::glue_ms);
}

bool workcell_model::at_rest() const {
    using enum station_output;
    const auto retracted = [](const station::cylinder& blocker) { return blocker.at_rest(); };
    return handling_.drawer().at_rest() && handling_.cup().at_rest() && press_.rod().at_rest() &&
           std::ranges::all_of(belts_.blockers(), retracted) && !handling_.suction() &&
           !handling_.part_in_cup() && !acts(DEPOSE) && !acts(MTA) && !acts(MT);
}

bool workcell_model::restart() {
    *this = workcell_model(seed_, supplies_);
    return true;
}

station_counts workcell_model::counts() const { return {belts_.good(), belts_.bad()}; }

std::vector<station_fact> workcell_model::facts() const {
    return {{"graine", std::to_string(seed_)},
            {"bases", std::to_string(supplies_.bases)},
            {"pieces", std::to_string(supplies_.parts)}};
}

workcell_state workcell_model::state() const {
    workcell_state now{};
    now.time_s = seconds(incidents_.now_ms());
    now.emergency_stop = desk_.atu;
    now.waiting_belt_runs = acts(station_output::MTA);
    now.main_belt_runs = acts(station_output::MT);
    now.dispensing = acts(station_output::DEPOSE);
    now.suction = handling_.suction();
    now.vacuum = handling_.vacuum();
    std::ranges::transform(belts_.blockers(), now.blockers_out.begin(),
                           &station::cylinder::fraction);
    now.drawer_out = handling_.drawer().fraction();
    now.cup_down = handling_.cup().fraction();
    now.press_down = press_.rod().fraction();
    now.press_held_s = seconds(press_.held_ms());
    now.waiting_belt_um = belts_.waiting_belt_um();
    now.main_belt_um = belts_.main_belt_um();
    now.part_in_drawer = handling_.part_in_drawer();
    now.part_in_cup = handling_.part_in_cup();
    for (const base& each : belts_.bases())
        now.bases.push_back({each.number, mm(each.front_um), each.glued(), each.part, each.pressed,
                             seconds(each.glue_ms)});
    now.bases_in_stock = belts_.stock();
    now.parts_in_magazine = handling_.magazine();
    now.parts_lost = handling_.lost();
    now.good = belts_.good();
    now.bad = belts_.bad();
    now.parts_left = belts_.parts_left();
    now.incidents = incidents_.total();
    return now;
}
