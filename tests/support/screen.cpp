#include "tests/support/screen.h"

#include <X11/Xlib.h>
#include <X11/Xatom.h>
#include <X11/Xutil.h>
#include <X11/extensions/XTest.h>

#include <algorithm>
#include <chrono>
#include <memory>
#include <stdexcept>
#include <thread>

namespace {

/// A window may go while it is asked about: that is no error of the test's.
int take_no_notice(Display*, XErrorEvent*) { return 0; }

void settle() { std::this_thread::sleep_for(std::chrono::milliseconds(15)); }

}  // namespace

screen::screen() : display_(XOpenDisplay(nullptr)) {
    if (!display_)
        throw std::runtime_error("this test needs a display: run it under tools/with_display");
    root_ = DefaultRootWindow(display_);
    XSetErrorHandler(take_no_notice);
    retire_window_ids();
}

screen::~screen() { XCloseDisplay(display_); }

void screen::let_manager_catch_up() {
    // It takes events in their order: once it has managed a new window and let it go again, it is
    // through with all that went before.
    const Window last = XCreateSimpleWindow(display_, root_, 0, 0, 1, 1, 0, 0, 0);
    XMapWindow(display_, last);
    const bool came = wait_until([&] { return manages(last); });
    XDestroyWindow(display_, last);
    if (!came || !wait_until([&] { return !manages(last); }))
        throw std::runtime_error("no window manager answers: run this under tools/with_display");
}

void screen::retire_window_ids() {
    // A server gives a new connection the lowest free range of ids: this one, kept until the test
    // program ends, takes that of the last program that has gone.
    static std::vector<std::unique_ptr<Display, decltype(&XCloseDisplay)>> kept;
    let_manager_catch_up();
    kept.emplace_back(XOpenDisplay(nullptr), XCloseDisplay);
    if (!kept.back()) throw std::runtime_error("the display takes no more connections");
}

std::vector<Window> screen::windows() {
    Atom type;
    int format;
    unsigned long count = 0, rest = 0;
    unsigned char* data = nullptr;
    std::vector<Window> found;
    XGetWindowProperty(display_, root_, XInternAtom(display_, "_NET_CLIENT_LIST", False), 0, 1024,
                       False, XA_WINDOW, &type, &format, &count, &rest, &data);
    for (unsigned long i = 0; i < count; ++i) {
        const Window each = reinterpret_cast<unsigned long*>(data)[i];
        XWindowAttributes attributes;
        if (XGetWindowAttributes(display_, each, &attributes)) found.push_back(each);
    }
    if (data) XFree(data);
    return found;
}

bool screen::manages(Window window) { return std::ranges::count(windows(), window) != 0; }

std::string screen::title(Window window) {
    char* name = nullptr;
    std::string text;
    if (XFetchName(display_, window, &name) && name) text = name;
    if (name) XFree(name);
    return text;
}

Window screen::wait_for_window(const std::string& wanted, seconds limit) {
    Window found = 0;
    wait_until(
        [&] {
            for (const Window each : windows()) {
                XWindowAttributes attributes;
                if (title(each) == wanted && XGetWindowAttributes(display_, each, &attributes) &&
                    attributes.map_state == IsViewable) {
                    found = each;
                }
            }
            return found != 0;
        },
        limit);
    return found;
}

bool screen::wait_for_windows(std::size_t count, seconds limit) {
    return wait_until([&] { return windows().size() == count; }, limit);
}

screen::place screen::area(Window window) {
    XWindowAttributes attributes{};
    XGetWindowAttributes(display_, window, &attributes);
    int x = 0, y = 0;
    Window child;
    XTranslateCoordinates(display_, window, root_, 0, 0, &x, &y, &child);
    return {x, y, attributes.width, attributes.height};
}

std::uint32_t screen::pixel(Window window, int x, int y) {
    const place at = area(window);
    XImage* const image = XGetImage(display_, root_, at.x + x, at.y + y, 1, 1, AllPlanes, ZPixmap);
    if (!image) return 0xFF000000;
    const auto value = static_cast<std::uint32_t>(XGetPixel(image, 0, 0) & 0xFFFFFF);
    XDestroyImage(image);
    return value;
}

void screen::click(Window window, int x, int y, unsigned button) {
    const place at = area(window);
    XTestFakeMotionEvent(display_, -1, at.x + x, at.y + y, CurrentTime);
    XTestFakeButtonEvent(display_, button, True, CurrentTime);
    XTestFakeButtonEvent(display_, button, False, CurrentTime);
    XSync(display_, False);
    settle();
}

void screen::hold(Window window, int x, int y, bool down) {
    const place at = area(window);
    XTestFakeMotionEvent(display_, -1, at.x + x, at.y + y, CurrentTime);
    XTestFakeButtonEvent(display_, 1, down, CurrentTime);
    XSync(display_, False);
    settle();
}

void screen::hold_key(KeySym symbol, bool down) {
    press(symbol, down);
    XSync(display_, False);
    settle();
}

void screen::press(KeySym symbol, bool down) {
    XTestFakeKeyEvent(display_, XKeysymToKeycode(display_, symbol), down, CurrentTime);
}

void screen::key(KeySym symbol, KeySym modifier) {
    if (modifier) press(modifier, true);
    press(symbol, true);
    press(symbol, false);
    if (modifier) press(modifier, false);
    XSync(display_, False);
    settle();
}

void screen::tell_manager(Window window, const char* message) {
    XEvent event{};
    event.xclient.type = ClientMessage;
    event.xclient.window = window;
    event.xclient.message_type = XInternAtom(display_, message, False);
    event.xclient.format = 32;
    event.xclient.data.l[0] = CurrentTime;
    event.xclient.data.l[1] = 2;  // from a user's tool
    XSendEvent(display_, root_, False, SubstructureNotifyMask | SubstructureRedirectMask, &event);
    XSync(display_, False);
}

bool screen::resize(Window window, int w, int h) {
    XResizeWindow(display_, window, static_cast<unsigned>(w), static_cast<unsigned>(h));
    return wait_until([&] {
        const place now = area(window);
        return now.w == w && now.h == h;
    });
}

void screen::close(Window window) { tell_manager(window, "_NET_CLOSE_WINDOW"); }

bool screen::has_focus(Window window) {
    Window focused = 0;
    int revert = 0;
    XGetInputFocus(display_, &focused, &revert);
    return focused == window;
}

void screen::give_focus(Window window) {
    tell_manager(window, "_NET_ACTIVE_WINDOW");
    wait_until([&] { return has_focus(window) || !manages(window); }, seconds(2));
}
