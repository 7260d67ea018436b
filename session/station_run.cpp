#include "session/station_run.h"

#include <algorithm>

#include "session/desk.h"

namespace {

constexpr std::int64_t resting_after_ms = 1000;

}  // namespace

station_run::station_run(station_model& model)
    : model_(model), commands_(model.outputs().size()), sensors_(model.inputs().size()) {
    for (const name_span names : {model.inputs(), model.outputs()})
        for (const std::string_view name : names) things_.push_back({name, {}, {}});
}

void station_run::tell_word(event_kind kind, std::string_view name, std::string_view text) {
    events_.push_back({ms(), kind, name, 0, text, -1});
}

void station_run::tell_number(event_kind kind, std::string_view name, std::int64_t value,
                              int index) {
    events_.push_back({ms(), kind, name, value, {}, index});
}

void station_run::hand_over() {
    if (!events_.empty()) last_busy_step_ = steps_;
    for (event_reader* const reader : readers_) reader->read(events_);
    events_.clear();
}

void station_run::say(std::span<const station_event> said) {
    events_.insert(events_.end(), said.begin(), said.end());
}

void station_run::examine() {
    if (examiner_) say(examiner_->examine(ms(), events_));
}

void station_run::begin(const std::string& title) {
    const std::vector<station_fact> facts = model_.facts();
    tell_number(event_kind::session, "format", 1);
    tell_word(event_kind::session, "station", model_.name());
    if (!title.empty()) tell_word(event_kind::session, "titre", title);
    for (const station_fact& each : facts)
        if (!each.value.empty()) tell_word(event_kind::session, each.name, each.value);
    take_faults();
    if (examiner_) {
        for (const station_fault& each : examiner_->hidden_faults())
            model_.set_fault(each.name, each.kind);
        say(examiner_->introduce());
    }
    tell_state();
    examine();
    hand_over();
}

void station_run::tell_state() {
    for (const desk_row& each : desk_rows) tell_number(event_kind::desk, each.name, 0);
    for (std::size_t i = 0; i < sensors_.size(); ++i) {
        const int index = static_cast<int>(i);
        sensors_[i] = model_.sensor(index);
        tell_number(event_kind::input, model_.inputs()[i], sensors_[i], index);
    }
    for (std::size_t i = 0; i < commands_.size(); ++i)
        tell_number(event_kind::output, model_.outputs()[i], 0, static_cast<int>(i));
}

void station_run::step(const command_source& commands) {
    take_faults();
    take_desk();
    take_commands(commands);
    model_.step(step_s);
    ++steps_;
    tell_incidents();
    tell_inputs();
    tell_counts();
    examine();
    hand_over();
}

bool station_run::restart() {
    if (!model_.restart()) return false;
    for (faulty_thing& each : things_) each.set = each.wanted = std::nullopt;
    commands_.assign(commands_.size(), 0);
    desk_ = taken_desk_ = {};
    told_counts_ = {};
    steps_ = last_busy_step_ = incidents_ = told_incidents_ = 0;
    last_incident_.clear();
    return true;
}

void station_run::finish(const std::string& why) {
    if (examiner_) say(examiner_->conclude(ms()));
    tell_word(event_kind::session, "fin", why);
    hand_over();
}

void station_run::take_faults() {
    for (faulty_thing& each : things_) {
        if (each.wanted == each.set) continue;
        if (each.wanted)
            model_.set_fault(each.name, *each.wanted);
        else
            model_.end_fault(each.name);
        each.set = each.wanted;
        tell_word(event_kind::fault, each.name,
                  each.set ? fault_kind_word(*each.set) : std::string_view());
    }
}

void station_run::take_desk() {
    for (const desk_row& each : desk_rows)
        if (desk_.*each.pushed != taken_desk_.*each.pushed)
            tell_number(event_kind::desk, each.name, desk_.*each.pushed);
    taken_desk_ = desk_;
    model_.set_desk(desk_);
}

void station_run::take_commands(const command_source& commands) {
    for (std::size_t i = 0; i < commands_.size(); ++i) {
        const int index = static_cast<int>(i);
        const std::int32_t value = commands(index);
        if (value == commands_[i]) continue;
        commands_[i] = value;
        model_.set_command(index, value);
        tell_number(event_kind::output, model_.outputs()[i], value, index);
    }
}

void station_run::tell_incidents() {
    for (const station_incident& each : model_.incidents()) {
        events_.push_back({each.ms, event_kind::incident, {}, ++incidents_, each.text, -1});
        last_incident_ = each.text;
    }
}

void station_run::tell_inputs() {
    for (std::size_t i = 0; i < sensors_.size(); ++i) {
        const int index = static_cast<int>(i);
        const int value = model_.sensor(index);
        if (value == sensors_[i]) continue;
        sensors_[i] = value;
        tell_number(event_kind::input, model_.inputs()[i], value, index);
    }
}

void station_run::tell_counts() {
    const station_counts now = model_.counts();
    tell_changed_count("bonnes", now.good, told_counts_.good);
    tell_changed_count("mauvaises", now.bad, told_counts_.bad);
    tell_changed_count("incidents", incidents_, told_incidents_);
}

void station_run::tell_changed_count(std::string_view name, int now, int& before) {
    if (now == before) return;
    before = now;
    tell_number(event_kind::session, name, now);
}

station_run::faulty_thing* station_run::thing_named(std::string_view name) {
    const auto found = std::ranges::find(things_, name, &faulty_thing::name);
    return found == things_.end() ? nullptr : &*found;
}

bool station_run::set_fault(const station_fault& fault) {
    if (!fault_fits(fault.name, fault.kind, model_)) return false;
    thing_named(fault.name)->wanted = fault.kind;
    return true;
}

bool station_run::end_fault(std::string_view name) {
    faulty_thing* const thing = thing_named(name);
    if (thing) thing->wanted.reset();
    return thing;
}

bool station_run::resting() const {
    return (steps_ - last_busy_step_) * step_ms >= resting_after_ms &&
           std::ranges::all_of(commands_, [](std::int32_t command) { return command == 0; });
}

std::vector<station_fault> station_run::faults() const {
    std::vector<station_fault> found;
    for (const faulty_thing& each : things_)
        if (each.wanted) found.push_back({std::string(each.name), *each.wanted});
    return found;
}
