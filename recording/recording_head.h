// The first block of a recording: what a session began with.
#pragma once
#include <optional>
#include <string>
#include <vector>

#include "recording/recorded_event.h"
#include "session/station_model.h"

struct recording_head {
    /// "zk4"; "inconnue" for a link that was watched from outside.
    std::string station;
    /// Empty: none.
    std::string title;
    /// With what the station was set up, as `station_model::facts` told it.
    std::vector<station_fact> facts;
    /// In the order of the link.
    std::vector<std::string> inputs, outputs;
    /// Whether there is a desk: none where a link was watched from outside.
    bool has_desk = false;
    /// All of it, as it stands in the file.
    std::vector<recorded_event> events;

    /// The place of an event's input or output on the link; -1 for any other event.
    [[nodiscard]] int index_of(const recorded_event& event) const;
};

/// The parts of a first block, in their order.
enum class head_part { session, faults, exercise, desk, inputs, outputs, count };

/// Takes the events of a first block one by one.
class head_builder {
public:
    /// Fills `head`, which must outlive it and is empty at first.
    explicit head_builder(recording_head& head) : head_(head) {}

    /// Takes the event, or says that the block is over: it belongs to the first step. Throws
    /// `recording_problem` for one that is not in its place.
    [[nodiscard]] bool take(const recorded_event& event);
    /// Whether the block may end here.
    bool complete() const { return part_ == head_part::outputs; }

private:
    void check_first_rows(const recorded_event& event) const;
    bool begins_the_first_step(const recorded_event& event, std::optional<head_part> part) const;
    void take_session(const recorded_event& event);
    void take_desk(const recorded_event& event);
    void take_signal(std::vector<std::string>& names, const recorded_event& event);

    recording_head& head_;
    head_part part_ = head_part::session;
    std::size_t buttons_ = 0;
};
