// How long something took: at least, and at most.
//
// At least is measured from before the cause, by seconds_since. At most is measured in the time
// that the machine gave, by a given_clock: what a busy or paused machine keeps is no program's.
#pragma once
#include <algorithm>
#include <chrono>
#include <mutex>
#include <thread>

inline double seconds_since(std::chrono::steady_clock::time_point start) {
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

/// A clock that stands still while the machine does. Beside whoever looks at it a thread sleeps for
/// a millisecond at a time; what a sleep takes beyond two is the machine's.
///
///     const given_clock clock;
///     ask();
///     EXPECT_LT(clock.now_s(), 0.1) << "answered within a tenth of a second";
class given_clock {
public:
    given_clock() = default;
    given_clock(const given_clock&) = delete;
    given_clock& operator=(const given_clock&) = delete;

    /// Seconds since it was made, without those that the machine kept.
    double now_s() const {
        const std::lock_guard held(lock_);
        return given_s_ + since_awake_s();
    }

private:
    double since_awake_s() const { return std::min(seconds_since(awake_), 0.002); }
    void count_until(const std::stop_token& end) {
        while (!end.stop_requested()) {
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
            const std::lock_guard held(lock_);
            given_s_ += since_awake_s();
            awake_ = std::chrono::steady_clock::now();
        }
    }

    mutable std::mutex lock_;
    double given_s_ = 0;
    std::chrono::steady_clock::time_point awake_ = std::chrono::steady_clock::now();
    const std::jthread sleeper_{[this](const std::stop_token& end) { count_until(end); }};
};
