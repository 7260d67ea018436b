// The options that zk4sim has besides those of every session.
#pragma once
#include <cstdint>

#include "session/command_line.h"
#include "workcell/workcell_model.h"

struct zk4sim_options {
    std::uint64_t seed = 0;
    workcell_supplies supplies;
};

/// The command line of zk4sim; values go to `options`, which must live as long.
command_line zk4sim_command_line(zk4sim_options& options);
