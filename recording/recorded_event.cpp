#include "recording/recorded_event.h"

#include <limits>

#include "recording/csv_reader.h"
#include "recording/recorded_text.h"
#include "session/faults.h"
#include "session/keyed_rows.h"
#include "session/whole_number.h"

namespace {

constexpr std::int64_t latest_ms = 1'000'000'000'000;

/// A number in the one form in which it is written.
std::optional<std::int64_t> plain_number(const std::string& text) {
    const auto number = whole_number<std::int64_t>(text);
    return number && std::to_string(*number) == text ? number : std::nullopt;
}

/// Takes name and value of a row, or says what is wrong with them.
using row_taker = std::string (*)(const event_row& row, recorded_event& event);

std::string take_words(const event_row& row, recorded_event& event) {
    if (row.name.empty()) return "un nom manque";
    if (row.value.empty()) return "une valeur manque";
    const bool one_line = row.name == "titre" || row.name == "fin";
    if (event.kind == event_kind::session && one_line && recorded_name(row.value) != row.value)
        return "un texte de plusieurs lignes";
    event.name = row.name;
    event.text = row.value;
    if (const auto number = plain_number(row.value)) event.value = *number;
    return {};
}

std::string take_incident(const event_row& row, recorded_event& event) {
    const auto number = plain_number(row.name);
    if (!number || *number < 1) return "\"" + row.name + "\" n'est pas le numéro d'un incident";
    event.value = *number;
    event.text = row.value;
    return {};
}

std::string take_value(const event_row& row, recorded_event& event) {
    using limits = std::numeric_limits<std::int32_t>;
    const auto number = plain_number(row.value);
    if (!number || *number < limits::min() || *number > limits::max())
        return "\"" + row.value + "\" n'est pas un entier de 32 bits";
    event.name = row.name;
    event.value = *number;
    return {};
}

std::string take_button(const event_row& row, recorded_event& event) {
    if (row.value != "0" && row.value != "1") return "\"" + row.value + "\" n'est ni 0 ni 1";
    return take_value(row, event);
}

std::string take_fault(const event_row& row, recorded_event& event) {
    event.name = row.name;
    event.text = row.value;
    if (row.value.empty() || fault_kind_called(row.value)) return {};
    return "\"" + row.value + "\" n'est pas une panne";
}

struct taker_row {
    event_kind key;
    row_taker take;
};

constexpr taker_row takers[] = {
    {event_kind::session, take_words},  {event_kind::fault, take_fault},
    {event_kind::desk, take_button},    {event_kind::input, take_value},
    {event_kind::output, take_value},   {event_kind::incident, take_incident},
    {event_kind::exercise, take_words},
};
static_assert(one_row_each(takers));

std::int64_t time_of(const event_row& row, std::int64_t line) {
    const auto ms = plain_number(row.ms);
    if (!ms || *ms < 0)
        throw recording_problem{line, "\"" + row.ms + "\" n'est pas un temps en millisecondes"};
    if (*ms > latest_ms) throw recording_problem{line, "un temps au-delà de 10^12 ms"};
    return *ms;
}

}  // namespace

recorded_event event_of_row(const event_row& row, std::int64_t line) {
    recorded_event event;
    event.line = line;
    event.ms = time_of(row, line);
    const auto kind = event_kind_called(row.kind);
    if (!kind) throw recording_problem{line, "\"" + row.kind + "\" n'est pas un genre"};
    event.kind = *kind;
    if (recorded_name(row.name) != row.name)
        throw recording_problem{line, "un octet qui n'a pas de place dans un nom"};
    const std::string problem = row_of(takers, *kind).take(row, event);
    if (!problem.empty()) throw recording_problem{line, problem};
    return event;
}
