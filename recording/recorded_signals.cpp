#include "recording/recorded_signals.h"

#include <map>
#include <string>

#include "recording/recorded_text.h"

namespace {

bool is_signal(event_kind kind) { return kind == event_kind::input || kind == event_kind::output; }

}  // namespace

void recorded_signals::note(std::span<const station_event> first_block) {
    std::map<std::pair<event_kind, std::string>, int> last;
    for (const station_event& each : first_block) {
        if (!is_signal(each.kind)) continue;
        const auto [place, is_new] =
            last.try_emplace({each.kind, recorded_name(each.name)}, each.index);
        if (!is_new) hidden_.insert({each.kind, std::exchange(place->second, each.index)});
    }
}

bool recorded_signals::has(const station_event& event) const {
    return hidden_.empty() || !is_signal(event.kind) ||
           !hidden_.contains({event.kind, event.index});
}
