// The command line of zk4sim.
#pragma once
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "workcell/faults.h"

struct zk4sim_options {
    std::string panel;  ///< The panel to start; empty: quorin beside zk4sim, else on the PATH.
    bool no_panel = false;
    std::optional<double> commander_timeout_s;  ///< Real seconds without a client; none: never.
    double speed = 1;                           ///< Simulated seconds per real second, 0.1 to 100.
    std::optional<double> duration_s;           ///< Simulated seconds; none: no end of its own.
    std::uint64_t seed = 0;
    std::vector<workcell_fault> faults;
};

/// What a command line asks for: a run, or the end with this status and these words (on the
/// standard output for status 0, else on the standard error stream).
struct zk4sim_request {
    std::optional<zk4sim_options> run;
    int status = 0;
    std::string words;
};

/// Reads the words after the program's name. One that it does not understand gives status 2 and one
/// line that says why. Numbers have a point, whatever the locale.
///
///     zk4sim_read_command_line({"--speed", "10", "--fault", "te=stuck0"}).run->speed;  // 10
zk4sim_request zk4sim_read_command_line(const std::vector<std::string>& words);
