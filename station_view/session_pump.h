// A session under the toolkit's loop: served when its descriptor can be read, and when its time has
// come, whatever the toolkit is doing meanwhile.
#pragma once
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

private:
    live_session& session_;
    std::function<void()> served_;
    bool serving_ = false, end_was_seen_ = false;
};
