// The output panel as its tests hold it: one that nobody sees, and one that a user clicks.
#pragma once
#include "simulator/output_panel.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <memory>
#include <string>

#include <FL/Fl.H>
#include <FL/Fl_Box.H>
#include <FL/Fl_Browser.H>
#include <FL/Fl_Button.H>
#include <FL/Fl_Window.H>

#include "tests/simulator/panel_screen.h"

constexpr Fl_Color yellow = 95, blue = 216, red = 88, black = 56;

inline lines shown_names(const OFD_simulator_output& panel) {
    lines all;
    for (int line = 1; line <= panel.browser->size(); ++line)
        all.push_back(panel.browser->text(line));
    return all;
}

inline int lamps_on(const OFD_simulator_output& panel) {
    int on = 0;
    for (int row = 0; row < panel.rows; ++row) {
        if (panel.lamps[row]->visible()) ++on;
    }
    return on;
}

/// "0", "1", ... : each output is named after its index.
inline void add_outputs(OFD_simulator_output& panel, int outputs) {
    for (int i = 0; i < outputs; ++i) panel.add(std::to_string(i));
}

inline lines numbers(int from, int to) {
    lines all;
    for (int i = from; i < to; ++i) all.push_back(std::to_string(i));
    return all;
}

/// A panel in a parent that is never shown: for what needs no user. A height of 133 gives 3 rows.
struct hidden_panel {
    Fl_Window window{240, 133};
    OFD_simulator_output panel;

    explicit hidden_panel(int height = 133) : panel(&window, 0, height, "Outputs") { window.end(); }
};

/// A panel that its user sees and clicks.
struct real_panel : testing::Test {
    screen display;
    OFD_simulator_output panel{133, "lamps"};
    std::unique_ptr<Fl_Window> owner{panel.window};

    void fill(int outputs) {
        add_outputs(panel, outputs);
        ASSERT_TRUE(wait_shown(display, *panel.window));
    }
    std::uint32_t lamp_seen(int row) { return pixel(display, *panel.lamps[row], 5, 6); }
    bool sees(int row, std::uint32_t colour) {
        return settle([&] { return lamp_seen(row) == colour; });
    }
    bool reaches(int page) {
        return settle([&] { return panel.page == page; });
    }
};
