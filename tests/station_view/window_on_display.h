// The station's window on a real display, as its user has it: a running zk4sim, its buttons by the
// mouse and by keys, and what the panel beside it shows.
#pragma once
#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

#include "panel/form_children.h"
#include "station_view/window_layout.h"
#include "tests/end_to_end/zk4sim_session.h"
#include "tests/support/screen.h"

class WindowOnDisplay : public Zk4sim {
protected:
    static constexpr std::uint32_t red = 0xFF0000, blue = 0x0000FF;

    /// Starts zk4sim with its window, and with the panel unless `options` say otherwise.
    void start(const std::vector<std::string>& options = {},
               const std::string& title = "Station ZK4") {
        std::vector<std::string> command = {built("zk4sim")};
        command.insert(command.end(), options.begin(), options.end());
        live = std::make_unique<controlled_station>(std::make_unique<program>(command));
        ASSERT_NE(live->ident, "") << live->process->err();
        window = display.wait_for_window(title);
        ASSERT_NE(window, 0u) << live->process->err();
        const bool has_panel = std::ranges::find(options, "--no-panel") == options.end() &&
                               std::ranges::find(options, "--exec") == options.end();
        if (has_panel) {
            panel = display.wait_for_window("quorin");
            ASSERT_NE(panel, 0u);
        }
        take_keyboard();
    }

    /// Ends the session as a user does: by the panel, which would else stay with its message.
    void end() {
        if (panel)
            display.close(panel);
        else
            live->process->signal(SIGTERM);
        EXPECT_EQ(live->process->wait(), 0) << live->process->err();
        panel = 0;
    }

    void take_keyboard() {
        display.give_focus(window);
        wait_until([] { return false; }, seconds(0.3));
    }

    using area = window_layout::area;
    void click(const area& at) { display.click(window, at.x + at.w / 2, at.y + at.h / 2); }
    void hold(const area& at, bool down) {
        display.hold(window, at.x + at.w / 2, at.y + at.h / 2, down);
    }

    /// The box of a row and column of the list of faults before it is scrolled.
    static area fault_box(int row, int column) {
        const area& list = window_layout::faults;
        return {list.x + 8 + 88 + column * 42, list.y + 2 + (row + 1) * 20, 20, 20};
    }

    static const quorin_form::child& panel_widget(std::string_view name) {
        return *std::ranges::find_if(quorin_form::children, [&](const quorin_form::child& each) {
            return each.member > 0 && name == each.name;
        });
    }
    void click_panel(std::string_view button) {
        const quorin_form::child& at = panel_widget(button);
        display.click(panel, at.x + at.w / 2, at.y + at.h / 2);
    }
    /// Whether the panel's lamp gets that colour.
    bool panel_shows(std::string_view input, std::uint32_t colour) {
        const quorin_form::child& at = panel_widget(input);
        return wait_until([&] { return display.pixel(panel, at.x + 4, at.y + 4) == colour; },
                          seconds(5));
    }

    bool becomes(const std::string& name, const std::string& value) {
        return wait_until([&] { return live->value(name) == value; }, seconds(5));
    }
    bool told_becomes(const std::string& name, const std::string& value) {
        return wait_until([&] { return live->told(name) == value; }, seconds(5));
    }

    /// The colours of an area, to see whether anything in it has changed.
    std::vector<std::uint32_t> pixels(const area& at, int apart = 3) {
        std::vector<std::uint32_t> found;
        for (int y = at.y + 2; y < at.y + at.h - 2; y += apart)
            for (int x = at.x + 2; x < at.x + at.w - 2; x += apart)
                found.push_back(display.pixel(window, x, y));
        return found;
    }

    /// The processor time of three seconds, once what is under way has come to its end.
    double processor_seconds_at_rest() {
        const auto used_in = [&](double s) {
            const double before = processor_seconds(live->process->id());
            wait_until([] { return false; }, seconds(s));
            return processor_seconds(live->process->id()) - before;
        };
        wait_until([&] { return used_in(0.5) < 0.01; }, seconds(10));
        return used_in(3);
    }

    void expect_end(const std::string& words, int status = 0) {
        EXPECT_EQ(live->process->wait(), status) << live->process->err();
        EXPECT_NE(live->process->err().find("zk4sim: " + words + "\nbilan: "), std::string::npos)
            << live->process->err();
    }

    screen display;
    std::unique_ptr<controlled_station> live;
    x_window window = 0, panel = 0;
};
