// A session under the toolkit's loop: served when its descriptor can be read, and when its time has
// come, whatever the toolkit is doing meanwhile.
#pragma once
#include <chrono>
#include <functional>

#include "session/live_session.h"

class session_pump {
public:
    /// Serves the session, which must have begun, from now on; `served` is called after each time.
    session_pump(live_session& session, std::function<void()> served);
    ~session_pump();
    session_pump(const session_pump&) = delete;
    session_pump& operator=(const session_pump&) = delete;

    /// Serves it now: something was asked of it. Does nothing while it is being served.
    void serve();

    /// Serves a session that is busy, as long as the toolkit has nothing to do, for a tenth of a
    /// second at most: a turn of the toolkit's loop costs more than a step. Returns at once while
    /// the session rests.
    void serve_between_turns();

private:
    using moment = std::chrono::steady_clock::time_point;

    static void on_time(void* self);
    void set_timeout(double rest_s);

    live_session& session_;
    std::function<void()> served_;
    bool serving_ = false, end_was_seen_ = false;
    /// When it is to be served again.
    moment due_{};
    bool timeout_is_set_ = false;
    moment timeout_at_{};
};
