// The boxes of the input panel, and its buttons while a program waits for them.
#include "tests/simulator/input_panel_fixture.h"

#include <algorithm>
#include <chrono>
#include <random>

namespace {

void set_checks(Fl_Check_Browser& list, const checks& wanted) {
    for (int i = 0; i < int(wanted.size()); ++i) list.checked(i + 1, wanted[i]);
}

TEST(InputPanelAdd, AppendsAnUncheckedItemToBothLists) {
    hidden_panel test({"te", "", "te",
                       "d\xC3\xA9pos\xC3\xA9"
                       "e",
                       std::string(300, 'x')});
    const lines wanted = {"te", "", "te",
                          "d\xC3\xA9pos\xC3\xA9"
                          "e",
                          std::string(300, 'x')};
    EXPECT_EQ(lines(test.panel.names.begin(), test.panel.names.end()), wanted);
    EXPECT_EQ(test.panel.count, 5);
    for (const Fl_Check_Browser* list : {test.panel.signal_browser, test.panel.sticky_browser}) {
        ASSERT_EQ(list->nitems(), 5);
        for (int i = 0; i < 5; ++i) EXPECT_EQ(list->text(i + 1), wanted[i]);
        EXPECT_EQ(checked(*list), checks(5, 0));
    }
}

TEST_F(real_panel, AnInputAddedToAPanelOnTheScreenShowsAndTakesItsFirstClick) {
    fill({});
    const Fl_Check_Browser* const lists[] = {panel.signal_browser, panel.sticky_browser};
    for (const Fl_Check_Browser* list : lists)
        EXPECT_FALSE(shows_box(*list)) << "of an empty panel";
    panel.add("te");
    values = {-5};
    for (const Fl_Check_Browser* list : lists)
        EXPECT_TRUE(settle([&] { return shows_box(*list); })) << list->x();
    for (const Fl_Check_Browser* list : {lists[1], lists[0]}) {
        click_item(*list, 1);
        EXPECT_TRUE(settle([&] { return checked(*list) == checks{1}; })) << list->x();
    }
    click_then_check(*panel.go_button);
    EXPECT_EQ(values, checks{1});
    EXPECT_EQ(checked(*panel.signal_browser), checks{1});
}

TEST_F(real_panel, GoWithoutInputsLeavesTheValuesUntouched) {
    fill({});
    click_then_check(*panel.go_button);
    EXPECT_EQ(init, 0);
    EXPECT_EQ(quit, 0);
    EXPECT_EQ(values, checks{-5});
}

TEST_F(real_panel, ASignalThatIsNotStickyIsSentOnce) {
    fill({"a", "b", "c"});
    click_item(*panel.signal_browser, 2);
    click_then_check(*panel.go_button);
    EXPECT_EQ(values, (checks{0, 1, 0, -5}));
    EXPECT_EQ(checked(*panel.signal_browser), (checks{0, 0, 0}));
    click_then_check(*panel.go_button);
    EXPECT_EQ(values, (checks{0, 0, 0, -5}));
    EXPECT_EQ(init, 0);
    EXPECT_EQ(quit, 0);
}

TEST_F(real_panel, AStickySignalIsSentUntilItsUserClearsIt) {
    fill({"a", "b", "c"});
    click_item(*panel.signal_browser, 3);
    click_item(*panel.sticky_browser, 3);
    for (int i = 0; i < 3; ++i) {
        click_then_check(*panel.go_button);
        EXPECT_EQ(values, (checks{0, 0, 1, -5}));
        EXPECT_EQ(checked(*panel.signal_browser), (checks{0, 0, 1}));
    }
    click_item(*panel.signal_browser, 3);
    click_then_check(*panel.go_button);
    EXPECT_EQ(values, (checks{0, 0, 0, -5}));
    EXPECT_EQ(checked(*panel.sticky_browser), (checks{0, 0, 1}));
}

TEST_F(real_panel, InitClearsEverySignalEvenStickyOnesAndLeavesTheValues) {
    fill({"a", "b", "c"});
    click_item(*panel.signal_browser, 1);
    click_item(*panel.signal_browser, 2);
    click_item(*panel.sticky_browser, 2);
    click_then_check(*panel.init_button);
    EXPECT_EQ(init, 1);
    EXPECT_EQ(quit, 0);
    EXPECT_EQ(values, checks(4, -5));
    EXPECT_EQ(checked(*panel.signal_browser), (checks{0, 0, 0}));
    EXPECT_EQ(checked(*panel.sticky_browser), (checks{0, 1, 0}));
}

TEST_F(real_panel, QuitAfterIdlePassesFindsInitCleared) {
    fill({"a"});
    click_item(*panel.signal_browser, 1);
    Fl::add_timeout(
        0.1,
        [](void* self) {
            auto* test = static_cast<real_panel*>(self);
            click(test->display, *test->panel.quit_button);
        },
        this);
    check();
    EXPECT_EQ(init, 0);
    EXPECT_EQ(quit, 1);
    EXPECT_EQ(values, checks(2, -5));
    EXPECT_EQ(checked(*panel.signal_browser), checks{1});
}

TEST_F(real_panel, CheckWaitsForTheClickAMillisecondAPass) {
    fill({"a"});
    int passes = 0;
    const auto count_pass = [](void* count) { ++*static_cast<int*>(count); };
    Fl::add_check(count_pass, &passes);
    const auto start = std::chrono::steady_clock::now();
    // The toolkit's timeouts go by the machine's date, which may be set meanwhile.
    const auto toolkit_start = std::chrono::system_clock::now();
    Fl::add_timeout(
        0.3,
        [](void* self) {
            auto* test = static_cast<real_panel*>(self);
            test->click_item(*test->panel.signal_browser, 1);
        },
        this);
    Fl::add_timeout(
        0.5,
        [](void* self) {
            auto* test = static_cast<real_panel*>(self);
            click(test->display, *test->panel.go_button);
        },
        this);
    check();
    const auto waited = std::chrono::steady_clock::now() - start;
    const auto toolkit_waited = std::chrono::system_clock::now() - toolkit_start;
    Fl::remove_check(count_pass, &passes);
    EXPECT_GE(toolkit_waited, std::chrono::milliseconds(450));
    EXPECT_LE(passes, waited / std::chrono::milliseconds(1) + 1);
    EXPECT_EQ(values, (checks{1, -5}));
}

TEST_F(real_panel, ClicksOnTheBoxesNeitherEndCheckNorStayInTheQueue) {
    fill({"a", "b"});
    for (int i = 0; i < 3; ++i) click_item(*panel.signal_browser, 1 + i % 2);
    click_item(*panel.sticky_browser, 2);
    click_then_check(*panel.go_button);
    EXPECT_EQ(values, (checks{0, 1, -5}));
    EXPECT_EQ(Fl::readqueue(), nullptr);
}

TEST_F(real_panel, ClosingTheWindowPressesNoButton) {
    fill({"a"});
    // The window lands in the queue as a widget that is none of the three.
    panel.window->do_callback();
    panel.go_button->do_callback();
    check();
    EXPECT_FALSE(panel.window->shown());
    EXPECT_EQ(init, 0);
    EXPECT_EQ(quit, 0);
    EXPECT_EQ(values, (checks{0, -5}));
}

TEST(InputPanelCheck, QuitReadFirstLeavesInitAsItWas) {
    hidden_panel test({"a"});
    test.panel.signal_browser->checked(1, 1);
    test.panel.quit_button->do_callback();
    int values[] = {-5};
    test.panel.check(&test.init, &test.quit, values);
    EXPECT_EQ(test.init, 77);
    EXPECT_EQ(test.quit, 1);
    EXPECT_EQ(values[0], -5);
    EXPECT_EQ(test.panel.signal_browser->checked(1), 1);
}

TEST(InputPanelCheck, AnyOtherWidgetClearsInitAndIsDropped) {
    hidden_panel test({"a"});
    Fl_Button stranger(0, 0, 10, 10);
    test.panel.signal_browser->checked(1, 1);
    const std::initializer_list<Fl_Widget*> others = {
        &stranger, &test.window, test.panel.signal_browser, test.panel.sticky_browser};
    for (Fl_Widget* other : others) {
        other->do_callback();
        test.panel.quit_button->do_callback();
        test.init = 77;
        int values[] = {-5};
        test.panel.check(&test.init, &test.quit, values);
        EXPECT_EQ(test.init, 0);
        EXPECT_EQ(test.quit, 1);
        EXPECT_EQ(values[0], -5);
        EXPECT_EQ(test.panel.signal_browser->checked(1), 1);
        EXPECT_EQ(Fl::readqueue(), nullptr);
    }
}

TEST(InputPanelCheck, TakesOneButtonACall) {
    hidden_panel test({"a"});
    test.panel.signal_browser->checked(1, 1);
    test.panel.sticky_browser->checked(1, 1);
    test.panel.go_button->do_callback();
    test.panel.init_button->do_callback();
    int values[] = {-5};
    test.panel.check(&test.init, &test.quit, values);
    EXPECT_EQ(test.init, 0);
    EXPECT_EQ(values[0], 1);
    values[0] = -5;
    test.panel.check(&test.init, &test.quit, values);
    EXPECT_EQ(test.init, 1);
    EXPECT_EQ(test.quit, 0);
    EXPECT_EQ(values[0], -5);
}

TEST(InputPanelCheck, TakesNoValuesWithoutInputs) {
    hidden_panel test;
    for (Fl_Button* button :
         {test.panel.go_button, test.panel.init_button, test.panel.quit_button}) {
        button->do_callback();
        test.panel.check(&test.init, &test.quit, nullptr);
    }
    EXPECT_EQ(test.init, 1);
    EXPECT_EQ(test.quit, 1);
}

TEST(InputPanelCheck, SendsWhatAModelOfThePanelSends) {
    std::mt19937 random(5);
    constexpr int inputs = 7;
    hidden_panel test(lines(inputs, "same name"));
    checks signal(inputs, 0), sticky(inputs, 0);
    for (int step = 0; step < 400; ++step) {
        for (int i = 0; i < inputs; ++i) {
            if (random() % 3 == 0) signal[i] ^= 1;
            if (random() % 5 == 0) sticky[i] ^= 1;
        }
        set_checks(*test.panel.signal_browser, signal);
        set_checks(*test.panel.sticky_browser, sticky);
        checks values(inputs, -5), wanted = values;
        const bool go = random() % 4 != 0;
        if (go) wanted = signal;
        for (int i = 0; i < inputs; ++i) signal[i] = go ? signal[i] && sticky[i] : 0;
        (go ? test.panel.go_button : test.panel.init_button)->do_callback();
        test.panel.check(&test.init, &test.quit, values.data());
        ASSERT_EQ(values, wanted) << step;
        ASSERT_EQ(test.init, go ? 0 : 1) << step;
        ASSERT_EQ(test.quit, 0) << step;
        ASSERT_EQ(checked(*test.panel.signal_browser), signal) << step;
        ASSERT_EQ(checked(*test.panel.sticky_browser), sticky) << step;
    }
}

}  // namespace
