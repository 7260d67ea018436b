#include "station_view/event_labels.h"

#include "session/keyed_rows.h"

namespace {

struct kind_row {
    event_kind key;
    bilingual word;
};

// clang-format off
constexpr kind_row kinds[] = {
    {event_kind::session,  {"session", "session"}},
    {event_kind::fault,    {"panne", "fault"}},
    {event_kind::desk,     {"pupitre", "desk"}},
    {event_kind::input,    {"entrée", "input"}},
    {event_kind::output,   {"sortie", "output"}},
    {event_kind::incident, {"incident", "incident"}},
    {event_kind::exercise, {"exercice", "exercise"}},
};
// clang-format on
static_assert(one_row_each(kinds));

// What the session tells of itself bears the names that files have for it.
constexpr bilingual session_names[] = {
    {"titre", "title"},   {"graine", "seed"},       {"pieces", "parts"}, {"bonnes", "good"},
    {"mauvaises", "bad"}, {"exercice", "exercise"}, {"fin", "end"},
};

}  // namespace

const char* event_kind_label(event_kind kind, language in) {
    return row_of(kinds, kind).word.in(in);
}

std::string event_name_label(event_kind kind, const std::string& name, language in) {
    if (in == language::english && kind == event_kind::session)
        for (const bilingual& each : session_names)
            if (name == each.french) return each.english;
    return name;
}
