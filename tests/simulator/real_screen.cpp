#include "tests/simulator/real_screen.h"

#include <unistd.h>

#include <chrono>
#include <stdexcept>
#include <typeinfo>

#include <FL/Fl.H>
#include <FL/Fl_Box.H>
#include <FL/Fl_Browser.H>
#include <FL/Fl_Button.H>
#include <FL/Fl_Check_Browser.H>
#include <FL/Fl_Window.H>
#include <FL/forms.H>
#include <FL/x.H>
#include <X11/Xutil.h>
#include <X11/extensions/XTest.h>

namespace {

using clock_type = std::chrono::steady_clock;

double seconds_since(clock_type::time_point start) {
    return std::chrono::duration<double>(clock_type::now() - start).count();
}

/// The first window with that title, depth first.
Window find_titled(Display* display, Window from, const std::string& title) {
    char* name = nullptr;
    if (XFetchName(display, from, &name) && name) {
        const bool found = title == name;
        XFree(name);
        if (found) return from;
    }
    Window root, parent, *children = nullptr;
    unsigned count = 0;
    Window found = 0;
    if (XQueryTree(display, from, &root, &parent, &children, &count)) {
        for (unsigned i = 0; i < count && !found; ++i) found = find_titled(display, children[i], title);
        if (children) XFree(children);
    }
    return found;
}

/// A window may go between two requests: that is no reason to end the test.
int ignore_error(Display*, XErrorEvent*) { return 0; }

}  // namespace

real_screen::real_screen() : display_(XOpenDisplay(nullptr)) {
    if (!display_) throw std::runtime_error("no display");
}

real_screen::~real_screen() { XCloseDisplay(display_); }

void real_screen::move(point to) {
    XTestFakeMotionEvent(display_, -1, to.x, to.y, 0);
    XSync(display_, False);
}

void real_screen::click(point at) {
    move(at);
    XTestFakeButtonEvent(display_, 1, True, 0);
    XTestFakeButtonEvent(display_, 1, False, 0);
    XSync(display_, False);
}

void real_screen::press_key(const char* name) {
    const KeyCode key = XKeysymToKeycode(display_, XStringToKeysym(name));
    XTestFakeKeyEvent(display_, key, True, 0);
    XTestFakeKeyEvent(display_, key, False, 0);
    XSync(display_, False);
}

rgb real_screen::pixel(point at) {
    XImage* image = XGetImage(display_, DefaultRootWindow(display_), at.x, at.y, 1, 1, AllPlanes, ZPixmap);
    if (!image) return {-1, -1, -1};
    const unsigned long value = XGetPixel(image, 0, 0);
    XDestroyImage(image);
    return {int(value >> 16 & 255), int(value >> 8 & 255), int(value & 255)};
}

std::optional<point> real_screen::seen_origin(unsigned long window) {
    XErrorHandler before = XSetErrorHandler(ignore_error);
    XWindowAttributes attributes;
    std::optional<point> found;
    Window child;
    point at{};
    if (window && XGetWindowAttributes(display_, window, &attributes) && attributes.map_state == IsViewable &&
        XTranslateCoordinates(display_, window, DefaultRootWindow(display_), 0, 0, &at.x, &at.y, &child)) {
        found = at;
    }
    XSync(display_, False);
    XSetErrorHandler(before);
    return found;
}

std::optional<point> real_screen::origin(Fl_Window& window) {
    return seen_origin(window.shown() ? fl_xid(&window) : 0);
}

std::optional<point> real_screen::origin(const std::string& title) {
    XErrorHandler before = XSetErrorHandler(ignore_error);
    const Window window = find_titled(display_, DefaultRootWindow(display_), title);
    XSetErrorHandler(before);
    return seen_origin(window);
}

point real_screen::place(const Fl_Widget& widget, int right, int down) {
    const std::optional<point> top_left = origin(*widget.window());
    if (!top_left) throw std::runtime_error("the window cannot be seen");
    return {top_left->x + widget.x() + right, top_left->y + widget.y() + down};
}

void real_screen::click(const Fl_Widget& widget) { click(place(widget, widget.w() / 2, widget.h() / 2)); }

bool settle(const std::function<bool()>& done, double limit_s) {
    const auto start = clock_type::now();
    while (Fl::check(), !done()) {
        if (seconds_since(start) > limit_s) return false;
        usleep(2000);
    }
    return true;
}

bool wait_shown(real_screen& screen, Fl_Window& window) {
    point last{-1, -1};
    auto still_since = clock_type::now();
    return settle([&] {
        const point now = screen.origin(window).value_or(point{-1, -1});
        if (now.x != last.x || now.y != last.y) still_since = clock_type::now();
        last = now;
        return now.x >= 0 && seconds_since(still_since) > 0.15;
    });
}

std::string describe(const Fl_Widget& widget) {
    const std::type_info& type = typeid(widget);
    const std::string kind = type == typeid(Fl_Box)             ? "box"
                             : type == typeid(Fl_FormsText)     ? "text"
                             : type == typeid(Fl_Button)        ? "button"
                             : type == typeid(Fl_Check_Browser) ? "check list"
                             : type == typeid(Fl_Browser)       ? "browser"
                                                                : type.name();
    const auto pair = [](int a, char between, int b) { return std::to_string(a) + between + std::to_string(b); };
    return kind + ' ' + pair(widget.x(), ',', widget.y()) + ' ' + pair(widget.w(), 'x', widget.h()) + ' ' +
           (widget.label() ? '"' + std::string(widget.label()) + '"' : "no label");
}
