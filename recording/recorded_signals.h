// Which of a link's inputs and outputs a recording follows: the one that each name means.
#pragma once
#include <cstddef>
#include <set>
#include <span>
#include <utility>

#include "session/station_events.h"

/// Names may stand several times on a link, where the last one counts. A recording has each name
/// once in each direction.
class recorded_signals {
public:
    /// Takes note of the inputs and outputs of the first block.
    void note(std::span<const station_event> first_block);
    /// Whether the event has a place in a recording: all have, save those of an input or output
    /// behind which another one bears the same name.
    [[nodiscard]] bool has(const station_event& event) const;

private:
    std::set<std::pair<event_kind, int>> hidden_;
};
