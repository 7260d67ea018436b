// The input panel that a program fills, pass by pass.
#include "tests/simulator/input_panel_fixture.h"

#include <algorithm>
#include <chrono>
#include <climits>

namespace {

TEST(InputPanelEval, ChecksTheBoxOfEveryValueThatIsNotZero) {
    const checks values = {0, 1, 5, 256, -1, INT_MIN, 0};
    hidden_panel test(lines(values.size(), "name"));
    checks given = values;
    test.panel.eval(&test.quit, given.data());
    EXPECT_EQ(test.quit, 0);
    EXPECT_EQ(checked(*test.panel.signal_browser), (checks{0, 1, 1, 1, 1, 1, 0}));
    EXPECT_EQ(checked(*test.panel.sticky_browser), checks(values.size(), 0));
    EXPECT_EQ(given, values);
    std::fill(given.begin(), given.end(), 0);
    test.panel.eval(&test.quit, given.data());
    EXPECT_EQ(checked(*test.panel.signal_browser), checks(values.size(), 0));
}

TEST(InputPanelEval, WhatItShowedIsSentAsOne) {
    hidden_panel test({"a", "b"});
    int values[] = {5, 256};
    test.panel.eval(&test.quit, values);
    test.panel.go_button->do_callback();
    test.panel.check(&test.init, &test.quit, values);
    EXPECT_EQ(values[0], 1);
    EXPECT_EQ(values[1], 1);
}

TEST(InputPanelEval, QuitShowsNothing) {
    hidden_panel test({"a"});
    test.panel.quit_button->do_callback();
    int values[] = {1};
    test.panel.eval(&test.quit, values);
    EXPECT_EQ(test.quit, 1);
    EXPECT_EQ(test.panel.signal_browser->checked(1), 0);
    test.panel.eval(&test.quit, values);
    EXPECT_EQ(test.quit, 0);
    EXPECT_EQ(test.panel.signal_browser->checked(1), 1);
}

TEST(InputPanelEval, TakesOneWidgetAPassWhicheverItIs) {
    hidden_panel test({"a"});
    int values[] = {1};
    for (Fl_Button* button :
         {test.panel.go_button, test.panel.init_button, test.panel.quit_button}) {
        button->do_callback();
    }
    for (const int quit : {0, 0, 1, 0}) {
        test.panel.eval(&test.quit, values);
        EXPECT_EQ(test.quit, quit);
        EXPECT_EQ(test.panel.signal_browser->checked(1), 1);
        EXPECT_EQ(values[0], 1);
    }
}

TEST(InputPanelEval, PausesAMillisecondAndNoMore) {
    hidden_panel test;
    auto shortest = std::chrono::steady_clock::duration::max();  // other programs lengthen some
    for (int i = 0; i < 100; ++i) {
        const auto start = std::chrono::steady_clock::now();
        test.panel.eval(&test.quit, nullptr);
        shortest = std::min(shortest, std::chrono::steady_clock::now() - start);
    }
    EXPECT_GE(shortest, std::chrono::milliseconds(1));
    EXPECT_LT(shortest, std::chrono::milliseconds(30));
}

TEST_F(real_panel, EvalNoticesARealQuit) {
    fill({"a"});
    values = {1};
    panel.eval(&quit, values.data());
    EXPECT_EQ(quit, 0);
    click(display, *panel.quit_button);
    EXPECT_TRUE(settle([&] {
        panel.eval(&quit, values.data());
        return quit == 1;
    }));
}

}  // namespace
