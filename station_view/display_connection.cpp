#include "station_view/display_connection.h"

#include <FL/x.H>
#include <X11/Xlib.h>

#include <cstdlib>
#include <string>

#include "ioshare/io_printable.h"
#include "session/failure.h"

namespace {

bool is_lost = false;

int note_loss(Display*) {
    is_lost = true;
    return 0;
}

/// Xlib asks what to do next; its own answer would be to exit.
void go_on(Display*, void*) {}

std::string name_of_display() {
    const char* const name = std::getenv("DISPLAY");
    return name ? io_printable(name) : "";
}

}  // namespace

void display_connection::open() {
    Display* const probe = XOpenDisplay(nullptr);
    if (!probe) {
        const std::string name = name_of_display();
        throw refusal((name.empty() ? "pas d'écran (DISPLAY est vide)"
                                    : "l'écran " + name + " ne répond pas") +
                      ": --headless s'en passe");
    }
    XCloseDisplay(probe);
    fl_open_display();
    XSetIOErrorHandler(note_loss);
    XSetIOErrorExitHandler(fl_display, go_on, nullptr);
}

int display_connection::descriptor() { return ConnectionNumber(fl_display); }

bool display_connection::has_events() { return XEventsQueued(fl_display, QueuedAlready) > 0; }

bool display_connection::lost() { return is_lost; }
