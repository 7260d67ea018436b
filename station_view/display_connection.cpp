#include "station_view/display_connection.h"

#include <FL/Fl.H>
#include <FL/x.H>
#include <X11/XKBlib.h>
#include <X11/Xlib.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <string>

#include "ioshare/io_printable.h"
#include "session/failure.h"

// Last: it defines macros of common names.
#include <X11/Xlibint.h>

namespace {

bool is_lost = false;

int note_loss(Display*) {
    is_lost = true;
    return 0;
}

/// Throws away what nobody will ever take. Xlib itself would fill its buffer, and then write to a
/// null pointer, in the middle of a drawing.
int forget_requests(Display* lost) {
    constexpr int least_buffer = 2048;  // Xlib has none that is smaller.
    lost->bufptr = lost->last_req = lost->buffer;
    lost->bufmax = lost->buffer + least_buffer;
    return 0;
}

/// Xlib asks what to do next; its own answer would be to exit. What is being drawn is drawn to its
/// end, for nobody.
void go_on(Display* lost, void*) {
    forget_requests(lost);
    XSetAfterFunction(lost, forget_requests);
}

/// Before there is anything that a session could leave behind.
[[noreturn]] void end_early() {
    std::fprintf(stderr, "%s: l'écran a disparu\n", program_invocation_short_name);
    _exit(static_cast<int>(exit_status::refused));
}
int lost_early(Display*) { end_early(); }
void fail_early(const char*, ...) { end_early(); }

std::string name_of_display() {
    const char* const name = std::getenv("DISPLAY");
    return name ? io_printable(name) : "";
}

}  // namespace

void display_connection::open() {
    XSetIOErrorHandler(lost_early);
    Display* const probe = XOpenDisplay(nullptr);
    if (!probe) {
        const std::string name = name_of_display();
        throw refusal((name.empty() ? "pas d'écran (DISPLAY est vide)"
                                    : "l'écran " + name + " ne répond pas") +
                      ": --headless s'en passe");
    }
    XCloseDisplay(probe);
    const auto fatal = Fl::fatal;
    Fl::fatal = fail_early;
    fl_open_display();
    Fl::fatal = fatal;
    XSetIOErrorHandler(note_loss);
    XSetIOErrorExitHandler(fl_display, go_on, nullptr);
    // A key that is held is not let go of between its repeats.
    XkbSetDetectableAutoRepeat(fl_display, True, nullptr);
}

int display_connection::descriptor() { return ConnectionNumber(fl_display); }

bool display_connection::has_events() { return XEventsQueued(fl_display, QueuedAlready) > 0; }

bool display_connection::lost() { return is_lost; }
