#include "forms/wait_form.h"

#include <unistd.h>

#include <chrono>

#include <FL/Fl.H>
#include <FL/x.H>

#include "forms/hide_when_closed.h"
#include "forms/unmirrored_form.h"
#include "forms/widget_shortcuts.h"

namespace {

constexpr useconds_t pause_us = 1000;
constexpr std::chrono::milliseconds longest_wait(500);

struct exposure {
    Window window;
    bool arrived;
};

/// Looks at one waiting event, and takes none out of the queue.
Bool note_exposure(Display*, XEvent* event, XPointer data) {
    auto* wanted = reinterpret_cast<exposure*>(data);
    if (event->type == Expose && event->xexpose.window == wanted->window) wanted->arrived = true;
    return False;
}

/// Waits until the server has asked for the window to be drawn, which it does once the window is on
/// the screen. The events stay where they are: before this, processing them would draw nothing.
void await_exposure(const Fl_Window* window) {
    const auto deadline = std::chrono::steady_clock::now() + longest_wait;
    exposure wanted{fl_xid(window), false};
    XEvent none;
    for (;;) {
        XCheckIfEvent(fl_display, &none, note_exposure, reinterpret_cast<XPointer>(&wanted));
        if (wanted.arrived || std::chrono::steady_clock::now() > deadline) return;
        usleep(pause_us);
    }
}

}  // namespace

OFD_wait_form::OFD_wait_form(const std::string& message)
    : window(fl_bgn_form(FL_NO_BOX, 600, 60)), text(nullptr), unused_first(0), unused_second(0) {
    fl_add_box(FL_UP_BOX, 0, 0, 600, 60, "");
    text = fl_add_Stext(FL_NO_BOX, 10, 10, 580, 40, message);
    fl_set_object_lalign(text, FL_ALIGN_INSIDE);
    fl_set_object_lsize(text, FL_NORMAL_SIZE);
    end_form_unmirrored();
    hide_when_closed(window);
    fl_show_form(window, FL_PLACE_MOUSE, FL_TRANSIENT, "travail en cours ...");
    await_exposure(window);
    Fl::check();
    usleep(pause_us);
}

OFD_wait_form::~OFD_wait_form() { delete window; }
