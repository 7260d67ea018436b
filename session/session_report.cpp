#include "session/session_report.h"

#include "ioshare/io_printable.h"

std::string seconds_text(std::int64_t ms) {
    const std::string rest = std::to_string(1000 + ms % 1000);
    return std::to_string(ms / 1000) + '.' + rest.substr(1);
}

void session_report::read(std::span<const station_event> events) {
    for (const station_event& each : events) {
        if (each.kind != event_kind::incident || each.value <= told_) continue;
        told_ = each.value;
        lines_.push_back(seconds_text(each.ms) + " s: incident: " + io_printable(each.text));
    }
}

void session_report::print(message_stream& messages) {
    for (const std::string& line : lines_) messages.line(line);
    lines_.clear();
}

std::string summary_of(const station_run& run) {
    const station_counts counts = run.counts();
    return "bilan: bonnes=" + std::to_string(counts.good) +
           " mauvaises=" + std::to_string(counts.bad) +
           " incidents=" + std::to_string(run.incidents());
}
