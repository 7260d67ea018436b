#include "station_view/session_news.h"

#include <utility>

void session_news::read(std::span<const station_event> events) {
    for (const station_event& each : events) {
        if (begins_a_run(each)) {
            begun_again_ = true;
            incidents_.clear();
        }
        if (each.kind != event_kind::incident) continue;
        incidents_.push_back({each.ms, std::string(each.text)});
        if (incidents_.size() > most_incidents) incidents_.pop_front();
    }
    anything_new_ = anything_new_ || !events.empty();
    if (events.empty() || run_ != run_state::going) return;
    run_ = run_state::changed;
    if (time_.paused()) time_.run(0);
}

std::deque<session_news::incident> session_news::take_incidents() {
    return std::exchange(incidents_, {});
}

bool session_news::take_begun_again() { return std::exchange(begun_again_, false); }

void session_news::run_to_next_change() {
    time_.pause();
    time_.run(most_steps);
    run_ = run_state::going;
}

bool session_news::nothing_changed() const {
    return run_ == run_state::going && time_.paused() && time_.steps_left() == 0;
}
