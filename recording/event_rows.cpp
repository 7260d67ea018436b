#include "recording/event_rows.h"

#include <algorithm>

#include "recording/recorded_text.h"
#include "session/keyed_rows.h"

namespace {

struct kind_row {
    event_kind key;
    std::string_view word;
    bool text_is_value;  ///< Always; otherwise where there is a text.
};

// clang-format off
constexpr kind_row kinds[] = {
    {event_kind::session,  "session",  false},
    {event_kind::fault,    "panne",    true},
    {event_kind::desk,     "pupitre",  false},
    {event_kind::input,    "entree",   false},
    {event_kind::output,   "sortie",   false},
    {event_kind::incident, "incident", true},
    {event_kind::exercise, "exercice", false},
};
// clang-format on
static_assert(one_row_each(kinds));

}  // namespace

event_row row_of_event(const station_event& event) {
    const kind_row& kind = row_of(kinds, event.kind);
    const std::string number = std::to_string(event.value);
    const bool incident = event.kind == event_kind::incident;
    return {std::to_string(event.ms), std::string(kind.word),
            incident ? number : recorded_name(event.name),
            kind.text_is_value || !event.text.empty() ? recorded_text(event.text) : number};
}

std::optional<event_kind> event_kind_called(std::string_view word) {
    const auto* const found = std::ranges::find(kinds, word, &kind_row::word);
    if (found == std::end(kinds)) return std::nullopt;
    return found->key;
}

std::string_view event_kind_word(event_kind kind) { return row_of(kinds, kind).word; }

bool needs_quotes(std::string_view text) {
    return text.find_first_of(",\"\r\n") != std::string_view::npos;
}

std::string csv_field(const std::string& text) {
    if (!needs_quotes(text)) return text;
    std::string quoted = "\"";
    for (const char each : text) quoted += each == '"' ? std::string("\"\"") : std::string(1, each);
    return quoted + '"';
}

std::string csv_line(const event_row& row) {
    return csv_field(row.ms) + ',' + csv_field(row.kind) + ',' + csv_field(row.name) + ',' +
           csv_field(row.value) + '\n';
}

void row_collector::read(std::span<const station_event> events) {
    for (const station_event& each : events) rows_ += csv_line(row_of_event(each));
}
