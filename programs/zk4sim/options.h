// The options that zk4sim has besides those of every session.
#pragma once
#include <cstdint>
#include <string>
#include <vector>

#include "session/command_line.h"
#include "session/session_options.h"
#include "lesson/bilingual.h"
#include "workcell/workcell_model.h"

struct zk4sim_options {
    std::uint64_t seed = 0;
    workcell_supplies supplies;
    /// The first option given that is for the model: "--seed"; empty: none.
    std::string for_the_model;
    /// No model: inputs are set by hand.
    bool manual = false;
    /// The file with their names; empty: those of the ZK4 station.
    std::string names;
    /// An exercise: a file, or the name of a bundled one; empty: none.
    std::string exercise;
    language in = language::french;
};

/// The command line of zk4sim; values go to `options`, which must live as long.
command_line zk4sim_command_line(zk4sim_options& options);

/// The files that they name to be read. Throws `refusal` where the exercise is none.
[[nodiscard]] std::vector<std::string> files_read(const zk4sim_options& options);

/// Throws `misuse` where its options exclude or demand one another, or those of every session.
void check_together(const zk4sim_options& options);
void check_together(const zk4sim_options& options, const session_options& session);
