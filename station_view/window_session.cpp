#include "station_view/window_session.h"

#include <FL/Fl.H>

#include <algorithm>

#include "session/end_signals.h"
#include "station_view/display_connection.h"
#include "station_view/session_pump.h"

namespace {

/// The exercise is over: its verdict stays until the window is closed.
void stand_still(station_window& window) {
    window.conclude();
    while (!window.closed() && !end_signals::asked() && !display_connection::lost()) Fl::wait();
}

/// Under the toolkit's loop, until the session is over or the display has gone.
void serve(live_session& session, station_window& window) {
    session_pump pump(session, [&window] { window.served(); });
    window.on_change([&pump] { pump.serve(); });
    while (!session.over() && !display_connection::lost()) {
        Fl::wait();
        if (display_connection::lost()) break;
        window.worked();
        pump.serve_between_turns();
    }
    if (session.ended_with_task() && !window.closed() && !display_connection::lost())
        stand_still(window);
    window.on_change({});
}

int run(live_session& session, std::unique_ptr<station_window> window) {
    window->show();
    session.begin();
    serve(session, *window);
    if (display_connection::lost()) {
        window->close_documents();
        // Its widgets would ask the display to forget them.
        static_cast<void>(window.release());
        session.end("l'écran a disparu");
        while (!session.over()) session.service();
        return std::max(session.finish(), 1);
    }
    window->hide();
    Fl::check();
    window.reset();
    const int status = session.finish();
    return display_connection::lost() ? std::max(status, 1) : status;
}

}  // namespace

session_runner run_in_window(station_model& model, const window_options& options) {
    display_connection::open();
    return [&model, options](live_session& session) {
        return run(session, std::make_unique<station_window>(session, model, options));
    };
}
