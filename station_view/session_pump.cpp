#include "station_view/session_pump.h"

#include <FL/Fl.H>
#include <poll.h>

#include <algorithm>
#include <ctime>
#include <iterator>

#include "station_view/display_connection.h"

namespace {

// The toolkit's loop runs whatever timeouts are due before it looks at the mouse again: one of no
// time at all would keep it for ever.
constexpr double least_rest_s = 0.001;
// Of a session that is over, while its window stays.
constexpr double rest_after_end_s = 0.2;
// The loop may wake up a little before the time: that would be in vain, and a second time is
// needed.
constexpr double early_s = 0.0001;

constexpr auto longest_without_toolkit = std::chrono::milliseconds(100);

using steady = std::chrono::steady_clock;

/// Until the display or the session has something to say, or that time has come: whether it was not
/// the display.
bool rest_until(steady::time_point due, int session) {
    pollfd wanted[] = {{display_connection::descriptor(), POLLIN, 0}, {session, POLLIN, 0}};
    const std::chrono::nanoseconds left = std::max<steady::duration>(due - steady::now(), {});
    const timespec time{0, static_cast<long>(left.count())};
    return ppoll(wanted, std::size(wanted), &time, nullptr) >= 0 && wanted[0].revents == 0;
}

void on_readable(int, void* pump) { static_cast<session_pump*>(pump)->serve(); }

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
    const std::chrono::duration<double> rest = session_.service();
    // Also when it is over: the toolkit may be about to sleep until the next timeout, and whoever
    // looks for the end waits for the toolkit.
    const double least_s = end_was_seen_ ? rest_after_end_s : least_rest_s;
    const double rest_s = std::max(rest.count() + early_s, least_s);
    end_was_seen_ = session_.over();
    due_ = steady::now() +
           std::chrono::duration_cast<steady::duration>(std::chrono::duration<double>(rest_s));
    set_timeout(rest_s);
    serving_ = false;
    served_();
}

// One that comes too early costs a look at the session, one that is set anew for each step more.
void session_pump::set_timeout(double rest_s) {
    if (timeout_is_set_ && timeout_at_ <= due_) return;
    Fl::remove_timeout(on_time, this);
    Fl::add_timeout(rest_s, on_time, this);
    timeout_is_set_ = true;
    timeout_at_ = due_;
}

void session_pump::on_time(void* self) {
    auto& pump = *static_cast<session_pump*>(self);
    pump.timeout_is_set_ = false;
    pump.serve();
}

void session_pump::serve_between_turns() {
    const moment last = steady::now() + longest_without_toolkit;
    const auto toolkit_rests = [] {
        return !Fl::damage() && !Fl::pushed() && !display_connection::has_events();
    };
    while (!session_.over() && due_ < last && toolkit_rests() &&
           rest_until(due_, session_.descriptor()))
        serve();
}
