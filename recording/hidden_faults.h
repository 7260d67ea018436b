// The faults that a session's exercise hid: a recording announces how many at its beginning, and
// tells them at its end.
#pragma once
#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "recording/recording_reader.h"
#include "session/faults.h"

/// How many the first block announces; 0 where there are none.
[[nodiscard]] std::size_t announced_hidden_faults(const recording_head& head);

/// The fault that an exercise's row `panne` tells; nothing for any other event, and for a text that
/// is no fault.
[[nodiscard]] std::optional<station_fault> told_hidden_fault(const station_event& event);

/// All that the rest of the recording tells. Takes it to its end; throws `refusal` where it is no
/// recording.
[[nodiscard]] std::vector<station_fault> told_hidden_faults(recording_reader& recording);
