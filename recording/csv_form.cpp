#include "recording/csv_form.h"

#include "recording/event_rows.h"

std::string csv_form::text_of(std::span<const station_event> events) {
    std::string text;
    if (!begun_) {
        begun_ = true;
        signals_.note(events);
        text = csv_head;
    }
    for (const station_event& each : events)
        if (signals_.has(each)) text += csv_line(row_of_event(each));
    return text;
}
