#include "recording/hidden_faults.h"

#include <algorithm>

namespace {

bool says(const station_event& event, std::string_view name) {
    return event.kind == event_kind::exercise && event.name == name;
}

}  // namespace

std::size_t announced_hidden_faults(const recording_head& head) {
    for (const recorded_event& each : head.events)
        if (says(each.event(), "pannes_cachees") && each.value > 0)
            return static_cast<std::size_t>(each.value);
    return 0;
}

std::optional<station_fault> told_hidden_fault(const station_event& event) {
    if (!says(event, "panne")) return std::nullopt;
    const std::size_t equals = event.text.rfind('=');
    if (equals == std::string_view::npos) return std::nullopt;
    const auto kind = fault_kind_called(event.text.substr(equals + 1));
    if (!kind) return std::nullopt;
    return station_fault{std::string(event.text.substr(0, equals)), *kind};
}

std::vector<station_fault> told_hidden_faults(recording_reader& recording) {
    std::vector<station_fault> told;
    while (recording.peek()) {
        const recorded_event taken = recording.take();
        if (const auto fault = told_hidden_fault(taken.event())) told.push_back(*fault);
    }
    return told;
}
