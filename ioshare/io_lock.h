// Taking the lock of the shared I/O segment, for both halves of the link.
#pragma once
#include "ioshare/io_segment.h"

/// Holds the segment's lock while it lives.
///
/// The semaphore is not process-shared: a process that blocks on it is never woken by a post from
/// another one. So the lock is tried, and tried again after a short sleep, also when a signal
/// interrupts. The wait ends without the lock only when the session has ended: whoever held the
/// lock may be dead, and no one is left to protect.
class io_lock {
public:
    /// Takes the lock of `segment`, which must outlive this object. Returns with it, or at the end
    /// of the session without it.
    explicit io_lock(io_segment& segment);
    /// Gives the lock back, if it was taken.
    ~io_lock();
    io_lock(const io_lock&) = delete;
    io_lock& operator=(const io_lock&) = delete;

    /// Whether the lock was taken; false when the session ended first.
    bool held() const { return held_; }

private:
    io_segment& segment_;
    bool held_;
};
