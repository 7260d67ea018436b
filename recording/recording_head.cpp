#include "recording/recording_head.h"

#include <algorithm>

#include "recording/csv_reader.h"
#include "session/desk.h"
#include "session/keyed_rows.h"

namespace {

struct part_row {
    head_part key;
    event_kind kind;
};

constexpr part_row parts[] = {
    {head_part::session, event_kind::session},   {head_part::faults, event_kind::fault},
    {head_part::exercise, event_kind::exercise}, {head_part::desk, event_kind::desk},
    {head_part::inputs, event_kind::input},      {head_part::outputs, event_kind::output},
};
static_assert(one_row_each(parts));

constexpr const char* desk_expected = "dc, ac et atu sont attendus, à 0";

// More than any session has, and few enough to be kept.
constexpr std::size_t most_events = 1000;

std::optional<head_part> part_of(event_kind kind) {
    const auto* const found = std::ranges::find(parts, kind, &part_row::kind);
    return found == std::end(parts) ? std::nullopt : std::optional(found->key);
}

bool known(const std::vector<std::string>& names, const std::string& name) {
    return std::ranges::find(names, name) != names.end();
}

[[noreturn]] void refuse(const recorded_event& event, const std::string& why) {
    throw recording_problem{event.line, why};
}

}  // namespace

int recording_head::index_of(const recorded_event& event) const {
    if (event.kind != event_kind::input && event.kind != event_kind::output) return -1;
    const std::vector<std::string>& names = event.kind == event_kind::input ? inputs : outputs;
    const auto found = std::ranges::find(names, event.name);
    return found == names.end() ? -1 : static_cast<int>(found - names.begin());
}

// A change of what the block has told: everything that comes later than time 0, and at 0 what the
// first step takes, which stands behind the last input or output.
bool head_builder::begins_the_first_step(const recorded_event& event,
                                         std::optional<head_part> part) const {
    if (event.ms > 0) return true;
    if (ends_a_run(event.event())) return true;
    if (part_ < head_part::inputs) return false;
    return !part || part < part_ ||
           (part == head_part::inputs && known(head_.inputs, event.name)) ||
           (part == head_part::outputs && known(head_.outputs, event.name));
}

bool head_builder::take(const recorded_event& event) {
    check_first_rows(event);
    const std::optional<head_part> part = part_of(event.kind);
    if (begins_the_first_step(event, part)) return false;
    if (!part || *part < part_)
        refuse(event, "cette ligne n'est pas à sa place dans le premier bloc");
    if (head_.events.size() >= most_events) refuse(event, "un premier bloc de plus de 1000 lignes");
    part_ = *part;
    switch (*part) {
        case head_part::session:
            take_session(event);
            break;
        case head_part::desk:
            take_desk(event);
            break;
        case head_part::inputs:
            take_signal(head_.inputs, event);
            break;
        case head_part::outputs:
            take_signal(head_.outputs, event);
            break;
        default:
            break;
    }
    head_.events.push_back(event);
    return true;
}

void head_builder::check_first_rows(const recorded_event& event) const {
    const std::size_t place = head_.events.size();
    const bool session = event.kind == event_kind::session && event.ms == 0;
    if (place == 0 && !(session && event.name == "format" && event.text == "1"))
        refuse(event, "\"session,format,1\" est attendu");
    if (place == 1 && !(session && event.name == "station"))
        refuse(event, "\"session,station\" est attendu");
}

void head_builder::take_session(const recorded_event& event) {
    const std::size_t place = head_.events.size();
    if (place == 1)
        head_.station = event.text;
    else if (place == 2 && event.name == "titre")
        head_.title = event.text;
    else if (place > 1)
        head_.facts.push_back({event.name, event.text});
}

// All buttons, in their order and not pushed.
void head_builder::take_desk(const recorded_event& event) {
    if (buttons_ >= std::size(desk_rows) || event.name != desk_rows[buttons_].name ||
        event.value != 0)
        refuse(event, desk_expected);
    ++buttons_;
    head_.has_desk = true;
}

void head_builder::take_signal(std::vector<std::string>& names, const recorded_event& event) {
    if (head_.has_desk && buttons_ < std::size(desk_rows)) refuse(event, desk_expected);
    names.push_back(event.name);
    if (event.kind == event_kind::output && head_.has_desk && event.value != 0)
        refuse(event, "une commande vaut 0 avant le premier pas");
}
