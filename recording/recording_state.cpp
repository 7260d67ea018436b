#include "recording/recording_state.h"

#include <limits>

#include "recording/csv_reader.h"
#include "session/faults.h"

namespace {

constexpr const char* counts[] = {"bonnes", "mauvaises", "incidents"};

[[noreturn]] void refuse(const recorded_event& event, const std::string& why) {
    throw recording_problem{event.line, why};
}

}  // namespace

void recording_state::begin(const recording_head& head) {
    for (const char* const name : counts) values_[{event_kind::session, name}] = 0;
    for (const recorded_event& each : head.events)
        if (each.kind == event_kind::input || each.kind == event_kind::output ||
            each.kind == event_kind::desk)
            values_[{each.kind, each.name}] = each.value;
    for (const recorded_event& each : head.events)
        if (each.kind == event_kind::fault) take_fault(each);
}

void recording_state::take(const recorded_event& event) {
    if (over_) refuse(event, "rien ne suit la fin");
    if (event.ms < ms_) refuse(event, "le temps recule");
    ms_ = event.ms;
    switch (event.kind) {
        case event_kind::session:
            return take_session(event);
        case event_kind::incident:
            return take_incident(event);
        case event_kind::fault:
            return take_fault(event);
        case event_kind::exercise:
            return;
        default:
            return take_value(event);
    }
}

void recording_state::take_session(const recorded_event& event) {
    over_ = ends_a_run(event.event());
    if (over_) return;
    const auto count = values_.find({event.kind, event.name});
    if (count == values_.end()) refuse(event, "\"" + event.name + "\" n'est pas un compte");
    if (std::to_string(event.value) != event.text || event.value <= count->second)
        refuse(event, "un compte ne fait que monter");
    if (event.value > std::numeric_limits<std::int32_t>::max())
        refuse(event, "\"" + event.text + "\" n'est pas un entier de 32 bits");
    count->second = event.value;
}

void recording_state::take_incident(const recorded_event& event) {
    if (event.value != incidents_ + 1)
        refuse(event, "l'incident " + std::to_string(incidents_ + 1) + " est attendu");
    ++incidents_;
}

void recording_state::take_fault(const recorded_event& event) {
    const bool sensor = values_.contains({event_kind::input, event.name});
    if (!sensor && !values_.contains({event_kind::output, event.name}))
        refuse(event, "\"" + event.name + "\" n'est ni une entrée ni une sortie");
    const auto kind = fault_kind_called(event.text);
    if (kind && (place_of(*kind) == fault_place::sensor) != sensor)
        refuse(event, "\"" + event.text + "\" n'est pas une panne de " + event.name);
    std::string& known = faults_[event.name];
    if (known == event.text) refuse(event, "cette ligne ne change rien");
    known = event.text;
}

void recording_state::take_value(const recorded_event& event) {
    const auto known = values_.find({event.kind, event.name});
    if (known == values_.end())
        refuse(event, "\"" + event.name + "\" n'est pas dans le premier bloc");
    if (known->second == event.value) refuse(event, "cette ligne ne change rien");
    known->second = event.value;
}
