#include "tests/simulator/panel_screen.h"

#include <tuple>
#include <typeinfo>

#include <FL/Fl.H>
#include <FL/Fl_Box.H>
#include <FL/Fl_Browser.H>
#include <FL/Fl_Button.H>
#include <FL/Fl_Check_Browser.H>
#include <FL/Fl_Window.H>
#include <FL/forms.H>
#include <FL/x.H>

namespace {

using steady = std::chrono::steady_clock;

std::string pair(int a, char between, int b) {
    return std::to_string(a) + between + std::to_string(b);
}

std::string kind(const Fl_Widget& widget) {
    const std::type_info& type = typeid(widget);
    if (type == typeid(Fl_Box)) return "box";
    if (type == typeid(Fl_FormsText)) return "text";
    if (type == typeid(Fl_Button)) return "button";
    if (type == typeid(Fl_Check_Browser)) return "check list";
    if (type == typeid(Fl_Browser)) return "browser";
    return type.name();
}

std::string describe(const Fl_Widget& widget) {
    const char* label = widget.label();
    return kind(widget) + ' ' + pair(widget.x(), ',', widget.y()) + ' ' +
           pair(widget.w(), 'x', widget.h()) + ' ' +
           (label ? '"' + std::string(label) + '"' : "no label");
}

}  // namespace

bool settle(const std::function<bool()>& done, seconds limit) {
    return wait_until(
        [&] {
            Fl::check();
            return done();
        },
        limit);
}

bool wait_shown(screen& display, Fl_Window& window) {
    const auto managed = [&] { return window.shown() && display.manages(fl_xid(&window)); };
    screen::place last{};
    auto still_since = steady::now();
    return settle(managed) && settle([&] {
               const screen::place now = area(display, window);
               if (std::tie(now.x, now.y) != std::tie(last.x, last.y)) still_since = steady::now();
               last = now;
               return !window.damage() && steady::now() - still_since > seconds(0.15);
           });
}

screen::place area(screen& display, Fl_Window& window) { return display.area(fl_xid(&window)); }

void click(screen& display, const Fl_Widget& widget, int right, int down) {
    display.click(fl_xid(widget.window()), widget.x() + right, widget.y() + down);
}

void click(screen& display, const Fl_Widget& widget) {
    click(display, widget, widget.w() / 2, widget.h() / 2);
}

std::uint32_t pixel(screen& display, const Fl_Widget& widget, int right, int down) {
    return display.pixel(fl_xid(widget.window()), widget.x() + right, widget.y() + down);
}

void move_mouse(int x, int y) {
    run_program({"xdotool", "mousemove", std::to_string(x), std::to_string(y)});
}

lines descriptions(const Fl_Group& group) {
    lines all;
    for (int i = 0; i < group.children(); ++i) all.push_back(describe(*group.child(i)));
    return all;
}
