#include "station_view/session_pump.h"

#include <FL/Fl.H>

#include <algorithm>
#include <chrono>

namespace {

// The toolkit's loop runs whatever timeouts are due before it looks at the mouse again: one of no
// time at all would keep it for ever.
constexpr double least_rest_s = 0.001;
// Of a session that is over, while its window stays.
constexpr double rest_after_end_s = 0.2;

void on_time(void* pump) { static_cast<session_pump*>(pump)->serve(); }
void on_readable(int, void* pump) { on_time(pump); }

}  // namespace

session_pump::session_pump(live_session& session, std::function<void()> served)
    : session_(session), served_(std::move(served)) {
    Fl::add_fd(session_.descriptor(), FL_READ, on_readable, this);
    serve();
}

session_pump::~session_pump() {
    Fl::remove_fd(session_.descriptor());
    Fl::remove_timeout(on_time, this);
}

void session_pump::serve() {
    if (serving_) return;
    serving_ = true;
    Fl::remove_timeout(on_time, this);
    const std::chrono::duration<double> rest = session_.service();
    // Also when it is over: the toolkit may be about to sleep until the next timeout, and whoever
    // looks for the end waits for the toolkit.
    Fl::add_timeout(std::max(rest.count(), end_was_seen_ ? rest_after_end_s : least_rest_s),
                    on_time, this);
    end_was_seen_ = session_.over();
    serving_ = false;
    served_();
}
