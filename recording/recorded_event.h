// An event as a recording tells it, with its own texts.
#pragma once
#include <cstdint>
#include <string>

#include "recording/event_rows.h"
#include "session/station_events.h"

struct recorded_event {
    /// Of its row in the file, from 1.
    std::int64_t line = 0;
    /// As `station_event::ms`.
    std::int64_t ms = 0;
    /// Says how `name`, `value` and `text` are to be read.
    event_kind kind = event_kind::session;
    /// Empty for an incident.
    std::string name;
    /// As `station_event::value`.
    std::int64_t value = 0;
    /// As `station_event::text`; of a session's or an exercise's row always the text of its value.
    std::string text;
    /// The place on the link of an input or output, by the recording's first block; -1 for all
    /// else.
    int index = -1;

    /// The same for readers of events; valid as long as this one.
    [[nodiscard]] station_event event() const { return {ms, kind, name, value, text, index}; }
};

/// Whether the station is given this, rather than answering by it: a fault, the desk, a command.
[[nodiscard]] inline bool is_cause(event_kind kind) {
    return kind == event_kind::fault || kind == event_kind::desk || kind == event_kind::output;
}

/// Reads a row: its time, its kind, and its value as that kind has it. Throws `recording_problem`.
[[nodiscard]] recorded_event event_of_row(const event_row& row, std::int64_t line);
