// What every session can be asked for, whatever its station.
#pragma once
#include <optional>
#include <string>
#include <vector>

#include "session/command_line.h"

struct session_options {
    std::string panel;  ///< The panel to start; empty: quorin beside the program, else on the PATH.
    bool no_panel = false;
    std::string command;  ///< A shell's command to run in the panel's place; empty: none.
    std::optional<double> commander_timeout_s;  ///< Real seconds without a client; none: never.
    bool headless = false;
    bool paused = false;
    double speed = 1;                  ///< Simulated seconds per real second.
    std::optional<double> duration_s;  ///< Simulated seconds; none: no end of its own.
    std::vector<std::string> faults;   ///< As they were typed: NAME=KIND.
    std::string title;                 ///< One line; empty: none.
};

/// Adds the options of every session to a command line; values go to `options`, which must live as
/// long.
void add_session_options(command_line& line, session_options& options);

/// Throws `misuse` where options exclude or demand one another.
void check_together(const session_options& options);
