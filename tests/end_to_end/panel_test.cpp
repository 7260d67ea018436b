// quorin on a real display: what its pixels show of the inputs, what its buttons write to the
// segment, how it ends.
#include <algorithm>
#include <cstdlib>
#include <memory>
#include <thread>

#include "tests/ioshare/test_segment.h"
#include "tests/support/screen.h"

namespace {

struct point {
    std::string name;
    int x, y;  ///< A point of the widget that no label covers, in pixels of the window.
};

const std::vector<point> indicators = {
    {"b1e", 767, 74},  {"b1s", 940, 74},   {"b2e", 767, 104},  {"b2s", 940, 104},
    {"b3e", 767, 134}, {"b3s", 940, 134},  {"te", 395, 14},    {"ts", 395, 44},
    {"vh", 395, 104},  {"vb", 395, 74},    {"ph", 767, 44},    {"pb", 767, 14},
    {"pp", 14, 134},   {"p1ok", 571, 164}, {"p2ok", 767, 164}, {"p3ok", 940, 164},
    {"init", 14, 164}, {"vide", 395, 134}, {"colle", 14, 104}, {"dc", 214, 164},
    {"ac", 395, 164},  {"atu", 940, 14}};

const std::vector<point> buttons = {{"DEPOSE", 45, 80}, {"MTA", 45, 20},    {"MT", 45, 50},
                                    {"ASPI", 240, 140}, {"RENT", 240, 20},  {"SORT", 240, 50},
                                    {"DESV", 240, 80},  {"MONV", 240, 110}, {"DESP", 597, 20},
                                    {"MONP", 597, 50},  {"BZ1", 597, 80},   {"BZ2", 597, 110},
                                    {"BZ3", 597, 140}};

constexpr std::uint32_t red = 0xFF0000, blue = 0x0000FF, untouched = 0xC0C0C0;

std::list<std::string> names_of(const std::vector<point>& points) {
    std::list<std::string> names;
    for (const point& each : points) names.push_back(each.name);
    return names;
}

/// A server, and the panel on it.
class PanelOnDisplay : public testing::Test {
protected:
    void start(const std::list<std::string>& inputs = names_of(indicators),
               const std::list<std::string>& outputs = names_of(buttons)) {
        server = std::make_unique<test_server>(inputs, outputs);
        const std::string ident = std::to_string((*server)->memory_ident());
        report = "ident_mem=" + ident + "\n";
        panel = std::make_unique<program>(
            std::vector<std::string>{built("quorin"), "-automemlink", ident});
        window = display.wait_for_window("quorin");
        ASSERT_NE(window, 0u);
        ASSERT_TRUE(wait_until(
            [&] { return display.pixel(window, indicators[0].x, indicators[0].y) == untouched; }));
    }

    IOsharemem_server& link() { return *server->operator->(); }

    bool shows(const point& at, std::uint32_t colour, seconds limit = seconds(3)) {
        return wait_until([&] { return display.pixel(window, at.x, at.y) == colour; }, limit);
    }

    std::vector<int> outputs() {
        std::vector<int> values;
        for (int i = 0; i < 13; ++i) values.push_back(link().output_value(i));
        return values;
    }

    bool outputs_become(const std::vector<int>& expected, seconds limit = seconds(3)) {
        return wait_until([&] { return outputs() == expected; }, limit);
    }

    void expect_ended_quietly() {
        EXPECT_EQ(panel->wait(), 0);
        EXPECT_EQ(panel->out(), "");
        EXPECT_EQ(panel->err(), report);
    }

    leaves_nothing nothing_;
    screen display;
    std::unique_ptr<test_server> server;
    std::unique_ptr<program> panel;
    x_window window = 0;
    std::string report;
};

TEST_F(PanelOnDisplay, ItsWindowIsCentredAtItsSizeUnderItsTitle) {
    start();
    const screen::place at = display.area(window);
    EXPECT_EQ(at.w, 1120);
    EXPECT_EQ(at.h, 190);
    EXPECT_NEAR(at.x + at.w / 2, 700, 20);
    EXPECT_NEAR(at.y + at.h / 2, 500, 40);
    EXPECT_EQ(display.title(window), "quorin");
}

TEST_F(PanelOnDisplay, IndicatorsKeepTheToolkitsColourUntilAPublication) {
    start();
    for (int i = 0; i < 22; ++i) link().setreset_input(i, 1);
    std::this_thread::sleep_for(std::chrono::milliseconds(400));
    for (const point& each : indicators)
        EXPECT_EQ(display.pixel(window, each.x, each.y), untouched) << each.name;
}

TEST_F(PanelOnDisplay, EachIndicatorIsRedForOneAndBlueForAnythingElse) {
    start();
    for (const int value : {1, 0, 2, -1, INT32_MAX}) {
        for (int i = 0; i < 22; ++i) link().setreset_input(i, value);
        link().inputs_go();
        for (const point& each : indicators)
            EXPECT_TRUE(shows(each, value == 1 ? red : blue)) << each.name << value;
    }
}

TEST_F(PanelOnDisplay, EachIndicatorShowsItsOwnInput) {
    start();
    for (std::size_t lit = 0; lit < indicators.size(); ++lit) {
        for (int i = 0; i < 22; ++i) link().setreset_input(i, i == static_cast<int>(lit));
        link().inputs_go();
        ASSERT_TRUE(shows(indicators[lit], red)) << indicators[lit].name;
        for (const point& each : indicators) {
            EXPECT_TRUE(shows(each, each.name == indicators[lit].name ? red : blue)) << each.name;
        }
    }
}

TEST_F(PanelOnDisplay, AnInputThatTheSegmentLacksIsBlue) {
    std::list<std::string> inputs = names_of(indicators);
    inputs.remove("atu");
    start(inputs);
    for (int i = 0; i < 21; ++i) link().setreset_input(i, 1);
    link().inputs_go();
    ASSERT_TRUE(shows(indicators[0], red));
    EXPECT_TRUE(shows(indicators[21], blue));
}

TEST_F(PanelOnDisplay, NothingIsWrittenBeforeTheFirstClickAndAllThirteenAfterIt) {
    start();
    for (std::int32_t& value : link().segment->output_values) value = 77;
    link().segment->outputs_clock = 5;
    link().inputs_go();
    ASSERT_TRUE(shows(indicators[0], blue));
    std::this_thread::sleep_for(std::chrono::milliseconds(500));
    EXPECT_EQ(outputs(), std::vector<int>(13, 77));
    display.click(window, 45, 50);  // MT
    EXPECT_TRUE(outputs_become({0, 0, 1, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0}));
    EXPECT_EQ(link().segment->output_values[13], 77) << "and nothing else is";
    EXPECT_EQ(link().segment->outputs_clock, 5);
    EXPECT_EQ(link().segment->inputs_clock, 1);
    display.click(window, 700, 20);  // A caption: no button
    std::this_thread::sleep_for(std::chrono::milliseconds(300));
    EXPECT_TRUE(panel->running());
}

TEST_F(PanelOnDisplay, EachButtonTogglesItsOutputWithEveryMouseButton) {
    start();
    std::vector<int> expected(13, 0);
    for (std::size_t i = 0; i < buttons.size(); ++i) {
        for (const unsigned mouse_button : {1u, 2u, 3u}) {
            display.click(window, buttons[i].x, buttons[i].y, mouse_button);
            expected[i] = !expected[i];
            ASSERT_TRUE(outputs_become(expected))
                << buttons[i].name << " by mouse button " << mouse_button;
        }
    }
    EXPECT_EQ(outputs(), std::vector<int>(13, 1));
    EXPECT_EQ(link().segment->outputs_clock, 0);
}

TEST_F(PanelOnDisplay, AllThirteenOutputsAreDrivenFromTheKeyboard) {
    start();
    display.give_focus(window);
    // The focus begins on the first button made, and Tab follows the order in which they were made.
    const std::vector<std::string> tab_order = {"RENT",   "SORT", "DESP", "MONP", "DESV",
                                                "MONV",   "BZ1",  "ASPI", "MTA",  "MT",
                                                "DEPOSE", "BZ2",  "BZ3"};
    std::vector<int> expected(13, 0);
    for (const std::string& name : tab_order) {
        const auto found = std::ranges::find(buttons, name, &point::name);
        for (int times = 0; times < 3; ++times) {
            display.key(XK_space);
            int& state = expected[static_cast<std::size_t>(found - buttons.begin())];
            state = !state;
            ASSERT_TRUE(outputs_become(expected)) << name;
        }
        display.key(XK_Tab);
    }
    EXPECT_EQ(outputs(), std::vector<int>(13, 1));
}

TEST_F(PanelOnDisplay, OutputsThatTheSegmentLacksAreNotWritten) {
    start(names_of(indicators), {"x", "MT", "MT"});
    display.click(window, 45, 20);
    display.click(window, 45, 50);
    EXPECT_TRUE(wait_until([&] { return link().output_value(2) == 1; }));
    EXPECT_EQ(link().output_value(0), 0);
    EXPECT_EQ(link().output_value(1), 1);
}

TEST_F(PanelOnDisplay, ClosingTheWindowEndsItSilently) {
    start();
    display.close(window);
    expect_ended_quietly();
}

TEST_F(PanelOnDisplay, EscapeClosesItSilently) {
    start();
    display.give_focus(window);
    ASSERT_TRUE(wait_until([&] {
        display.key(XK_Escape);
        return !panel->running();
    }));
    expect_ended_quietly();
}

// The window itself then stands in the queue of used widgets, like a button.
TEST_F(PanelOnDisplay, ClosingTheWindowWritesAllThirteenOnce) {
    start();
    display.click(window, 45, 50);  // MT
    const std::vector<int> expected = {0, 0, 1, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0};
    ASSERT_TRUE(outputs_become(expected));
    for (std::int32_t& value : link().segment->output_values) value = 77;
    display.close(window);
    expect_ended_quietly();
    EXPECT_EQ(outputs(), expected);
    EXPECT_EQ(link().segment->output_values[13], 77);
}

TEST_F(PanelOnDisplay, TheEndOfTheSessionIsSaidUntilTheUserDismissesIt) {
    const struct {
        const char* how;
        std::function<void(x_window)> dismiss;
    } rows[] = {
        {"Return", [&](x_window) { display.key(XK_Return); }},
        {"Escape", [&](x_window) { display.key(XK_Escape); }},
        {"its button",
         [&](x_window message) {
             const screen::place at = display.area(message);
             display.click(message, at.w - 40, at.h - 22);
         }},
        {"the window manager", [&](x_window message) { display.close(message); }},
    };
    for (const auto& [how, dismiss] : rows) {
        SCOPED_TRACE(how);
        start();
        link().sharing_terminate();
        ASSERT_TRUE(display.wait_for_windows(2, seconds(1)))
            << "the message must come within a second";
        const x_window message = display.windows().back();
        ASSERT_TRUE(wait_until([&] { return display.pixel(message, 5, 5) == untouched; }));
        display.give_focus(message);
        std::this_thread::sleep_for(std::chrono::milliseconds(300));
        EXPECT_TRUE(panel->running());
        dismiss(message);
        expect_ended_quietly();
        server.reset();
    }
}

TEST_F(PanelOnDisplay, AWindowClosedAfterTheSessionEndedStillSaysSo) {
    start();
    panel->signal(SIGSTOP);
    display.close(window);
    link().sharing_terminate();
    panel->signal(SIGCONT);
    ASSERT_TRUE(wait_until([&] {
        const std::vector<x_window> all = display.windows();
        return std::ranges::any_of(all, [&](x_window each) { return each != window; });
    }));
    display.give_focus(display.windows().back());
    ASSERT_TRUE(wait_until([&] {
        display.key(XK_Return);
        return !panel->running();
    }));
    expect_ended_quietly();
}

TEST_F(PanelOnDisplay, TakesTheToolkitsOptionsAndIgnoresOtherArguments) {
    test_server other;
    program elsewhere({"env", "-u", "DISPLAY", built("quorin"), "-automemlink",
                       "00" + std::to_string(other->memory_ident()), "x", "-display",
                       std::getenv("DISPLAY")});
    const x_window shown = display.wait_for_window("quorin");
    ASSERT_NE(shown, 0u);
    display.close(shown);
    EXPECT_EQ(elsewhere.wait(), 0);
}

}  // namespace
