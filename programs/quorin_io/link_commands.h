// What quorin-io does on a segment, one function for each command.
//
// Each works on a segment that was attached, prints what it is asked for, and throws a `failure`
// for whatever else ends it. Wrong names and values are refused before anything is written.
#pragma once
#include "programs/quorin_io/request.h"

/// Prints direction, name and value of every input and output, separated by tabs.
void list_signals(io_observer& segment, const io_request& asked);

/// Prints values, one a line.
void get_values(io_observer& segment, const io_request& asked);

/// Writes outputs; with --until waits then until all its conditions hold at once.
void set_outputs(io_observer& segment, const io_request& asked);

/// Writes 0 to every output.
void reset_outputs(io_observer& segment, const io_request& asked);

/// Returns once all the conditions hold at once, or with --any one of them; fails with
/// `not_reached` when one of --unless holds, or after --timeout. Where both come at the same look,
/// it returns.
void wait_for_conditions(io_observer& segment, const io_request& asked);

/// Returns when all the conditions hold, and have held for --for seconds; fails with `not_reached`
/// when one does not.
void expect_conditions(io_observer& segment, const io_request& asked);

/// Sets an output to 1, and after --for seconds to 0. After a signal it is 0 too, and the process
/// ends with status 128 and the signal's number; a signal that is ignored stays so.
void pulse_output(io_observer& segment, const io_request& asked);

/// Prints NAME=VALUE for each change of the named inputs and outputs (of all when none is named),
/// until the session ends.
void watch_values(io_observer& segment, const io_request& asked);

/// The signal of that name. Throws `refusal` when there is none.
[[nodiscard]] const io_signal& known_signal(const io_observer& segment, const std::string& name);

/// The output of that name. Throws `refusal` when there is none.
const io_signal& known_output(const io_observer& segment, const std::string& name);

/// Throws a `failure` with `session_over` once the session has ended.
void refuse_after_the_end(const io_observer& segment);
