// A run of the tests' station whose events are kept as rows.
#pragma once
#include <algorithm>
#include <string>

#include "recording/event_rows.h"
#include "session/station_run.h"
#include "tests/session/fake_station.h"

struct recorded_run {
    recorded_run() { run.add_reader(kept); }

    void step() {
        run.step([this](int output) { return given.at(static_cast<std::size_t>(output)); });
    }
    /// The rows since the last call.
    std::string new_rows() {
        const std::string all = kept.rows();
        const std::string fresh = all.substr(read_);
        read_ = all.size();
        return fresh;
    }

    fake_station model;
    station_run run{model};
    row_collector kept;
    std::array<std::int32_t, 2> given = {};  ///< What the next step is commanded.

private:
    std::size_t read_ = 0;
};
