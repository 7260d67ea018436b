// The display of the test, as a user has it: windows, pixels, mouse and keyboard.
#pragma once
#include <X11/keysym.h>

#include <cstdint>
#include <string>
#include <vector>

#include "tests/support/programs.h"

struct _XDisplay;

// The types of Xlib.h, whose macros would not suit GoogleTest.
using x_window = unsigned long;
using x_key = unsigned long;

class screen {
public:
    /// Retires the window ids of the programs that have ended so far.
    screen();
    ~screen();
    screen(const screen&) = delete;
    screen& operator=(const screen&) = delete;

    /// Makes sure that no later program is given the window ids of one that has ended. A window
    /// manager that was working on a window while its program was killed may keep the dead window,
    /// and then never shows a new one with its id.
    void retire_window_ids();

    /// The application windows that the window manager manages and that exist, oldest first.
    std::vector<x_window> windows();
    bool manages(x_window window);  ///< Whether it is one of them.
    std::string title(x_window window);
    /// Waits for a managed window of that title, drawn at rest; 0 when `limit` passes first.
    x_window wait_for_window(const std::string& title, seconds limit = seconds(30));
    /// Waits until as many windows are managed.
    bool wait_for_windows(std::size_t count, seconds limit = seconds(30));

    struct place {
        int x, y, w, h;
    };
    /// A window's own area on the screen, without the manager's frame. Pixels.
    place area(x_window window);

    /// 0xRRGGBB at a point of a window; 0xFF000000 outside the screen.
    std::uint32_t pixel(x_window window, int x, int y);

    void click(x_window window, int x, int y, unsigned button = 1);
    /// Presses and lets go of a key, after `modifier` (0: none).
    void key(x_key symbol, x_key modifier = 0);
    /// Presses a mouse button at a point of a window, or lets go of it there.
    void hold(x_window window, int x, int y, bool down);
    /// Presses a key, or lets go of it.
    void hold_key(x_key symbol, bool down);
    /// Gives a window another size, as its frame's edges do; false when it does not get it.
    bool resize(x_window window, int w, int h);
    /// Asks the window manager to close a window, as its title bar's cross does.
    void close(x_window window);
    /// Gives a window the keyboard, and waits a little until it has it; the one that goes, or that
    /// another stands before, does not get it.
    void give_focus(x_window window);
    bool has_focus(x_window window);

private:
    _XDisplay* display_;
    x_window root_;
    void let_manager_catch_up();
    void tell_manager(x_window window, const char* message);
    void press(x_key symbol, bool down);
};
