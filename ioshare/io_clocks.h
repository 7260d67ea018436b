// The two clocks of the shared I/O segment, and what they mean: a publication, an announcement, the
// end of a session.
//
// Another process may change a clock at any moment: each is read and written afresh, as a whole,
// without the lock. No function here allocates, sleeps or fails, and each may be called from a
// signal handler.
#pragma once
#include <atomic>
#include <cstdint>
#include <limits>

#include "ioshare/io_segment.h"

/// Whether nobody serves or takes `ident`: the first identifier that a machine ever gives.
///
///     io_ident_refused(0)  // true
///     io_ident_refused(32769)  // false
[[nodiscard]] constexpr bool io_ident_refused(int ident) { return ident == 0; }

/// A clock as it stands.
[[nodiscard]] inline std::int64_t io_read_clock(const std::int64_t& clock) {
    return *const_cast<const volatile std::int64_t*>(&clock);
}

/// Sets a clock.
inline void io_write_clock(std::int64_t& clock, std::int64_t value) {
    *const_cast<volatile std::int64_t*>(&clock) = value;
}

/// Adds one in place, not atomically. Past the largest value it wraps to the smallest.
inline void io_raise_clock(std::int64_t& clock) {
    const auto value = static_cast<std::uint64_t>(io_read_clock(clock));
    io_write_clock(clock, static_cast<std::int64_t>(value + 1));
}

/// Whether an inputs_clock that was read so says that the session has ended.
///
///     io_over(0)  // false
///     io_over(-1)  // true
[[nodiscard]] constexpr bool io_over(std::int64_t inputs_clock) { return inputs_clock < 0; }

/// Whether the session on this segment has ended.
///
///     io_segment segment{};
///     io_session_over(segment)  // false
///     io_end_session(segment);
///     io_session_over(segment)  // true
[[nodiscard]] inline bool io_session_over(const io_segment& segment) {
    return io_over(io_read_clock(segment.inputs_clock));
}

/// Publishes the inputs as they stand. After the end of a session it would open it again.
///
///     io_segment segment{};
///     io_publish(segment);
///     io_read_clock(segment.inputs_clock)  // 1
inline void io_publish(io_segment& segment) { io_raise_clock(segment.inputs_clock); }

/// Whether nothing more may be published on an inputs_clock that was read so: the session has
/// ended, or the clock stands at its largest value, from which it would fall below 0.
///
///     io_last_publication(41)  // false
///     io_last_publication(-1)  // true
[[nodiscard]] constexpr bool io_last_publication(std::int64_t inputs_clock) {
    return io_over(inputs_clock) || inputs_clock == std::numeric_limits<std::int64_t>::max();
}

/// Publishes the inputs as they stand, unless nothing more may be published. Atomically: an end
/// that another process or a signal handler announces meanwhile stays one.
///
///     io_segment segment{};
///     io_end_session(segment);
///     io_publish_unless_over(segment);
///     io_session_over(segment)  // true
inline void io_publish_unless_over(io_segment& segment) {
    const std::atomic_ref clock(segment.inputs_clock);
    std::int64_t now = clock.load();
    while (!io_last_publication(now) && !clock.compare_exchange_weak(now, now + 1)) {
    }
}

/// How many publications brought an inputs_clock from `before` to `now`; 0 when either says that
/// the session has ended, and when somebody set the clock back.
///
///     io_publications_since(40, 43)  // 3
///     io_publications_since(40, -1)  // 0
[[nodiscard]] constexpr std::int64_t io_publications_since(std::int64_t before, std::int64_t now) {
    return io_over(before) || now < before ? 0 : now - before;
}

/// Announces the end of the session.
inline void io_end_session(io_segment& segment) { io_write_clock(segment.inputs_clock, -1); }
