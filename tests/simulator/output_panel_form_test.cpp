// What the output panel is made of, and how it ends.
#include "tests/simulator/output_panel_fixture.h"

#include <algorithm>
#include <climits>
#include <functional>
#include <type_traits>
#include <vector>

#include <FL/forms.H>

namespace {

TEST(OutputPanelInItsOwnWindow, HasTheseWidgetsInThisOrderWhateverTheProgramDidBefore) {
    for (const char flip : {0, 1, 2}) {
        fl_flip = flip;
        OFD_simulator_output panel(133, "title");
        const std::unique_ptr<Fl_Window> owner(panel.window);
        EXPECT_EQ(fl_flip, flip);
        EXPECT_EQ(descriptions(*panel.window),
                  (lines{"box 0,0 240x133 \"\"", "button 70,103 20x20 \"+\"",
                         "button 30,103 20x20 \"+\"", "browser 20,30 198x65 no label",
                         "box 7,34 10x12 \"\"", "box 7,50 10x12 \"\"", "box 7,66 10x12 \"\""}));
        EXPECT_EQ(Fl_Group::current(), nullptr);
    }
    fl_flip = 2;
}

TEST(OutputPanelInItsOwnWindow, IsFlatTransientAndTitled) {
    OFD_simulator_output panel(200, "title");
    const std::unique_ptr<Fl_Window> owner(panel.window);
    EXPECT_EQ(panel.window->w(), 240);
    EXPECT_EQ(panel.window->h(), 200);
    EXPECT_EQ(panel.window->box(), FL_NO_BOX);
    EXPECT_EQ(panel.window->child(0)->box(), FL_FLAT_BOX);
    EXPECT_STREQ(panel.window->label(), "title");
    EXPECT_TRUE(panel.window->shown());
    EXPECT_TRUE(panel.window->modal());
    EXPECT_TRUE(panel.window->border());
    EXPECT_EQ(panel.x_offset, 0);
}

TEST(OutputPanelInItsOwnWindow, StaysTopLevelWhenAnotherGroupIsBeingFilled) {
    Fl_Window other(50, 50);
    OFD_simulator_output panel(133, "title");
    const std::unique_ptr<Fl_Window> owner(panel.window);
    EXPECT_EQ(panel.window->parent(), nullptr);
    EXPECT_EQ(other.children(), 0);
}

TEST(OutputPanelInItsOwnWindow, OpensUnderTheMouse) {
    screen display;
    move_mouse(800, 500);
    OFD_simulator_output panel(300, "under the mouse");
    const std::unique_ptr<Fl_Window> owner(panel.window);
    ASSERT_TRUE(wait_shown(display, *panel.window));
    EXPECT_NE(display.wait_for_window("under the mouse"), 0u);
    const screen::place corner = area(display, *panel.window);
    EXPECT_NEAR(corner.x + 120, 800, 40);
    EXPECT_NEAR(corner.y + 150, 500, 40);
}

TEST(OutputPanelInAParent, HasACaptionAndItsOwnSpacingAndShowsNothing) {
    Fl_Window parent(700, 150, "parent");
    OFD_simulator_output panel(&parent, 400, 150, "Sorties");
    EXPECT_EQ(Fl_Group::current(), &parent);
    parent.end();
    EXPECT_EQ(descriptions(parent),
              (lines{"text 480,10 40x20 \"Sorties\"", "button 550,120 20x20 \"+\"",
                     "button 470,120 20x20 \"-\"", "browser 420,30 198x82 no label",
                     "box 407,34 10x12 \"\"", "box 407,51 10x12 \"\"", "box 407,68 10x12 \"\"",
                     "box 407,85 10x12 \"\""}));
    EXPECT_EQ(parent.child(0)->box(), FL_NO_BOX);
    EXPECT_EQ(parent.child(0)->align(), unsigned(FL_ALIGN_LEFT));
    EXPECT_EQ(panel.window, &parent);
    EXPECT_EQ(panel.x_offset, 400);
    EXPECT_FALSE(parent.shown());
    EXPECT_STREQ(parent.label(), "parent");
}

TEST(OutputPanel, SetsEachWidgetsKind) {
    hidden_panel inside;
    OFD_simulator_output own(133, "title");
    const std::unique_ptr<Fl_Window> owner(own.window);
    for (OFD_simulator_output* panel : {&inside.panel, &own}) {
        for (Fl_Button* button : {panel->plus_button, panel->minus_button}) {
            EXPECT_EQ(button->type(), FL_NORMAL_BUTTON);
            EXPECT_EQ(button->labelfont(), FL_TIMES);
            EXPECT_EQ(button->labelsize(), 10);
            EXPECT_EQ(button->user_data(), panel);
        }
        EXPECT_EQ(panel->plus_button->callback(), OFD_simulator_output_callback_plus);
        EXPECT_EQ(panel->minus_button->callback(), OFD_simulator_output_callback_moins);
        EXPECT_EQ(panel->my_plus_button(), panel->plus_button);
        EXPECT_EQ(panel->my_moins_button(), panel->minus_button);
        for (int row = 0; row < 3; ++row) {
            const Fl_Box& lamp = *panel->lamps[row];
            EXPECT_EQ(lamp.box(), FL_FLAT_BOX);
            EXPECT_EQ(lamp.selection_color(), panel == &own ? 255u : red);
            EXPECT_EQ(lamp.labelfont(), FL_TIMES);
            EXPECT_EQ(lamp.align(), 20u);
            EXPECT_FALSE(lamp.visible());
        }
    }
    EXPECT_LT(own.minus_button->x(), own.plus_button->x());
}

TEST(OutputPanel, StartsEmptyOnPage0) {
    hidden_panel test;
    EXPECT_EQ(test.panel.count, 0);
    EXPECT_EQ(test.panel.page, 0);
    EXPECT_EQ(test.panel.rows, 3);
    EXPECT_TRUE(test.panel.names.empty());
    EXPECT_EQ(test.panel.browser->size(), 0);
    EXPECT_EQ(test.panel.reserved_1, nullptr);
    EXPECT_EQ(test.panel.reserved_2, nullptr);
    EXPECT_EQ(std::size(test.panel.lamps), 32768u);
    static_assert(!std::is_copy_constructible_v<OFD_simulator_output>);
}

TEST(OutputPanel, KeepsItsFieldsInThisOrder) {
    const hidden_panel test;
    const OFD_simulator_output& panel = test.panel;
    const std::vector<const void*> fields = {
        &panel.window,     &panel.x_offset,    &panel.name_array,   &panel.count,
        &panel.page,       &panel.rows,        &panel.names,        &panel.lamps,
        &panel.browser,    &panel.plus_button, &panel.minus_button, &panel.value_array,
        &panel.reserved_1, &panel.reserved_2,  &panel.living_window};
    EXPECT_EQ(fields.front(), &panel);
    EXPECT_TRUE(std::ranges::is_sorted(fields, std::less<const void*>()));
}

TEST(OutputPanel, HasARowForEach16PixelsAbove85) {
    const struct {
        int height, rows;
    } cases[] = {{101, 1}, {116, 1}, {117, 2}, {132, 2}, {133, 3}, {148, 3}, {149, 4}, {1000, 57},
                 {100, 0}, {86, 0},  {85, 0},  {70, 0},  {69, -1}, {53, -2}, {0, -5}};
    for (const auto& [height, rows] : cases) {
        hidden_panel test(height);
        EXPECT_EQ(test.panel.rows, rows) << height;
        EXPECT_EQ(test.window.children(), 4 + std::max(rows, 0)) << height;
    }
}

TEST(OutputPanel, KeepsItsOwnCopyOfTheTitle) {
    Fl_Window parent(700, 150);
    std::string title = "a title long enough to live on the heap";
    const std::string wanted = title;
    OFD_simulator_output inside(&parent, 400, 150, title);
    parent.end();
    auto own = std::make_unique<OFD_simulator_output>(150, title);
    const std::unique_ptr<Fl_Window> owner(own->window);
    title.assign(title.size(), '#');
    own.reset();
    EXPECT_EQ(owner->label(), wanted);
    EXPECT_EQ(parent.child(0)->label(), wanted);
    owner->show();  // reads the label again
    Fl::check();
}

TEST(OutputPanel, TakesAnyOffset) {
    for (const int x : {INT_MIN, -50, INT_MAX}) {
        Fl_Window parent(240, 133);
        OFD_simulator_output panel(&parent, x, 133, "");
        parent.end();
        panel.add("a");
        EXPECT_EQ(panel.lamps[0]->x(), int(unsigned(x) + 7u)) << x;
    }
}

TEST(OutputPanelEnd, HidesItsOwnWindowAndDeletesNoWidget) {
    for (const int outputs : {0, 1, 7}) {
        auto panel = std::make_unique<OFD_simulator_output>(133, "title");
        const std::unique_ptr<Fl_Window> window(panel->window);
        add_outputs(*panel, outputs);
        Fl::check();
        panel.reset();
        EXPECT_FALSE(window->shown());
        EXPECT_EQ(window->children(), 7);
        window->show();
        Fl::check();
    }
}

TEST(OutputPanelEnd, HidesTheCallersParentWhoseButtonsThenDoNothing) {
    Fl_Window parent(500, 133, "parent");
    auto panel = std::make_unique<OFD_simulator_output>(&parent, 10, 133, "title");
    parent.end();
    add_outputs(*panel, 7);
    Fl_Widget* buttons[] = {panel->my_plus_button(), panel->my_moins_button()};
    parent.show();
    Fl::check();
    EXPECT_TRUE(parent.shown());
    panel.reset();
    EXPECT_FALSE(parent.shown());
    EXPECT_EQ(parent.children(), 7);
    parent.show();
    for (Fl_Widget* button : buttons) {
        EXPECT_EQ(button->user_data(), nullptr);
        button->do_callback();
    }
    Fl::check();
}

TEST(OutputPanelEnd, LeavesTheUserDataThatACallerGave) {
    int mine = 0;
    Fl_Window parent(500, 133, "parent");
    auto panel = std::make_unique<OFD_simulator_output>(&parent, 10, 133, "title");
    parent.end();
    Fl_Widget* plus = panel->my_plus_button();
    plus->user_data(&mine);
    panel.reset();
    EXPECT_EQ(plus->user_data(), &mine);
}

TEST(OutputPanelEnd, MayComeAfterItsWindowOrItsWidgets) {
    for (const bool show : {false, true}) {
        auto* parent = new Fl_Window(500, 133, "parent");
        OFD_simulator_output inside(parent, 10, 133, "title");
        parent->end();
        add_outputs(inside, 4);
        if (show) parent->show();
        Fl::check();
        delete parent;
        EXPECT_TRUE(inside.living_window.deleted());
    }
    OFD_simulator_output own(133, "title");
    Fl::check();
    delete own.window;
    Fl_Window kept(500, 133);
    OFD_simulator_output emptied(&kept, 0, 133, "title");
    kept.end();
    kept.clear();
    EXPECT_TRUE(emptied.living_window.exists());
}

}  // namespace
