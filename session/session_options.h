// What every session can be asked for, whatever its station.
#pragma once
#include <optional>
#include <string>
#include <vector>

#include "session/command_line.h"

struct session_options {
    /// The panel to start; empty: quorin beside the program, else on the PATH.
    std::string panel;
    /// No panel is started: whoever likes attaches.
    bool no_panel = false;
    /// A shell's command to run in the panel's place; empty: none.
    std::string command;
    /// Real seconds without a client; none: never.
    std::optional<double> commander_timeout_s;
    /// Without a window, and without looking for a display.
    bool headless = false;
    /// Begins in a pause, before the first step.
    bool paused = false;
    /// Simulated seconds per real second.
    double speed = 1;
    /// Simulated seconds; none: no end of its own.
    std::optional<double> duration_s;
    /// As they were typed: NAME=KIND.
    std::vector<std::string> faults;
    /// One line; empty: none.
    std::string title;
    /// Whether the standard output carries something else than the identifier, which is then the
    /// first line of the error stream.
    bool output_is_taken = false;
};

/// Adds the options of every session to a command line; values go to `options`, which must live as
/// long.
void add_session_options(command_line& line, session_options& options);

/// Throws `misuse` where options exclude or demand one another.
void check_together(const session_options& options);
