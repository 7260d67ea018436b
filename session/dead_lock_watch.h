// Frees the lock of a segment whose holder is dead.
#pragma once
#include <sys/types.h>

#include <chrono>
#include <cstdint>
#include <optional>

#include "ioshare/io_segment.h"

/// A client may be killed while it holds the lock, and the simulator then waits for it. The lock is
/// held for well under a microsecond at a time: one that is found taken again and again, with
/// nothing published in between, has lost its holder. It is freed after half a second when nobody
/// is attached who could hold it, else after two. Never while the simulator is stopped: it may
/// hold the lock itself, and a lock that is freed twice excludes nobody any more.
class dead_lock_watch {
public:
    using moment = std::chrono::steady_clock::time_point;

    explicit dead_lock_watch(pid_t simulator) : simulator_(simulator) {}
    /// Looks at the lock of segment `ident`; to be called a few times a second.
    void look(io_segment& segment, int ident, moment now);

private:
    pid_t simulator_;
    std::optional<moment> taken_since_;
    std::int64_t clock_ = 0;
};
