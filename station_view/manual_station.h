// A station without a model: its inputs are what somebody sets, its outputs are shown.
#pragma once
#include <cstdint>
#include <string>
#include <vector>

#include "session/station_model.h"

/// The names of a station's inputs and outputs.
struct station_names {
    /// In the order of the link.
    std::vector<std::string> inputs, outputs;
};

class manual_station : public station_model {
public:
    /// With every input and every command at 0.
    explicit manual_station(station_names names);
    manual_station(const manual_station&) = delete;
    manual_station& operator=(const manual_station&) = delete;

    /// Sets all inputs, 1 for what is not 0; `values` has one for each. They count from the next
    /// step on, so that a step tells them all.
    void set_inputs(const std::vector<int>& values);
    /// The commands as the link holds them.
    const std::vector<int>& commands() const { return commands_; }

    /// "manuel".
    std::string_view name() const override;
    name_span inputs() const override { return inputs_; }
    name_span outputs() const override { return outputs_; }
    void set_command(int output, std::int32_t value) override;
    void step(double) override { sensors_ = wanted_; }
    int sensor(int input) const override;

private:
    station_names names_;
    std::vector<std::string_view> inputs_, outputs_;
    std::vector<int> wanted_, sensors_, commands_;
};

/// The names of the ZK4 station.
[[nodiscard]] station_names zk4_names();

/// Reads names from a file: the inputs, an empty line, the outputs, one a line. Throws `refusal`,
/// one line that begins with the file and, where there is one, the line, when it cannot be read, is
/// not such a file, or has names that do not fit in a segment.
[[nodiscard]] station_names read_names(const std::string& file);
