#include "workcell/incidents.h"

#include "session/keyed_rows.h"

namespace station {
namespace {

struct text_row {
    incident key;
    std::string_view text;
};

// clang-format off
constexpr text_row texts[] = {
    {incident::glue_spilled,      "colle r\xC3\xA9pandue : pas de support en zone 1"},
    {incident::part_lost,         "pi\xC3\xA8" "ce perdue : l\xC3\xA2" "ch\xC3\xA9" "e ailleurs que sur un support en zone 2"},
    {incident::second_part,       "pi\xC3\xA8" "ce perdue : le support en zone 2 en porte d\xC3\xA9j\xC3\xA0 une"},
    {incident::drawer_refused,    "tiroir bloqu\xC3\xA9 : la ventouse est trop basse"},
    {incident::press_stopped,     "presse arr\xC3\xAAt\xC3\xA9" "e : le support n'est pas \xC3\xA0 sa but\xC3\xA9" "e"},
    {incident::base_held,         "support retenu : la presse n'est pas haute"},
    {incident::blocker_1_refused, "bloqueur 1 arr\xC3\xAAt\xC3\xA9 : un support est au-dessus"},
    {incident::blocker_2_refused, "bloqueur 2 arr\xC3\xAAt\xC3\xA9 : un support est au-dessus"},
    {incident::blocker_3_refused, "bloqueur 3 arr\xC3\xAAt\xC3\xA9 : un support est au-dessus"},
};
// clang-format on
static_assert(one_row_each(texts));

}  // namespace

std::string_view incident_text(incident kind) { return row_of(texts, kind).text; }

void incident_log::add(incident kind) {
    list_.push_back({now_ms_, incident_text(kind)});
    ++total_;
}

void incident_log::watch(incident kind, bool holds) {
    bool& held = holding_[static_cast<std::size_t>(kind)];
    if (holds && !held) add(kind);
    held = holds;
}

}  // namespace station
