// A station driven by the names of its commands and sensors, as a user drives it.
#pragma once
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <sstream>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "workcell/workcell_model.h"

/// The place of a name that a test wrote; one that does not exist fails the test.
inline int checked_place(name_span names, std::string_view name) {
    const int place = index_of(names, name);
    EXPECT_GE(place, 0) << "no such name: " << name;
    return place;
}

class station_driver {
public:
    explicit station_driver(std::uint64_t seed = 1, workcell_supplies supplies = {})
        : model(seed, supplies) {}

    workcell_model model;
    /// What is commanded, stepped and read: the model, or what a test puts around it.
    station_model* outside = &model;

    /// Sets commands written "MT=1 BZ1=0".
    void set(const std::string& commands) {
        std::istringstream words(commands);
        for (std::string word; words >> word;) {
            const std::size_t equals = word.find('=');
            outside->set_command(checked_place(station_outputs, word.substr(0, equals)),
                                 word[equals + 1] - '0');
        }
    }
    /// Latches or releases the emergency stop.
    void stop(bool latched) { outside->set_desk({.atu = latched}); }
    /// Steps, and keeps what went wrong.
    void step(double seconds) {
        outside->step(seconds);
        happened_.insert(happened_.end(), outside->incidents().begin(), outside->incidents().end());
    }
    void run_ms(int ms) {
        for (int i = 0; i < ms; ++i) step(0.001);
    }
    int sensor(std::string_view name) const {
        return outside->sensor(checked_place(station_inputs, name));
    }
    /// Runs until the sensor has the value, 60 s at most; returns the milliseconds that it took, -1
    /// if it never came.
    int wait(std::string_view name, int value = 1) {
        for (int ms = 0; ms <= 60'000; ++ms) {
            if (sensor(name) == value) return ms;
            step(0.001);
        }
        ADD_FAILURE() << name << " never became " << value;
        return -1;
    }
    /// The leading edge of a base, the foremost if none is named.
    double front_mm(std::size_t index = 0) const { return model.state().bases.at(index).front_mm; }
    /// Runs until the foremost base is at least there.
    void wait_front(double mm) {
        for (int i = 0; i < 60'000 && front_mm() < mm; ++i) step(0.001);
        EXPECT_GE(front_mm(), mm);
    }
    /// Brings the first base to zone 1, 2 or 3, glued and with a part on the way if asked, and
    /// stops both belts.
    void bring_to_zone(int zone, bool glue = false, bool part = false);
    /// Fetches a part with the drawer: the cup is then high, holds it, and the drawer is in.
    void fetch_part() {
        wait("pp");
        play({{"SORT=1", "ts=1"},
              {"SORT=0 DESV=1", "vb=1"},
              {"ASPI=1", "vide=1"},
              {"DESV=0 MONV=1", "vh=1"},
              {"MONV=0 RENT=1", "te=1"},
              {"RENT=0", ""}});
    }
    /// Places the held part on what is below.
    void place_part() {
        play({{"DESV=1", "vb=1"}, {"ASPI=0", "vide=0"}, {"DESV=0 MONV=1", "vh=1"}, {"MONV=0", ""}});
    }

    struct move {
        std::string commands, then_wait;
    };
    void play(const std::vector<move>& moves) {
        for (const auto& [commands, then_wait] : moves) {
            set(commands);
            step(0.001);
            if (then_wait.empty()) continue;
            const std::size_t equals = then_wait.find('=');
            wait(then_wait.substr(0, equals), then_wait[equals + 1] - '0');
        }
    }
    /// The incidents since the last call, and their texts.
    std::vector<station_incident> take_incidents() { return std::exchange(happened_, {}); }
    std::vector<std::string> incidents() {
        std::vector<std::string> texts;
        for (const station_incident& each : take_incidents()) texts.emplace_back(each.text);
        return texts;
    }

private:
    std::vector<station_incident> happened_;
};

inline void station_driver::bring_to_zone(int zone, bool glue, bool part) {
    set("BZ1=1 BZ2=1 BZ3=1 MTA=1 MT=1");
    wait("p1ok");
    set("MTA=0");
    if (glue) play({{"DEPOSE=1", "colle=1"}, {"DEPOSE=0", ""}});
    if (zone >= 2) play({{"BZ1=0", "p2ok=1"}});
    if (part) {
        fetch_part();
        place_part();
    }
    if (zone >= 3) play({{"BZ2=0", "p3ok=1"}});
    run_ms(50);  // It settles against its blocker.
    play({{"MT=0", ""}});
}

using texts = std::vector<std::string>;

// What the incidents say, byte for byte (UTF-8).
inline const std::string glue_spilled = "colle répandue : pas de support en zone 1";
inline const std::string part_lost = "pièce perdue : lâchée ailleurs que sur un support en zone 2";
inline const std::string second_part = "pièce perdue : le support en zone 2 en porte déjà une";
inline const std::string drawer_refused = "tiroir bloqué : la ventouse est trop basse";
inline const std::string press_stopped = "presse arrêtée : le support n'est pas à sa butée";
inline const std::string base_held = "support retenu : la presse n'est pas haute";
inline const std::string blocker_refused[] = {"bloqueur 1 arrêté : un support est au-dessus",
                                              "bloqueur 2 arrêté : un support est au-dessus",
                                              "bloqueur 3 arrêté : un support est au-dessus"};
