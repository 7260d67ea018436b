#include "session/dead_lock_watch.h"

#include <unistd.h>

#include <fstream>
#include <string>

#include "ioshare/io_clocks.h"
#include "ioshare/io_holders.h"
#include "ioshare/io_lock.h"
#include "session/served_segment.h"

namespace {

constexpr auto alone_limit = std::chrono::milliseconds(500);
constexpr auto attended_limit = std::chrono::seconds(2);

/// The letter that the system gives its state; 'T' and 't' are stopped ones.
char process_state(pid_t pid) {
    std::ifstream in("/proc/" + std::to_string(pid) + "/stat");
    std::string stat;
    std::getline(in, stat);
    const std::size_t end = stat.rfind(") ");
    return end == std::string::npos || end + 2 >= stat.size() ? '?' : stat[end + 2];
}

bool is_stopped(pid_t pid) {
    const char state = process_state(pid);
    return state == 'T' || state == 't';
}

bool is_taken(io_segment& segment) {
    int count = 1;
    return io_lock_is_sound(segment) && sem_getvalue(&segment.lock, &count) == 0 && count == 0;
}

/// Whether it is taken at each of several looks, 14 ms in all: clients that take it again and
/// again, however often, leave it free in between. The pauses differ, lest they keep step with a
/// client's.
bool stays_taken(io_segment& segment) {
    constexpr useconds_t looks = 40, first_pause_us = 100, longer_us = 13;
    for (useconds_t i = 0; i < looks; ++i) {
        if (!is_taken(segment)) return false;
        usleep(first_pause_us + i * longer_us);
    }
    return true;
}

/// Whether only the station's own processes could hold the lock: whoever else is attached may only
/// read.
bool nobody_else(int ident) {
    return held_by_no_more_than(ident, io_all_reading_attachments(ident));
}

}  // namespace

void dead_lock_watch::look(io_segment& segment, int ident, moment now) {
    const std::int64_t clock = io_read_clock(segment.inputs_clock);
    const bool moved = clock != clock_;
    clock_ = clock;
    if (moved || is_stopped(simulator_) || !stays_taken(segment)) {
        taken_since_.reset();
        return;
    }
    if (!taken_since_) taken_since_ = now;
    const auto taken_for = now - *taken_since_;
    if (taken_for < alone_limit || (taken_for < attended_limit && !nobody_else(ident))) return;
    io_post(segment);
    taken_since_.reset();
}
