// The link as a reader of a session: what changed at the inputs is published, once a step.
#pragma once
#include <vector>

#include "ioshare/io_server.h"
#include "session/station_events.h"

class link_publisher : public event_reader {
public:
    /// `server` must outlive it; its inputs are 0 so far.
    explicit link_publisher(IOsharemem_server& server) : server_(server) {}
    void read(std::span<const station_event> events) override;

private:
    bool store_changes(std::span<const station_event> events);

    IOsharemem_server& server_;
    std::vector<std::int64_t> published_;
};
