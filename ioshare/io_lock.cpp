#include "ioshare/io_lock.h"

#include <unistd.h>

#include <cstring>

#include "ioshare/io_clocks.h"

namespace {

// The lock is held for well under a microsecond at a time: one slice nearly always does.
constexpr useconds_t slice_us = 200;

/// Where the C library keeps the flag in a semaphore, and the two values that it takes there.
constexpr std::size_t flag_offset = 8;
constexpr std::int32_t private_flag = 0, shared_flag = 128;

bool take(io_segment& segment) {
    while (io_lock_is_sound(segment)) {
        if (sem_trywait(&segment.lock) == 0) return true;
        if (io_session_over(segment)) return false;
        usleep(slice_us);
    }
    return false;
}

}  // namespace

bool io_lock_is_sound(const io_segment& segment) {
    std::int32_t flag;
    std::memcpy(&flag, reinterpret_cast<const char*>(&segment.lock) + flag_offset, sizeof flag);
    return flag == private_flag || flag == shared_flag;
}

void io_post(io_segment& segment) {
    if (io_lock_is_sound(segment)) sem_post(&segment.lock);
}

io_lock::io_lock(io_segment& segment) : segment_(segment), held_(take(segment)) {}

io_lock::~io_lock() {
    if (held_) io_post(segment_);
}
