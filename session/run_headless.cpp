#include <poll.h>

#include <ctime>

#include "session/live_session.h"

namespace {

/// Until the descriptor can be read, or the time is over.
void wait_for(int descriptor, live_session::duration limit) {
    pollfd wanted{descriptor, POLLIN, 0};
    const auto ns = std::chrono::duration_cast<std::chrono::nanoseconds>(limit).count();
    const timespec time{static_cast<time_t>(ns / 1'000'000'000),
                        static_cast<long>(ns % 1'000'000'000)};
    ppoll(&wanted, 1, &time, nullptr);
}

}  // namespace

int run_headless(live_session& session) {
    session.begin();
    for (auto rest = session.service(); !session.over(); rest = session.service())
        wait_for(session.descriptor(), rest);
    return session.finish();
}
