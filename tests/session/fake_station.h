// A station for the tests of sessions: three sensors, two commands, and in each step whatever the
// test lets happen.
#pragma once
#include <array>
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "session/station_model.h"

class fake_station : public station_model {
public:
    static constexpr std::array<std::string_view, 3> sensor_names = {"s1", "s2", "s3"};
    static constexpr std::array<std::string_view, 2> command_names = {"C1", "C2"};

    std::string_view name() const override { return "essai"; }
    name_span inputs() const override { return sensor_names; }
    name_span outputs() const override { return command_names; }
    void set_command(int output, std::int32_t value) override {
        if (output >= 0 && output < 2) commands[static_cast<std::size_t>(output)] = value;
    }
    void step(double seconds) override {
        wrong.clear();
        stepped_s.push_back(seconds);
        if (happens) happens(*this);
    }
    int sensor(int input) const override {
        return input >= 0 && input < 3 ? sensors[static_cast<std::size_t>(input)] : 0;
    }
    void set_desk(const station_desk& now) override { desk = now; }
    station_counts counts() const override { return made; }
    std::span<const station_incident> incidents() const override { return wrong; }
    std::vector<station_fact> facts() const override { return set_up; }

    std::function<void(fake_station&)> happens;
    std::array<int, 3> sensors = {};
    std::array<std::int32_t, 2> commands = {};
    station_desk desk;
    station_counts made;
    std::vector<station_incident> wrong;
    std::vector<station_fact> set_up;
    std::vector<double> stepped_s;  ///< The seconds of each step so far.
};
