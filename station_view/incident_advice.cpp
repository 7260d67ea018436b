#include "station_view/incident_advice.h"

#include "session/keyed_rows.h"

namespace {

using station::incident;

struct advice_row {
    incident key;
    /// The incident's own text is French.
    const char* english_text;
    bilingual advice;
};

// clang-format off
constexpr advice_row rows[] = {
    {incident::glue_spilled, "glue spilled: no base at zone 1",
     {"Ne mettez DEPOSE à 1 que lorsque p1ok est à 1, bloqueur 1 sorti.",
      "Set DEPOSE to 1 only while p1ok is 1, with blocker 1 out."}},
    {incident::part_lost, "part lost: let go elsewhere than on a base at zone 2",
     {"Ne remettez ASPI à 0 que ventouse basse (vb), tiroir rentré (te), support en zone 2 (p2ok).",
      "Set ASPI back to 0 only with the cup low (vb), the drawer in (te) and a base at zone 2 (p2ok)."}},
    {incident::second_part, "part lost: the base at zone 2 has one already",
     {"Laissez partir ce support vers la zone 3 (BZ2 à 0) avant de poser la pièce suivante.",
      "Let this base go on to zone 3 (BZ2 to 0) before the next part."}},
    {incident::drawer_refused, "drawer blocked: the suction cup is too low",
     {"Remontez la ventouse (MONV, jusqu'à vh) avant de bouger le tiroir.",
      "Raise the cup (MONV, up to vh) before the drawer moves."}},
    {incident::press_stopped, "press stopped: the base is not at its stop",
     {"Remontez la presse (MONP), puis attendez p3ok avant DESP.",
      "Raise the press (MONP), then wait for p3ok before DESP."}},
    {incident::base_held, "base held: the press is not high",
     {"Remontez la presse (MONP, jusqu'à ph) : le support repart ensuite.",
      "Raise the press (MONP, up to ph): the base then goes on."}},
    {incident::blocker_1_refused, "blocker 1 stopped: a base is above it",
     {"Attendez que le support soit passé avant de sortir le bloqueur 1 (BZ1).",
      "Wait until the base has passed before blocker 1 comes out (BZ1)."}},
    {incident::blocker_2_refused, "blocker 2 stopped: a base is above it",
     {"Attendez que le support soit passé avant de sortir le bloqueur 2 (BZ2).",
      "Wait until the base has passed before blocker 2 comes out (BZ2)."}},
    {incident::blocker_3_refused, "blocker 3 stopped: a base is above it",
     {"Attendez que le support soit passé avant de sortir le bloqueur 3 (BZ3).",
      "Wait until the base has passed before blocker 3 comes out (BZ3)."}},
};
// clang-format on
static_assert(one_row_each(rows));

}  // namespace

told_incident tell_incident(incident kind, language in) {
    const advice_row& row = row_of(rows, kind);
    const std::string what = in == language::english ? std::string(row.english_text)
                                                     : std::string(station::incident_text(kind));
    return {what, row.advice.in(in)};
}

told_incident tell_incident(std::string_view text, language in) {
    for (const advice_row& row : rows)
        if (station::incident_text(row.key) == text) return tell_incident(row.key, in);
    return {std::string(text), ""};
}
