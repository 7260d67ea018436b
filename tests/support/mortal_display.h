// A display that a test may kill. Included last: the macros of its headers do not suit GoogleTest.
#pragma once
#include <signal.h>

#include <algorithm>
#include <filesystem>
#include <random>
#include <string>

#include "tests/support/programs.h"

#include <X11/Xlib.h>

/// A display without a window manager, that can be killed. Its number is its own: a program that
/// still looks for a display which was killed must not come upon somebody else's new one.
class mortal_display {
public:
    mortal_display() {
        wait_until([&] { return server_.out().ends_with('\n') || !server_.running(); });
    }
    ~mortal_display() { die(); }
    mortal_display(const mortal_display&) = delete;
    mortal_display& operator=(const mortal_display&) = delete;
    /// Waits until that many windows of programs are shown.
    bool shows(int count) const {
        Display* const line = XOpenDisplay(name.c_str());
        if (!line) return false;
        const bool come = wait_until([&] { return mapped(line) >= count; });
        XCloseDisplay(line);
        return come;
    }
    /// Returns when it is no more.
    void die() {
        if (!server_.running()) return;
        server_.signal(SIGKILL);
        server_.wait();
        std::error_code none;
        std::filesystem::remove("/tmp/.X11-unix/X" + name.substr(1), none);
    }

    const std::string name = own_name();

private:
    /// Far from those that servers choose by themselves, from 0 on.
    static std::string own_name() {
        return ":" + std::to_string(1000 + std::random_device()() % 50'000);
    }

    static int mapped(Display* line) {
        Window root, parent, *all = nullptr;
        unsigned size = 0;
        XQueryTree(line, DefaultRootWindow(line), &root, &parent, &all, &size);
        const long count = std::count_if(all, all + size, [&](Window each) {
            XWindowAttributes found;
            return XGetWindowAttributes(line, each, &found) && found.map_state == IsViewable;
        });
        if (all) XFree(all);
        return static_cast<int>(count);
    }

    program server_{{"Xvfb", name, "-displayfd", "1", "-screen", "0", "1920x1080x24", "-nolisten",
                     "tcp", "-noreset"}};
};
