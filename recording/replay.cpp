#include "recording/replay.h"

#include <algorithm>
#include <array>
#include <tuple>
#include <utility>

#include "recording/recorded_text.h"
#include "recording/trouble_words.h"
#include "session/desk.h"
#include "session/failure.h"
#include "session/faults.h"

namespace {

namespace words = trouble_words;

constexpr std::string_view counts[] = {"bonnes", "mauvaises", "incidents"};

// Within one time: what a step answers, then what the next one takes.
constexpr std::array<event_kind, 7> order = {
    event_kind::incident, event_kind::input, event_kind::session, event_kind::exercise,
    event_kind::fault,    event_kind::desk,  event_kind::output};
static_assert(order.size() == static_cast<std::size_t>(event_kind::count));

// The end is behind all of it.
std::int64_t rank_of(const station_event& event) {
    if (ends_a_run(event)) return std::ssize(order);
    return std::ranges::find(order, event.kind) - order.begin();
}

bool alike(const station_event& one, const station_event& other) {
    return one.ms == other.ms && one.kind == other.kind && row_of_event(one) == row_of_event(other);
}

/// The place of the output that a recording calls so; -1 when there is none.
int output_called(name_span outputs, const std::string& name) {
    for (std::size_t i = outputs.size(); i > 0; --i)
        if (recorded_name(outputs[i - 1]) == name) return static_cast<int>(i - 1);
    return -1;
}

std::int64_t place_in(const std::vector<std::string>& names, std::string_view name) {
    return std::ranges::find(names, name) - names.begin();
}

/// Where the events of a kind stand that have one time: in the order of the link, of the desk, of
/// the counts, of the incidents.
std::int64_t place_in(const recording_head& head, const station_event& event) {
    const std::string name = recorded_name(event.name);
    switch (event.kind) {
        case event_kind::input:
            return place_in(head.inputs, name);
        case event_kind::output:
            return place_in(head.outputs, name);
        case event_kind::desk:
            return std::ranges::find(desk_rows, name, &desk_row::name) - desk_rows;
        case event_kind::session:
            return std::ranges::find(counts, name) - counts;
        case event_kind::incident:
            return event.value;
        default:
            break;
    }
    const std::int64_t input = place_in(head.inputs, name);
    return input < std::ssize(head.inputs) ? input : input + place_in(head.outputs, name);
}

// So that both values fit in a line.
std::string value_of(const station_event& event) {
    constexpr std::size_t most_bytes = 500;
    const std::string value = row_of_event(event).value;
    return value.size() <= most_bytes ? value : value.substr(0, most_bytes) + "...";
}

}  // namespace

replay::replay(recording_reader& recording) : recording_(recording) {}

bool replay::restart() {
    if (!recording_.restart()) return false;
    taken_.clear();
    commands_.assign(commands_.size(), 0);
    begun_ = ended_ = cut_within_step_ = false;
    begin_again();
    return true;
}

void replay::before_begin(station_run& run) {
    check_block(run);
    commands_.resize(run.model().outputs().size());
    const std::vector<recorded_event>& block = recording_.head().events;
    taken_.assign(block.begin(), block.end());
    for (const station_fault& each : hidden_)
        if (!run.hide_fault(each))
            throw refusal(recording_.name() + ": la station ne peut avoir la panne cachée " +
                          each.name + "=" + std::string(fault_kind_word(each.kind)));
    for (const recorded_event& each : block)
        if (each.kind == event_kind::fault) apply(run, each);
}

// Of a block without its last outputs and nothing behind it, nobody can tell what they were.
void replay::check_block(const station_run& run) const {
    const bool shorter = recording_.head().outputs.size() < run.model().outputs().size();
    if (shorter && !recording_.peek())
        throw refusal(recording_.name() + ": le fichier est coupé dans le premier bloc");
}

std::optional<std::string> replay::before_step(station_run& run) {
    while (const recorded_event* const next = recording_.peek()) {
        if (next->ms > run.ms()) return std::nullopt;
        const bool in_time = next->ms == run.ms();
        if (in_time && ends_a_run(next->event())) {
            ended_ = true;
            return next->text;
        }
        // It speaks of the step before, ahead of what the next one takes.
        if (in_time && next->kind == event_kind::exercise && taken_.empty()) {
            pass_exercise();
            continue;
        }
        if (!in_time || !is_cause(next->kind)) miss(*next);
        const recorded_event taken = recording_.take();
        if (is_cause(taken.kind)) apply(run, taken);
        if (difference_.empty()) taken_.push_back(taken);
    }
    if (taken_.empty()) return "l'enregistrement est coupé ici";
    // What else the step took, and what came of it, may have been cut off.
    cut_within_step_ = true;
    return std::nullopt;
}

// What an exercise said is no answer of the station: it goes through as it is.
void replay::pass_exercise() {
    passed_.push_back(recording_.take());
    agreed_.push_back(passed_.back().event());
    hand_over_agreed();
}

void replay::apply(station_run& run, const recorded_event& cause) {
    if (cause.kind == event_kind::output) {
        const int output = output_called(run.model().outputs(), cause.name);
        if (output >= 0)
            commands_[static_cast<std::size_t>(output)] = static_cast<std::int32_t>(cause.value);
    } else if (cause.kind == event_kind::desk) {
        station_desk desk = run.desk();
        if (const desk_row* const button = desk_button_named(cause.name))
            desk.*button->pushed = cause.value == 1;
        run.set_desk(desk);
    } else if (const auto kind = fault_kind_called(cause.text)) {
        if (!run.set_fault({cause.name, *kind})) miss(cause);
    } else if (!run.end_fault(cause.name)) {
        miss(cause);
    }
}

std::int32_t replay::command(int output) const {
    const auto place = static_cast<std::size_t>(output);
    return place < commands_.size() ? commands_[place] : 0;
}

const recorded_event* replay::expected() {
    while (!taken_.empty() && taken_.front().kind == event_kind::exercise) {
        passed_.push_back(taken_.front());
        agreed_.push_back(passed_.back().event());
        taken_.pop_front();
    }
    return taken_.empty() ? recording_.peek() : &taken_.front();
}

void replay::drop_expected() {
    if (taken_.empty())
        (void)recording_.take();
    else
        taken_.pop_front();
}

void replay::read(std::span<const station_event> events) {
    if (events.empty() && taken_.empty()) return;
    if (!std::exchange(begun_, true)) signals_.note(events);
    for (const station_event& each : events)
        if (signals_.has(each) && !agrees(each)) break;
    if (difference_.empty() && !taken_.empty()) miss(taken_.front());
    taken_.clear();
    hand_over_agreed();
}

// Whether the event is the one that was recorded next. Where a recording was cut off there is none.
bool replay::agrees(const station_event& event) {
    if (!difference_.empty()) return false;
    const recorded_event* const recorded = expected();
    if (!recorded) {
        // It was ended here, unless the station had more to say.
        cut_within_step_ = cut_within_step_ || !ends_a_run(event);
        return false;
    }
    const bool same = alike(event, recorded->event());
    if (same) drop_expected();
    // A session may be ended before its recording is.
    if (same || (ends_a_run(event) && !ended_))
        agreed_.push_back(event);
    else
        explain(event, *recorded);
    return difference_.empty();
}

// One of the two comes first, or they are the same thing with two values.
void replay::explain(const station_event& event, const recorded_event& recorded) {
    const station_event other = recorded.event();
    const auto rank = [this](const station_event& of) {
        return std::tuple(of.ms, rank_of(of), place_in(recording_.head(), of));
    };
    if (rank(event) < rank(other))
        return differ(event, std::string(words::nothing), value_of(event));
    if (rank(event) > rank(other) || recorded_name(event.name) != other.name)
        return differ(other, value_of(other), std::string(words::nothing));
    differ(event, value_of(other), value_of(event));
}

void replay::miss(const recorded_event& recorded) {
    differ(recorded.event(), value_of(recorded.event()), std::string(words::nothing));
}

void replay::differ(const station_event& where, const std::string& recorded,
                    const std::string& played) {
    if (!difference_.empty()) return;
    const event_row row = row_of_event(where);
    std::string told = recording_.name();
    for (const std::string_view each : std::initializer_list<std::string_view>{
             words::before_ms, row.ms, words::behind_ms, row.kind, " ", row.name, ": ", recorded,
             words::recorded, played, words::played})
        told += each;
    difference_ = recorded_name(told);
}

std::string replay::trouble() {
    if (difference_.empty() || std::exchange(told_, true)) return {};
    return difference_;
}

void replay::hand_over_agreed() {
    hand_over(agreed_);
    agreed_.clear();
    passed_.clear();
}
