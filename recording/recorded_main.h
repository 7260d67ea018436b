// A station as a program whose sessions are recorded and replayed.
#pragma once
#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "session/station_main.h"

/// A kind of station: made new for a session, or made again as a recording says.
struct recordable_station {
    /// As the model calls itself: "zk4".
    std::string name;
    /// Makes one for a live session, by the program's own options. May throw `failure`.
    std::function<std::unique_ptr<station_model>()> make;
    /// From what a recording was set up with; throws `refusal` where that cannot be.
    std::function<std::unique_ptr<station_model>(std::span<const station_fact>)> remake;
    /// The program's own options that a recording decides: "--seed".
    std::vector<std::string> set_up = {};
    /// Options that exclude others: the first of each with all behind it.
    std::vector<std::vector<std::string>> exclusions = {};
    /// The faults that a session hid whose recording was cut off before it tells them; nothing
    /// where nobody knows. Throws `failure`.
    std::function<std::optional<std::vector<station_fault>>()> hidden_faults = {};
    /// The files that its options name to be read, "-" for the standard input: none is recorded to.
    /// Throws `failure`.
    std::function<std::vector<std::string>()> read_files = {};
};

/// The main of a station's program, as `station_main`, with recordings: --csv, --vcd, --play, --at.
/// A recording of another station is played as it was recorded. With --play and --headless, and no
/// --speed, nothing is served: the recording is run again as fast as it can be.
[[nodiscard]] int recorded_station_main(int argc, char** argv, command_line line,
                                        const recordable_station& station,
                                        const runner_choice& choose_runner = {});
