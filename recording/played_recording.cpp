#include "recording/played_recording.h"

#include <cmath>
#include <limits>

namespace {

std::vector<station_event> events_of(const std::vector<recorded_event>& recorded) {
    std::vector<station_event> events;
    events.reserve(recorded.size());
    for (const recorded_event& each : recorded) events.push_back(each.event());
    return events;
}

}  // namespace

played_recording::played_recording(recording_reader& recording)
    : recording_(recording),
      head_(recording.head()),
      inputs_(head_.inputs.begin(), head_.inputs.end()),
      outputs_(head_.outputs.begin(), head_.outputs.end()),
      values_(inputs_.size()) {
    for (const recorded_event& each : head_.events) take_note(each);
}

bool played_recording::restart() {
    if (!recording_.restart()) return false;
    counts_ = {};
    incidents_.clear();
    played_.clear();
    ms_ = 0;
    ended_ = false;
    for (const recorded_event& each : head_.events) take_note(each);
    begin_again();
    return true;
}

void played_recording::take_note(const recorded_event& event) {
    if (event.kind == event_kind::input)
        values_[static_cast<std::size_t>(event.index)] = static_cast<int>(event.value);
    if (event.kind == event_kind::session && event.name == "bonnes")
        counts_.good = static_cast<int>(event.value);
    if (event.kind == event_kind::session && event.name == "mauvaises")
        counts_.bad = static_cast<int>(event.value);
}

int played_recording::sensor(int input) const {
    const auto place = static_cast<std::size_t>(input);
    return place < values_.size() ? values_[place] : 0;
}

void played_recording::tell_block() { hand_over(events_of(head_.events)); }

void played_recording::play_all() {
    tell_block();
    // In pieces, so that a long recording needs no more memory than a short one.
    while (const recorded_event* const next = recording_.peek()) play_to(next->ms);
}

void played_recording::step(double seconds) {
    ms_ += std::llround(seconds * 1000);
    play_to(ms_);
}

// The end is told by whoever ends the session.
void played_recording::play_to(std::int64_t ms) {
    played_.clear();
    incidents_.clear();
    while (recording_.peek() && recording_.peek()->ms <= ms) {
        played_.push_back(recording_.take());
        take_note(played_.back());
    }
    for (const recorded_event& each : played_)
        if (each.kind == event_kind::incident) incidents_.push_back({each.ms, each.text});
    if (!played_.empty()) ended_ = ends_a_run(played_.back().event());
    hand_over(events_of(played_));
}

std::optional<std::string> played_recording::before_step(station_run&) {
    if (ended_) return played_.back().text;
    if (!recording_.peek()) return "l'enregistrement est coupé ici";
    return std::nullopt;
}

void played_recording::read(std::span<const station_event> events) {
    if (ended_ || events.empty()) return;
    const station_event& last = events.back();
    if (ends_a_run(last) && recording_.peek()) hand_over(events.last(1));
}
