// Scenes to draw: the station at work, and any that a random hand makes up.
#pragma once
#include <cstdint>
#include <limits>
#include <random>
#include <string>
#include <vector>

#include "station_view/station_picture.h"
#include "workcell/workcell_model.h"

/// The scene of a model, with commands as they were given.
inline station_scene scene_of(const workcell_model& model,
                              const std::vector<station_output>& ones = {}) {
    station_scene scene;
    scene.state = model.state();
    for (std::size_t i = 0; i < scene.sensors.size(); ++i)
        scene.sensors[i] = model.sensor(static_cast<int>(i));
    for (const station_output each : ones) scene.commands[static_cast<std::size_t>(each)] = 1;
    return scene;
}

/// A station in the middle of its work: a base pressed for some seconds, one with a part coming,
/// one being glued, others waiting.
inline station_scene scene_at_work() {
    using enum station_output;
    station_scene scene = scene_of(workcell_model(29), {MT, MTA, DESP, BZ1, BZ3, DEPOSE, ASPI});
    workcell_state& now = scene.state;
    now.bases = {{1, 900, true, true, false, 1},     {2, 700, true, true, false, 1},
                 {3, 300, false, false, false, 0.6}, {4, 60, false, false, false, 0},
                 {5, -100, false, false, false, 0},  {6, -200, false, false, false, 0}};
    now.blockers_out = {1, 0.3, 1};
    now.waiting_belt_um = 13'000;
    now.main_belt_um = 25'000;
    now.dispensing = now.suction = now.vacuum = now.part_in_cup = true;
    now.cup_down = 0.4;
    now.press_down = 1;
    now.press_held_s = 6.3;
    now.bases_in_stock = 993;
    now.parts_in_magazine = 4;
    now.good = 12;
    now.bad = 3;
    now.incidents = 5;
    now.parts_lost = 2;
    const auto set = [&scene](station_input input, int value) {
        scene.sensors[static_cast<std::size_t>(input)] = value;
    };
    for (const auto input : {station_input::b1s, station_input::b3s, station_input::p1ok,
                             station_input::p3ok, station_input::pb, station_input::vide})
        set(input, 1);
    for (const auto input : {station_input::b1e, station_input::b2e, station_input::b3e,
                             station_input::vh, station_input::ph, station_input::init})
        set(input, 0);
    scene.title = "poste 7";
    return scene;
}

/// The longest texts that can stand at every place.
inline station_scene widest_scene() {
    station_scene scene = scene_at_work();
    scene.commands.fill(std::numeric_limits<std::int32_t>::min());
    scene.sensors.fill(-1);
    scene.state.emergency_stop = true;
    scene.mode = session_mode::over;
    scene.title = std::string(200, 'W');
    scene.state.bases_in_stock = scene.state.parts_in_magazine = 1'000'000;
    scene.state.good = scene.state.bad = scene.state.incidents = scene.state.parts_lost = 1'000'000;
    scene.state.press_held_s = 10;
    return scene;
}

/// Any scene at all: numbers out of every bound, and what is no number.
class random_scenes {
public:
    explicit random_scenes(std::uint64_t seed) : random_(seed) {}

    station_scene next() {
        station_scene scene;
        workcell_state& now = scene.state;
        for (double* each :
             {&now.time_s, &now.drawer_out, &now.cup_down, &now.press_down, &now.press_held_s,
              &now.blockers_out[0], &now.blockers_out[1], &now.blockers_out[2]})
            *each = real();
        for (int* each : {&now.bases_in_stock, &now.parts_in_magazine, &now.parts_lost, &now.good,
                          &now.bad, &now.parts_left, &now.incidents})
            *each = whole();
        for (bool* each :
             {&now.emergency_stop, &now.waiting_belt_runs, &now.main_belt_runs, &now.dispensing,
              &now.suction, &now.vacuum, &now.part_in_drawer, &now.part_in_cup, &scene.desk.dc,
              &scene.desk.ac, &scene.desk.atu, &scene.english})
            *each = coin();
        now.waiting_belt_um = static_cast<std::int64_t>(random_());
        now.main_belt_um = static_cast<std::int64_t>(random_());
        for (auto i = random_() % 6; i > 0; --i)
            now.bases.push_back({whole(), real(), coin(), coin(), coin(), real()});
        for (std::int32_t& each : scene.sensors) each = coin() ? coin() : whole();
        for (std::int32_t& each : scene.commands) each = coin() ? coin() : whole();
        scene.mode =
            static_cast<session_mode>(random_() % static_cast<unsigned>(session_mode::count));
        for (auto i = random_() % 40; i > 0; --i) scene.title += static_cast<char>(random_());
        return scene;
    }

private:
    bool coin() { return random_() % 2 == 0; }
    int whole() { return static_cast<int>(random_() >> (32 + random_() % 32)) * (coin() ? 1 : -1); }
    double real() {
        constexpr double odd[] = {std::numeric_limits<double>::quiet_NaN(),
                                  std::numeric_limits<double>::infinity(),
                                  -std::numeric_limits<double>::infinity(),
                                  1e300,
                                  -1e300,
                                  -0.0,
                                  1,
                                  0};
        if (coin()) return odd[random_() % std::size(odd)];
        return std::uniform_real_distribution<double>(-2000, 2000)(random_) * (coin() ? 1 : 0.001);
    }

    std::mt19937_64 random_;
};
