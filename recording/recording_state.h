// What is so at a moment of a recording: by it a row that changes nothing, or that nothing can
// change, is found.
#pragma once
#include <array>
#include <cstdint>
#include <map>
#include <string>
#include <utility>

#include "recording/recording_head.h"

class recording_state {
public:
    /// Takes the first block. Throws `recording_problem` where a fault is none of its station's.
    void begin(const recording_head& head);
    /// Takes the next event. Throws `recording_problem` where it cannot be one.
    void take(const recorded_event& event);
    /// Whether that was the end.
    bool over() const { return over_; }

private:
    using signal = std::pair<event_kind, std::string>;

    void take_session(const recorded_event& event);
    void take_incident(const recorded_event& event);
    void take_fault(const recorded_event& event);
    void take_value(const recorded_event& event);

    std::int64_t ms_ = 0, incidents_ = 0;
    bool over_ = false;
    // Inputs, outputs, the desk and the counts, by their kind and name.
    std::map<signal, std::int64_t> values_;
    std::map<std::string, std::string> faults_;
};
