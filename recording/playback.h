// A recording that goes through a session again: it drives the run and reads what the run tells.
#pragma once
#include <string>
#include <vector>

#include "session/session_follower.h"
#include "session/session_driver.h"

class playback : public event_reader, public session_follower, public session_driver {
public:
    /// Somebody who is handed the recorded events as they come again. Must outlive this one.
    void add_reader(event_reader& reader) { readers_.push_back(&reader); }

    /// The first thing that came otherwise than recorded, in one French line; empty as long as
    /// there is none.
    [[nodiscard]] virtual const std::string& difference() const = 0;

protected:
    void hand_over(std::span<const station_event> events) const {
        if (events.empty()) return;
        for (event_reader* const reader : readers_) reader->read(events);
    }

private:
    std::vector<event_reader*> readers_;
};
