// The input panel as its tests hold it: one that nobody sees, and one that a user clicks.
#pragma once
#include "simulator/input_panel.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include <FL/Fl.H>
#include <FL/Fl_Button.H>
#include <FL/Fl_Check_Browser.H>
#include <FL/Fl_Window.H>

#include "tests/simulator/panel_screen.h"

using checks = std::vector<int>;

inline checks checked(const Fl_Check_Browser& list) {
    checks all;
    for (int item = 1; item <= list.nitems(); ++item) all.push_back(list.checked(item));
    return all;
}

/// A panel in a parent that is never shown: for what needs no user.
struct hidden_panel {
    Fl_Window window{400, 300};
    OFD_simulator_input panel{&window, 0, 300};
    int init = 77, quit = 88;

    explicit hidden_panel(const lines& names = {}) {
        window.end();
        for (const std::string& name : names) panel.add(name);
        while (Fl::readqueue()) continue;
    }
};

/// Ends a `check` that would wait for ever, and says so.
struct deadline {
    Fl_Widget* quit;
    bool passed = false;

    explicit deadline(OFD_simulator_input& panel) : quit(panel.quit_button) {
        Fl::add_timeout(30, strike, this);
    }
    ~deadline() { Fl::remove_timeout(strike, this); }
    static void strike(void* self) {
        static_cast<deadline*>(self)->passed = true;
        static_cast<deadline*>(self)->quit->do_callback();
    }
};

/// A panel that its user sees and clicks.
struct real_panel : testing::Test {
    screen display;
    OFD_simulator_input panel{300};
    std::unique_ptr<Fl_Window> owner{panel.window};
    int init = 77, quit = 88;
    checks values;

    void fill(const lines& names) {
        for (const std::string& name : names) panel.add(name);
        values.assign(names.size() + 1, -5);
        ASSERT_TRUE(wait_shown(display, *panel.window));
    }

    void click_item(const Fl_Check_Browser& list, int item) {
        const int line_height = list.textsize() + 2;
        click(display, list, 60, 2 + line_height * (item - 1) + line_height / 2);
    }

    /// Whether there is anything but the ground where the box of the first item stands.
    bool shows_box(const Fl_Check_Browser& list) {
        const std::uint32_t ground = pixel(display, list, list.w() / 2, list.h() - 20);
        for (int right = 3; right < 18; ++right)
            if (pixel(display, list, right, 10) != ground) return true;
        return false;
    }

    void check() {
        deadline limit(panel);
        panel.check(&init, &quit, values.data());
        EXPECT_FALSE(limit.passed) << "no click ended check";
    }

    void click_then_check(const Fl_Widget& button) {
        click(display, button);
        check();
    }
};
