// What a session says of itself: incidents as they happen, and a line that sums up.
#pragma once
#include <string>
#include <vector>

#include "session/messages.h"
#include "session/station_events.h"
#include "session/station_run.h"

/// Keeps the lines of a step's incidents until they are printed. A replay that is taken back tells
/// its incidents again, with the same numbers: they were printed.
class session_report : public event_reader {
public:
    void read(std::span<const station_event> events) override;
    /// Prints what was read since the last time.
    void print(message_stream& messages);

private:
    std::vector<std::string> lines_;
    std::int64_t told_ = 0;
};

/// "bilan: bonnes=1 mauvaises=0 incidents=0".
std::string summary_of(const station_run& run);

/// "12.340": milliseconds as seconds.
std::string seconds_text(std::int64_t ms);
