#include "workcell/incidents.h"

#include <iterator>
#include <utility>

namespace station {
namespace {

// In the order of the kinds.
// clang-format off
constexpr const char* texts[] = {
    "colle r\xC3\xA9pandue : pas de support en zone 1",
    "pi\xC3\xA8" "ce perdue : l\xC3\xA2" "ch\xC3\xA9" "e ailleurs que sur un support en zone 2",
    "pi\xC3\xA8" "ce perdue : le support en zone 2 en porte d\xC3\xA9j\xC3\xA0 une",
    "tiroir bloqu\xC3\xA9 : la ventouse est trop basse",
    "presse arr\xC3\xAAt\xC3\xA9" "e : le support n'est pas \xC3\xA0 sa but\xC3\xA9" "e",
    "support retenu : la presse n'est pas haute",
    "bloqueur 1 arr\xC3\xAAt\xC3\xA9 : un support est au-dessus",
    "bloqueur 2 arr\xC3\xAAt\xC3\xA9 : un support est au-dessus",
    "bloqueur 3 arr\xC3\xAAt\xC3\xA9 : un support est au-dessus",
};
// clang-format on
static_assert(std::size(texts) == static_cast<std::size_t>(incident::count));

}  // namespace

void incident_log::add(incident kind) {
    list_.push_back({static_cast<double>(now_ms) / 1000.0, texts[static_cast<std::size_t>(kind)]});
    ++total_;
}

std::vector<workcell_incident> incident_log::take() { return std::exchange(list_, {}); }

}  // namespace station
