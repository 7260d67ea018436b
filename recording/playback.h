// A recording that goes through a session again: it drives the run and reads what the run tells.
#pragma once
#include <algorithm>
#include <optional>
#include <string>
#include <vector>

#include "session/session_driver.h"
#include "session/session_follower.h"

class playback : public event_reader, public session_follower, public session_driver {
public:
    /// Somebody who is handed the recorded events as they come again, each once, also where the
    /// playback is taken back. Must outlive this one.
    void add_reader(event_reader& reader) { readers_.push_back(&reader); }

    /// Tells how long the recording is.
    void set_length(std::optional<std::int64_t> ms) { length_ms_ = ms; }
    [[nodiscard]] std::optional<std::int64_t> length_ms() const override { return length_ms_; }

    /// The first thing that came otherwise than recorded, in one French line; empty as long as
    /// there is none.
    [[nodiscard]] virtual const std::string& difference() const = 0;

protected:
    /// Hands these events on, less those that the readers were handed before the playback was taken
    /// back.
    void hand_over(std::span<const station_event> events) {
        const std::size_t known = std::min(events.size(), known_);
        known_ -= known;
        events = events.subspan(known);
        if (events.empty()) return;
        handed_over_ += events.size();
        for (event_reader* const reader : readers_) reader->read(events);
    }
    /// From now on it all comes again.
    void begin_again() { known_ = handed_over_; }

private:
    std::vector<event_reader*> readers_;
    std::optional<std::int64_t> length_ms_;
    std::size_t handed_over_ = 0;
    // How many of the coming events were handed over before.
    std::size_t known_ = 0;
};
