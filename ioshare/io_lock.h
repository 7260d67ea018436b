// Taking the lock of the shared I/O segment, for both halves of the link.
#pragma once
#include "ioshare/io_segment.h"

/// Whether the lock's bytes are a semaphore's, of process-shared flag 0 or 1. On any others the C
/// library may end the process. The count is not looked at: each one is a semaphore's.
[[nodiscard]] bool io_lock_is_sound(const io_segment& segment);

/// Gives the lock back, or opens it at first; does nothing when its bytes are no semaphore's.
void io_post(io_segment& segment);

/// Holds the segment's lock while it lives.
///
/// The semaphore is not process-shared: a process that blocks on it is never woken by a post from
/// another one. So the lock is tried, and tried again after a short sleep, also when a signal
/// interrupts. The wait ends without the lock only when the session has ended, since whoever held
/// the lock may be dead, and no one is left to protect; or when somebody wrote over the lock's
/// bytes.
class io_lock {
public:
    /// Takes the lock of `segment`, which must outlive this object. Returns with it, or at the end
    /// of the session or of the lock without it.
    explicit io_lock(io_segment& segment);
    /// Gives the lock back, if it was taken.
    ~io_lock();
    io_lock(const io_lock&) = delete;
    io_lock& operator=(const io_lock&) = delete;

    /// Whether the lock was taken; false when the session or the lock ended first.
    bool held() const { return held_; }

private:
    io_segment& segment_;
    bool held_;
};
