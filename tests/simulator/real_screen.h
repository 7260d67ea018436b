// The display as its user has it: real clicks, and the colours that are really there.
#pragma once

#include <functional>
#include <optional>
#include <ostream>
#include <string>

class Fl_Widget;
class Fl_Window;
struct _XDisplay;

struct point {
    int x, y;
};

struct rgb {
    int red, green, blue;
    bool operator==(const rgb&) const = default;
};
inline std::ostream& operator<<(std::ostream& out, const rgb& c) {
    return out << c.red << ',' << c.green << ',' << c.blue;
}

/// A connection of its own to the display, as another program would have. Points are the root window's.
class real_screen {
public:
    real_screen();
    ~real_screen();
    real_screen(const real_screen&) = delete;
    real_screen& operator=(const real_screen&) = delete;

    void move(point to);
    /// Presses and releases the left button there. The server has the events on return.
    void click(point at);
    /// Presses and releases a key, by its name ("Escape").
    void press_key(const char* name);
    rgb pixel(point at);

    /// Where the top left of a window of the toolkit's is, or nothing while it cannot be seen.
    std::optional<point> origin(Fl_Window& window);
    /// The same for a window of any program, by its title.
    std::optional<point> origin(const std::string& title);

    /// A point of a widget, from its top left.
    point place(const Fl_Widget& widget, int right, int down);
    /// Clicks in the middle of a widget.
    void click(const Fl_Widget& widget);

private:
    std::optional<point> seen_origin(unsigned long window);
    _XDisplay* display_;
};

/// Lets the toolkit work until `done` answers true. False when `limit_s` passes first.
bool settle(const std::function<bool()>& done, double limit_s = 10);

/// Lets the toolkit work until the window stands still in front of the user. False when that takes too long.
bool wait_shown(real_screen& screen, Fl_Window& window);

/// One line on a widget: its kind, place, size and label.
std::string describe(const Fl_Widget& widget);
