// What the input panel is made of, and how it ends.
#include "tests/simulator/input_panel_fixture.h"

#include <algorithm>
#include <climits>
#include <functional>
#include <type_traits>

#include <FL/Fl_Box.H>
#include <FL/forms.H>

namespace {

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
