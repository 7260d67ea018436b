// Serving the model on a shared I/O segment in real time, to the panel that it starts or to whoever
// attaches.
#pragma once
#include <optional>

#include "programs/zk4sim/options.h"

/// Runs a session to its end and returns the exit status: 0 when it ran, 1 when the panel or the
/// supervising process could not be started. The standard output gets "ident_mem=" and the
/// identifier, one line; the standard error stream the incidents as they happen, why the session
/// ended, and one line that sums it up. Nothing is left behind: docs/zk4sim.md says how.
int serve_station(const zk4sim_options& options);
