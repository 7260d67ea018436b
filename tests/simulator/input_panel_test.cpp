#include "simulator/input_panel.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <climits>
#include <cstdint>
#include <functional>
#include <memory>
#include <random>
#include <type_traits>
#include <vector>

#include <FL/Fl.H>
#include <FL/Fl_Box.H>
#include <FL/Fl_Button.H>
#include <FL/Fl_Check_Browser.H>
#include <FL/Fl_Window.H>
#include <FL/forms.H>

#include "tests/simulator/panel_screen.h"

namespace {

using checks = std::vector<int>;

checks checked(const Fl_Check_Browser& list) {
    checks all;
    for (int item = 1; item <= list.nitems(); ++item) all.push_back(list.checked(item));
    return all;
}

void set_checks(Fl_Check_Browser& list, const checks& wanted) {
    for (int i = 0; i < int(wanted.size()); ++i) list.checked(i + 1, wanted[i]);
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
        Fl::add_timeout(10, strike, this);
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

// ---------------------------------------------------------------- construction

TEST(InputPanelInItsOwnWindow, HasTheseWidgetsInThisOrderWhateverTheProgramDidBefore) {
    for (const char flip : {0, 1, 2}) {
        fl_flip = flip;
        OFD_simulator_input panel(300);
        const std::unique_ptr<Fl_Window> owner(panel.window);
        EXPECT_EQ(fl_flip, flip);
        EXPECT_EQ(descriptions(*panel.window),
                  (lines{"box 0,0 400x300 \"\"", "text 80,10 40x20 \"Signal\"",
                         "text 280,10 40x20 \"Sticky\"", "check list 10,30 180x230 no label",
                         "check list 210,30 180x230 no label", "button 180,270 60x20 \"GO\"",
                         "button 10,270 60x20 \"INIT\"", "button 330,270 60x20 \"QUIT\""}));
        EXPECT_EQ(Fl_Group::current(), nullptr);
    }
    fl_flip = 2;
}

TEST(InputPanelInItsOwnWindow, IsFlatTransientAndTitled) {
    OFD_simulator_input panel(300);
    const std::unique_ptr<Fl_Window> owner(panel.window);
    EXPECT_EQ(panel.window->w(), 400);
    EXPECT_EQ(panel.window->h(), 300);
    EXPECT_EQ(panel.window->box(), FL_NO_BOX);
    EXPECT_EQ(panel.window->child(0)->box(), FL_FLAT_BOX);
    EXPECT_STREQ(panel.window->label(), "Inputs Pannel");
    EXPECT_TRUE(panel.window->shown());
    EXPECT_TRUE(panel.window->modal());
    EXPECT_TRUE(panel.window->border());
}

TEST(InputPanelInItsOwnWindow, StaysTopLevelWhenAnotherGroupIsBeingFilled) {
    Fl_Window other(50, 50);
    OFD_simulator_input panel(300);
    const std::unique_ptr<Fl_Window> owner(panel.window);
    EXPECT_EQ(panel.window->parent(), nullptr);
    EXPECT_EQ(other.children(), 0);
}

TEST(InputPanelInItsOwnWindow, OpensUnderTheMouse) {
    screen display;
    const struct { int x, y; } mice[] = {{400, 300}, {900, 600}};
    for (const auto& mouse : mice) {
        move_mouse(mouse.x, mouse.y);
        OFD_simulator_input panel(300);
        const std::unique_ptr<Fl_Window> owner(panel.window);
        ASSERT_TRUE(wait_shown(display, *panel.window));
        const screen::place corner = area(display, *panel.window);
        EXPECT_NEAR(corner.x + 200, mouse.x, 40);
        EXPECT_NEAR(corner.y + 150, mouse.y, 40);
    }
}

TEST(InputPanelInAParent, HasTheSameWidgetsShiftedAndShowsNothing) {
    Fl_Window parent(700, 250, "parent");
    parent.box(FL_DOWN_BOX);
    OFD_simulator_input panel(&parent, 37, 250);
    EXPECT_EQ(Fl_Group::current(), &parent);
    parent.end();
    EXPECT_EQ(descriptions(parent),
              (lines{"text 117,10 40x20 \"Signal\"", "text 317,10 40x20 \"Sticky\"",
                     "check list 47,30 180x180 no label", "check list 247,30 180x180 no label",
                     "button 217,220 60x20 \"GO\"", "button 47,220 60x20 \"INIT\"",
                     "button 367,220 60x20 \"QUIT\""}));
    EXPECT_EQ(panel.window, &parent);
    EXPECT_FALSE(parent.shown());
    EXPECT_FALSE(parent.modal());
    EXPECT_EQ(parent.box(), FL_DOWN_BOX);
    EXPECT_STREQ(parent.label(), "parent");
}

TEST(InputPanel, SetsEachWidgetsKind) {
    hidden_panel test;
    for (Fl_Button* button :
         {test.panel.go_button, test.panel.init_button, test.panel.quit_button}) {
        EXPECT_EQ(button->type(), FL_NORMAL_BUTTON) << button->label();
        EXPECT_EQ(button->labelfont(), FL_TIMES) << button->label();
        EXPECT_EQ(button->labelsize(), 10) << button->label();
    }
    EXPECT_STREQ(test.panel.go_button->label(), "GO");
    EXPECT_STREQ(test.panel.init_button->label(), "INIT");
    EXPECT_STREQ(test.panel.quit_button->label(), "QUIT");
    EXPECT_EQ(test.panel.signal_browser, test.window.child(2));
    EXPECT_EQ(test.panel.sticky_browser, test.window.child(3));
    EXPECT_EQ(test.panel.signal_browser->type(), FL_MULTI_BROWSER);
    EXPECT_EQ(test.panel.sticky_browser->type(), FL_MULTI_BROWSER);
    for (int i : {0, 1}) {
        EXPECT_EQ(test.window.child(i)->box(), FL_NO_BOX);
        EXPECT_EQ(test.window.child(i)->align(), unsigned(FL_ALIGN_LEFT));
    }
}

TEST(InputPanel, StartsEmpty) {
    hidden_panel test;
    EXPECT_EQ(test.panel.count, 0);
    EXPECT_TRUE(test.panel.names.empty());
    EXPECT_EQ(test.panel.reserved_1, nullptr);
    EXPECT_EQ(test.panel.reserved_2, nullptr);
    EXPECT_EQ(test.panel.signal_browser->nitems(), 0);
    EXPECT_EQ(test.panel.sticky_browser->nitems(), 0);
    static_assert(!std::is_copy_constructible_v<OFD_simulator_input>);
}

TEST(InputPanel, KeepsItsFieldsInThisOrder) {
    const hidden_panel test;
    const OFD_simulator_input& panel = test.panel;
    const std::vector<const void*> fields = {
        &panel.window,         &panel.quit_button,    &panel.go_button,    &panel.init_button,
        &panel.signal_browser, &panel.sticky_browser, &panel.reserved_1,   &panel.reserved_2,
        &panel.names,          &panel.count,          &panel.living_window};
    EXPECT_EQ(fields.front(), &panel);
    EXPECT_TRUE(std::ranges::is_sorted(fields, std::less<const void*>()));
}

TEST(InputPanel, TakesAnyOffsetAndHeight) {
    for (const int x : {INT_MIN, -1000, 0, INT_MAX}) {
        for (const int height : {INT_MIN, -1, 0, 69, 70, 71, INT_MAX}) {
            Fl_Window parent(400, 300);
            OFD_simulator_input panel(&parent, x, height);
            parent.end();
            panel.add("te");
            EXPECT_EQ(panel.go_button->y(), int(unsigned(height) - 30u)) << height;
            EXPECT_EQ(panel.go_button->x(), int(unsigned(x) + 180u)) << x;
        }
    }
    for (const int height : {-20, 0, 60}) {
        OFD_simulator_input panel(height);
        const std::unique_ptr<Fl_Window> owner(panel.window);
        panel.add("te");
        Fl::check();
        EXPECT_EQ(panel.signal_browser->h(), height - 70);
    }
}

// ---------------------------------------------------------------- inputs

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
    click_item(*panel.sticky_browser, 1);
    click_item(*panel.signal_browser, 1);
    click_then_check(*panel.go_button);
    EXPECT_EQ(values, checks{1});
    EXPECT_EQ(checked(*panel.signal_browser), checks{1});
}

// ---------------------------------------------------------------- check

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
    Fl::remove_check(count_pass, &passes);
    EXPECT_GE(waited, std::chrono::milliseconds(450));
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

// ---------------------------------------------------------------- eval

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
    const auto start = std::chrono::steady_clock::now();
    for (int i = 0; i < 100; ++i) test.panel.eval(&test.quit, nullptr);
    const auto spent = std::chrono::steady_clock::now() - start;
    EXPECT_GE(spent, std::chrono::milliseconds(100));
    EXPECT_LT(spent, std::chrono::seconds(3));
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

// ---------------------------------------------------------------- ends

TEST(InputPanelEnd, HidesItsOwnWindowAndDeletesNoWidget) {
    auto panel = std::make_unique<OFD_simulator_input>(200);
    const std::unique_ptr<Fl_Window> window(panel->window);
    panel->add("a");
    Fl::check();
    panel.reset();
    EXPECT_FALSE(window->shown());
    EXPECT_EQ(window->children(), 8);
    window->show();
    Fl::check();
}

TEST(InputPanelEnd, HidesTheCallersParent) {
    Fl_Window parent(500, 200, "parent");
    auto panel = std::make_unique<OFD_simulator_input>(&parent, 10, 200);
    parent.end();
    parent.show();
    Fl::check();
    EXPECT_TRUE(parent.shown());
    panel.reset();
    EXPECT_FALSE(parent.shown());
    EXPECT_EQ(parent.children(), 7);
}

TEST(InputPanelEnd, MayComeAfterItsWindows) {
    for (const bool show : {false, true}) {
        auto* parent = new Fl_Window(500, 200, "parent");
        OFD_simulator_input inside(parent, 10, 200);
        parent->end();
        if (show) parent->show();
        Fl::check();
        delete parent;
        EXPECT_TRUE(inside.living_window.deleted());
    }
    OFD_simulator_input own(200);
    Fl::check();
    delete own.window;
    EXPECT_TRUE(own.living_window.deleted());
}

}  // namespace
