#include "station_view/journal.h"

#include "lesson/verdict.h"
#include "session/session_report.h"
#include "station_view/event_labels.h"
#include "station_view/incident_advice.h"
#include "station_view/window_words.h"

namespace {

constexpr char one_column[] = "#C T102 T ", columns[] = "#C T12 T12 T18 T60 T ", rule[] = "#T";

std::string table_line(const std::string& time, const std::string& kind, const std::string& name,
                       const std::string& value) {
    return " " + markup_cell(time) + "#" + markup_cell(kind) + "#" + markup_cell(name) + "#" +
           markup_cell(value);
}

/// What an exercise says of its file is for whoever marks the recording, and how many faults it
/// hides is not for the student.
bool is_told(const station_event& event) {
    return event.kind != event_kind::exercise ||
           (event.name != "empreinte" && event.name != "pannes_cachees");
}

}  // namespace

std::string journal::line_of(const kept_row& kept, language in) {
    const bool incident = kept.kind == event_kind::incident;
    const std::string& value = kept.row.value;
    return table_line(seconds_text(std::stoll(kept.row.ms)), event_kind_label(kept.kind, in),
                      event_name_label(kept.kind, kept.row.name, in),
                      incident ? tell_incident(value, in).what : value);
}

void journal::read(std::span<const station_event> events) {
    for (const station_event& each : events) {
        // A replay that was taken back begins again.
        if (begins_a_run(each)) {
            rows_.clear();
            forgotten_ = 0;
        }
        if (!is_told(each)) continue;
        rows_.push_back({each.kind, row_of_event(each)});
        if (rows_.size() <= most_rows) continue;
        rows_.pop_front();
        ++forgotten_;
    }
}

std::vector<std::string> journal::lines(const std::string& title, language in) const {
    const auto text = [in](window_word word) { return std::string(text_of(word, in)); };
    std::vector<std::string> found = {one_column, rule, " " + text(window_word::journal_title)};
    if (!title.empty()) found.back() += colon.in(in) + markup_cell(title);
    if (forgotten_ > 0)
        found.push_back(" " + text(window_word::journal_limit) + std::to_string(forgotten_));
    found.insert(found.end(),
                 {columns, rule,
                  table_line(text(window_word::journal_time), text(window_word::journal_kind),
                             text(window_word::journal_name), text(window_word::journal_value)),
                  rule});
    for (const kept_row& kept : rows_) found.push_back(line_of(kept, in));
    found.push_back(rule);
    return found;
}
