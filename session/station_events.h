// What happens in a session, step by step: one list of events, which every reader is handed in
// turn.
//
// The link, recordings, the report on the error stream: each is a reader of these events, and none
// takes one away from another. docs/sessions.md shows the order within a step.
#pragma once
#include <cstdint>
#include <span>
#include <string_view>

/// What an event tells of; docs/recordings.md has a table of them.
enum class event_kind { session, fault, desk, input, output, incident, exercise, count };

/// One thing that happened. It owns no text: `event_reader::read` says how long they live.
struct station_event {
    /// Simulated milliseconds from the session's start; never falls.
    std::int64_t ms;
    /// Says how the other fields are to be read.
    event_kind kind;
    /// Of the input, output, desk button, faulty thing or count; empty for an incident.
    std::string_view name;
    /// Of an input, output, desk button or count; an incident's number, from 1.
    std::int64_t value = 0;
    /// A fault's kind (empty: it is over), an incident's text, a session's word.
    std::string_view text;
    /// Of an input or output: its place on the link.
    int index = -1;
};

/// Whether the event is the first of a first block. A replay that is taken back tells it again:
/// all that was told before is as if it had not been.
[[nodiscard]] constexpr bool begins_a_run(const station_event& event) {
    return event.kind == event_kind::session && event.name == "format";
}

/// Whether the event is the last one of a run.
[[nodiscard]] constexpr bool ends_a_run(const station_event& event) {
    return event.kind == event_kind::session && event.name == "fin";
}

/// Somebody who follows a session.
class event_reader {
public:
    virtual ~event_reader() = default;
    /// Takes the events of one step, oldest first. They and their texts are valid during the call
    /// only; names of inputs and outputs as long as the session.
    virtual void read(std::span<const station_event> events) = 0;
};
