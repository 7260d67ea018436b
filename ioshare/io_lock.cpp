#include "ioshare/io_lock.h"

#include <unistd.h>

#include "ioshare/io_clocks.h"

namespace {

// The lock is held for well under a microsecond at a time: one slice nearly always does.
constexpr useconds_t slice_us = 200;

bool take(io_segment& segment) {
    while (sem_trywait(&segment.lock) != 0) {
        if (io_session_over(segment)) return false;
        usleep(slice_us);
    }
    return true;
}

}  // namespace

io_lock::io_lock(io_segment& segment) : segment_(segment), held_(take(segment)) {}

io_lock::~io_lock() {
    if (held_) sem_post(&segment_.lock);
}
