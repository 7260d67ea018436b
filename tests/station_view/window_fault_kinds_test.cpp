// Each kind of fault, ticked in the list by the mouse and seen on the panel, while the drawing goes
// on showing the mechanism as it is.
#include <gtest/gtest.h>

#include <charconv>
#include <iterator>

#include "session/faults.h"
#include "station_view/manual_station.h"
#include "tests/station_view/station_beside.h"
#include "tests/station_view/window_on_display.h"

namespace {

namespace layout = window_layout;

/// After another `seconds`: what the panel's lamp shows, and what it would without the fault.
struct moment {
    double seconds;
    bool shown, sound;
};

struct kind_case {
    fault_kind kind;
    const char* name;     // of the fault
    const char* command;  // given from the start on; empty: none
    const char* lamp;
    std::vector<moment> moments;
};

// clang-format off
const kind_case kind_cases[] = {
    {fault_kind::stuck0,   "te",  "",     "te",  {{0.1, false, true}, {1, false, true}}},
    {fault_kind::stuck1,   "ts",  "",     "ts",  {{0.1, true, false}, {1, true, false}}},
    {fault_kind::inverted, "vh",  "DESV", "vh",  {{0.01, false, true}, {0.3, true, false}}},
    // A stroke of 0.3 s, told half a second later.
    {fault_kind::late,     "b1s", "BZ1",  "b1s", {{0.4, false, true}, {0.3, false, true}, {0.2, true, true}}},
    {fault_kind::flicker,  "te",  "",     "te",  {{0.05, false, true}, {0.1, true, true}, {0.9, false, true}, {0.1, true, true}}},
    {fault_kind::dead,     "BZ1", "BZ1",  "b1s", {{0.4, false, true}, {2, false, true}}},
    {fault_kind::slow,     "BZ1", "BZ1",  "b1s", {{0.4, false, true}, {0.6, false, true}, {0.3, true, true}}},
};
// clang-format on

/// With a point, whatever the locale.
std::string text_of(double seconds) {
    char text[32];
    return {text, std::to_chars(text, std::end(text), seconds).ptr};
}

class FaultKinds : public WindowOnDisplay, public testing::WithParamInterface<kind_case> {
protected:
    /// By the mouse, in the list as it is for a sensor, brought to its lower end for an actuator.
    void tick(const station_fault& fault) {
        const station_names names = zk4_names();
        const auto column = static_cast<int>(fault.kind);
        const auto sensor = std::ranges::find(names.inputs, fault.name);
        if (sensor != names.inputs.end()) {
            const auto row = static_cast<int>(sensor - names.inputs.begin());
            return click_box(column, layout::faults.y + 2 + (row + 1) * 20);
        }
        const auto actuator = std::ranges::find(names.outputs, fault.name);
        const auto from_below = static_cast<int>(names.outputs.end() - actuator);
        for (int i = 0; i < 20; ++i)
            display.click(window, layout::faults.x + 20, layout::faults.y + 100, wheel_down);
        click_box(column - static_cast<int>(fault_kind::dead),
                  layout::faults.y + layout::faults.h - from_below * 20);
    }
    void click_box(int column, int y) {
        click({layout::faults.x + 8 + 96 + column * 40, y, 20, 20});
    }
    bool panel_keeps(std::string_view lamp, std::uint32_t colour) {
        if (!panel_shows(lamp, colour)) return false;
        wait_until([] { return false; }, seconds(0.4));
        return panel_shows(lamp, colour);
    }
    void expect_drawn(const station_beside& beside) {
        const auto points = beside.drawing(layout::picture.w, layout::picture.h);
        EXPECT_GT(points.size(), 5000u);
        const auto is_drawn = [this](const drawn_point& at) {
            return display.pixel(window, layout::picture.x + at.x, layout::picture.y + at.y) ==
                   at.rgb;
        };
        EXPECT_TRUE(wait_until([&] { return std::ranges::all_of(points, is_drawn); }, seconds(5)));
    }

    static constexpr unsigned wheel_down = 5;
};

TEST_P(FaultKinds, IsSeenOnThePanelAndNotOnTheDrawingsMechanism) {
    const kind_case& given = GetParam();
    const station_fault fault{given.name, given.kind};
    const std::string words = fault.name + "=" + std::string(fault_kind_word(fault.kind));
    station_beside beside(fault);
    start({"--paused", "--bases", "1"});
    tick(fault);
    ASSERT_TRUE(told_becomes("pannes", words)) << live->told("pannes");
    if (*given.command) {
        beside.give(given.command);
        click_panel(given.command);
        ASSERT_TRUE(becomes(given.command, "1"));
    }
    for (const auto& [step, shown, sound] : given.moments) {
        SCOPED_TRACE(words + " after " + text_of(step));
        ASSERT_EQ(live->io({"step", text_of(step)}).status, 0);
        beside.run(step);
        EXPECT_TRUE(panel_keeps(given.lamp, shown ? red : blue));
        EXPECT_EQ(beside.sound(given.lamp), sound);
        expect_drawn(beside);
    }
    end();
}

INSTANTIATE_TEST_SUITE_P(Each, FaultKinds, testing::ValuesIn(kind_cases), [](const auto& each) {
    return std::string(fault_kind_word(each.param.kind));
});

TEST(FaultKindCases, HaveEveryKind) {
    ASSERT_EQ(std::size(kind_cases), static_cast<std::size_t>(fault_kind::count));
    for (std::size_t i = 0; i < std::size(kind_cases); ++i)
        EXPECT_EQ(kind_cases[i].kind, static_cast<fault_kind>(i));
}

}  // namespace
