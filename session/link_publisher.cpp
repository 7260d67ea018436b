#include "session/link_publisher.h"

#include "ioshare/io_clocks.h"

void link_publisher::read(std::span<const station_event> events) {
    // An end stays one: a raised counter would open the session again.
    if (store_changes(events)) io_publish_unless_over(*server_.segment);
}

// A value that the segment already holds is no change: the first block tells every input, also
// those that are 0 as the segment is.
bool link_publisher::store_changes(std::span<const station_event> events) {
    bool changed = false;
    for (const station_event& each : events) {
        if (each.kind != event_kind::input) continue;
        const auto place = static_cast<std::size_t>(each.index);
        if (published_.size() <= place) published_.resize(place + 1);
        if (published_[place] == each.value) continue;
        published_[place] = each.value;
        server_.setreset_input(each.index, static_cast<int>(each.value));
        changed = true;
    }
    return changed;
}
