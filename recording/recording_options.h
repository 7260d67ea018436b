// What a program that records and replays can be asked for.
#pragma once
#include <optional>
#include <string>
#include <vector>

#include "session/command_line.h"

struct recording_options {
    /// Where the session is kept, as CSV and as a wave dump; "-" is the standard output, empty
    /// nowhere.
    std::string csv, vcd;
    /// A recording that is replayed; empty: none.
    std::string play;
    /// From where on it is shown, in simulated seconds.
    std::optional<double> at_s;
};

/// Adds the options to a command line; values go to `options`, which must live as long.
void add_recording_options(command_line& line, recording_options& options);

/// Throws `misuse` where the options exclude or demand one another. `given` are the options of the
/// whole command line, `set_up` those that a recording decides.
void check_together(const recording_options& options, const std::vector<std::string>& given,
                    const std::vector<std::string>& set_up);
