#include "session/step_clock.h"

#include <algorithm>

namespace {

constexpr auto rest_of_a_resting_station = std::chrono::milliseconds(30);
constexpr double fastest_that_rests = 1;

}  // namespace

step_clock::step_clock(double speed, bool paused, moment now)
    : speed_(speed), paused_(paused), next_(now + interval()) {}

step_clock::duration step_clock::interval() const {
    return std::chrono::duration_cast<duration>(std::chrono::duration<double>(step_s / speed_));
}

bool step_clock::due(moment now) {
    if (paused_) return steps_left_ > 0;
    if (now - next_ > std::chrono::seconds(1)) next_ = now;
    return now >= next_;
}

void step_clock::stepped() {
    if (paused_)
        steps_left_ = std::max(steps_left_ - 1, 0LL);  // the step itself may have ended the run
    else
        next_ += interval();
}

std::optional<step_clock::duration> step_clock::until_due(moment now) const {
    if (!paused_) return std::max(next_ - now, duration::zero());
    if (steps_left_ > 0) return duration::zero();
    return std::nullopt;
}

std::optional<step_clock::duration> step_clock::until_several_due(moment now) const {
    const std::optional<duration> due = until_due(now);
    if (!due || *due == duration::zero() || speed_ > fastest_that_rests) return due;
    return std::max<duration>(*due, rest_of_a_resting_station);
}

void step_clock::pause() { paused_ = true; }

void step_clock::resume(moment now) {
    if (!paused_) return;
    paused_ = false;
    steps_left_ = 0;
    next_ = now + interval();
}

void step_clock::set_speed(double speed, moment now) {
    // What is left of the coming step is left at the new speed: however often the speed changes,
    // the step comes.
    const duration left = std::clamp(next_ - now, duration::zero(), interval());
    const double share = std::chrono::duration<double>(left) / interval();
    speed_ = speed;
    next_ = now + std::chrono::duration_cast<duration>(share * interval());
}
