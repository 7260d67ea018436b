// Taking the lock of the shared I/O segment, for both halves of the link.
#pragma once
#include "ioshare/io_segment.h"

/// Holds the segment's lock while it lives.
///
/// The semaphore is not process-shared: a process that blocks on it is never woken by a post from
/// another one. So the lock is tried, and tried again after a short sleep, also when a signal
/// interrupts. The wait ends without the lock only when the session has ended (inputs_clock below
/// 0): whoever held the lock may be dead, and no one is left to protect.
class io_lock {
public:
    explicit io_lock(io_segment& segment);
    ~io_lock();
    io_lock(const io_lock&) = delete;
    io_lock& operator=(const io_lock&) = delete;

    bool held() const { return held_; }

private:
    io_segment& segment_;
    bool held_;
};

/// A counter that another process may change at any moment, read afresh.
inline std::int64_t io_read_clock(const std::int64_t& clock) {
    return *const_cast<const volatile std::int64_t*>(&clock);
}

/// Adds one in place, not atomically. Past the largest value it wraps to the smallest.
inline void io_raise_clock(std::int64_t& clock) {
    volatile std::int64_t& shared = clock;
    shared = static_cast<std::int64_t>(static_cast<std::uint64_t>(shared) + 1);
}
