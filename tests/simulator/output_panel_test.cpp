#include "simulator/output_panel.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <climits>
#include <functional>
#include <memory>
#include <random>
#include <type_traits>
#include <vector>

#include <FL/Fl.H>
#include <FL/Fl_Box.H>
#include <FL/Fl_Browser.H>
#include <FL/Fl_Button.H>
#include <FL/Fl_Window.H>
#include <FL/forms.H>

#include "tests/simulator/panel_screen.h"

namespace {

constexpr Fl_Color yellow = 95, blue = 216, red = 88, black = 56;

lines shown_names(const OFD_simulator_output& panel) {
    lines all;
    for (int line = 1; line <= panel.browser->size(); ++line)
        all.push_back(panel.browser->text(line));
    return all;
}

int lamps_on(const OFD_simulator_output& panel) {
    int on = 0;
    for (int row = 0; row < panel.rows; ++row) {
        if (panel.lamps[row]->visible()) ++on;
    }
    return on;
}

/// "0", "1", ... : each output is named after its index.
void add_outputs(OFD_simulator_output& panel, int outputs) {
    for (int i = 0; i < outputs; ++i) panel.add(std::to_string(i));
}

lines numbers(int from, int to) {
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
        return settle([&] { return lamp_seen(row) == colour; }, seconds(5));
    }
    bool reaches(int page) {
        return settle([&] { return panel.page == page; }, seconds(5));
    }
};

// ---------------------------------------------------------------- construction

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

// ---------------------------------------------------------------- add and paging

TEST(OutputPanelAdd, MovesForwardOnePageAtATime) {
    hidden_panel test;
    const struct {
        int page, from;
    } after[] = {{0, 0}, {0, 0}, {0, 0}, {1, 3}, {1, 3}, {1, 3}, {2, 6}};
    for (int i = 0; i < 7; ++i) {
        test.panel.add(std::to_string(i));
        EXPECT_EQ(test.panel.page, after[i].page) << i;
        EXPECT_EQ(shown_names(test.panel), numbers(after[i].from, i + 1)) << i;
        EXPECT_EQ(lamps_on(test.panel), i + 1 - after[i].from) << i;
    }
}

TEST(OutputPanelAdd, FromAnEarlierPageMovesOnePageOnly) {
    hidden_panel test;
    add_outputs(test.panel, 7);
    test.panel.previous_page();
    test.panel.previous_page();
    ASSERT_EQ(test.panel.page, 0);
    test.panel.add("7");
    EXPECT_EQ(test.panel.page, 1);
    EXPECT_EQ(shown_names(test.panel), numbers(3, 6));
}

TEST(OutputPanelAdd, KeepsNamesAndValuesSideBySide) {
    hidden_panel test;
    test.panel.add("a");
    test.panel.add("");
    int values[] = {0, 1};
    test.panel.eval(values);
    test.panel.add("a");
    EXPECT_EQ(test.panel.count, 3);
    EXPECT_EQ(lines(test.panel.name_array, test.panel.name_array + 3), (lines{"a", "", "a"}));
    EXPECT_EQ(lines(test.panel.names.begin(), test.panel.names.end()), (lines{"a", "", "a"}));
    EXPECT_EQ(std::vector<int>(test.panel.value_array, test.panel.value_array + 3),
              (std::vector{0, 1, 2}));
}

TEST(OutputPanelAdd, TakesANameOfItsOwn) {
    hidden_panel test;
    test.panel.add("a name long enough to live on the heap");
    test.panel.add(test.panel.name_array[0]);
    test.panel.add(test.panel.names.front());
    for (int i : {1, 2}) EXPECT_EQ(test.panel.name_array[i], test.panel.name_array[0]);
}

TEST(OutputPanelAdd, GivesARedLampUntilTheNextEval) {
    hidden_panel test;
    test.panel.add("a");
    EXPECT_EQ(test.panel.lamps[0]->color(), red);
    EXPECT_EQ(test.panel.lamps[0]->selection_color(), black);
    EXPECT_TRUE(test.panel.lamps[0]->visible());
    EXPECT_FALSE(test.panel.lamps[1]->visible());
    test.window.show();
    int values[] = {0};
    test.panel.eval(values);
    EXPECT_EQ(test.panel.lamps[0]->color(), yellow);
    test.panel.add("b");
    EXPECT_EQ(test.panel.lamps[0]->color(), yellow);
    EXPECT_EQ(test.panel.lamps[1]->color(), red);
}

TEST(OutputPanelPaging, StopsAtBothEndsButWritesTheRowsAnew) {
    hidden_panel test;
    add_outputs(test.panel, 7);
    const auto spoil = [&] {
        test.panel.browser->clear();
        for (int row = 0; row < 3; ++row) test.panel.lamps[row]->show();
    };
    spoil();
    test.panel.next_page();
    EXPECT_EQ(test.panel.page, 2);
    EXPECT_EQ(shown_names(test.panel), numbers(6, 7));
    EXPECT_EQ(lamps_on(test.panel), 1);
    test.panel.previous_page();
    EXPECT_EQ(shown_names(test.panel), numbers(3, 6));
    test.panel.previous_page();
    spoil();
    test.panel.previous_page();
    EXPECT_EQ(test.panel.page, 0);
    EXPECT_EQ(shown_names(test.panel), numbers(0, 3));
    EXPECT_EQ(lamps_on(test.panel), 3);
}

TEST(OutputPanelPaging, ColoursTheRowsOfTheNewPage) {
    hidden_panel test;
    add_outputs(test.panel, 5);
    int values[] = {0, 1, 7, 1, 0};
    test.panel.eval(values);
    test.panel.previous_page();
    EXPECT_EQ(test.panel.lamps[0]->color(), yellow);
    EXPECT_EQ(test.panel.lamps[1]->color(), blue);
    EXPECT_EQ(test.panel.lamps[2]->color(), red);
    test.panel.next_page();
    EXPECT_EQ(test.panel.lamps[0]->color(), blue);
    EXPECT_EQ(test.panel.lamps[1]->color(), yellow);
    EXPECT_FALSE(test.panel.lamps[2]->visible());
}

TEST(OutputPanelPaging, OfAnEmptyPanelStaysOnPage0) {
    for (const int height : {101, 133}) {
        hidden_panel test(height);
        test.panel.next_page();
        test.panel.previous_page();
        test.panel.eval(nullptr);
        EXPECT_EQ(test.panel.page, 0);
        EXPECT_EQ(lamps_on(test.panel), 0);
    }
}

TEST(OutputPanelPaging, FollowsAModelThroughRandomSteps) {
    std::mt19937 random(6);
    for (const int rows : {1, 2, 3, 5}) {
        hidden_panel test(85 + 16 * rows);
        std::vector<int> values;
        int page = 0;
        const auto forward = [&] {
            if ((page + 1) * rows < int(values.size())) ++page;
        };
        bool paged = false;
        for (int step = 0; step < 300; ++step) {
            switch (random() % 4) {
                case 0:
                    test.panel.add(std::to_string(values.size()));
                    values.push_back(2);
                    forward();
                    paged = true;
                    break;
                case 1:
                    test.panel.next_page(), forward(), paged = true;
                    break;
                case 2:
                    test.panel.previous_page(), page = std::max(page - 1, 0), paged = true;
                    break;
                default:
                    for (int& value : values) value = int(random() % 5) - 1;
                    test.panel.eval(values.data());
                    paged = false;  // the window is hidden, so the lamps wait for the next page
            }
            const int from = page * rows, to = std::min(from + rows, int(values.size()));
            ASSERT_EQ(test.panel.page, page) << step;
            ASSERT_EQ(shown_names(test.panel), numbers(from, to)) << step;
            ASSERT_EQ(lamps_on(test.panel), to - from) << step;
            for (int k = from; k < to && paged; ++k) {
                const Fl_Color wanted = values[k] == 0 ? yellow : values[k] == 1 ? blue : red;
                ASSERT_EQ(test.panel.lamps[k - from]->color(), wanted) << step;
            }
        }
    }
}

// ---------------------------------------------------------------- too low, too high

TEST(OutputPanelWithoutRows, ShowsNothingAndPagesNowhere) {
    for (const int height : {100, 85, 70, 69, 53, 0, -1, -1000, INT_MIN}) {
        hidden_panel test(height);
        test.panel.next_page();
        EXPECT_EQ(test.panel.page, 0) << height;
        add_outputs(test.panel, 5);
        int values[] = {0, 1, 2, 3, 4};
        test.panel.eval(values);
        test.panel.next_page();
        test.panel.internal_colorise(0);
        EXPECT_EQ(test.panel.page, 0) << height;
        EXPECT_EQ(test.panel.browser->size(), 0) << height;
        EXPECT_EQ(test.panel.count, 5) << height;
        EXPECT_EQ(std::vector<int>(test.panel.value_array, test.panel.value_array + 5),
                  (std::vector{0, 1, 2, 3, 4}));
        test.panel.previous_page();
        EXPECT_EQ(test.panel.page, 0) << height;
    }
}

TEST(OutputPanelWithoutRows, MayBeShown) {
    for (const int height : {100, 60, 0, -20}) {
        OFD_simulator_output panel(height, "low");
        const std::unique_ptr<Fl_Window> owner(panel.window);
        panel.add("a");
        Fl::check();
        EXPECT_EQ(panel.browser->size(), 0) << height;
    }
}

TEST(OutputPanelBeyondItsTable, UsesTheRowsThatFit) {
    for (const int height : {85 + 16 * 32768, 85 + 16 * 32769, INT_MAX}) {
        hidden_panel test(height);
        EXPECT_EQ(test.panel.rows, 32768) << height;
        EXPECT_EQ(test.window.children(), 4 + 32768) << height;
        EXPECT_EQ(test.panel.lamps[32767]->y(), 34 + 17 * 32767) << height;
        add_outputs(test.panel, 3);
        EXPECT_EQ(test.panel.page, 0) << height;
        EXPECT_EQ(lamps_on(test.panel), 3) << height;
    }
    hidden_panel just_under(85 + 16 * 32767);
    EXPECT_EQ(just_under.panel.rows, 32767);
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

// ---------------------------------------------------------------- eval and colours

TEST_F(real_panel, Shows0In1InAndAnyOtherValueInThreeColours) {
    fill(3);
    for (int row = 0; row < 3; ++row)
        EXPECT_TRUE(sees(row, red_seen)) << row << ": " << lamp_seen(row);
    int values[] = {0, 1, 7};
    panel.eval(values);
    EXPECT_TRUE(sees(0, yellow_seen)) << lamp_seen(0);
    EXPECT_TRUE(sees(1, blue_seen)) << lamp_seen(1);
    EXPECT_TRUE(sees(2, red_seen)) << lamp_seen(2);
    int others[] = {-1, INT_MIN, INT_MAX};
    panel.eval(others);
    for (int row = 0; row < 3; ++row)
        EXPECT_TRUE(sees(row, red_seen)) << row << ": " << lamp_seen(row);
}

TEST_F(real_panel, LampsOfRowsWithoutAnOutputAreNotSeen) {
    fill(4);
    ASSERT_TRUE(sees(0, red_seen));
    const std::uint32_t beside = pixel(display, *panel.lamps[1], 2, -3);
    for (int row : {1, 2}) EXPECT_TRUE(sees(row, beside)) << lamp_seen(row);
}

TEST_F(real_panel, BothButtonsReadPlusAndTheLeftOneGoesBack) {
    fill(7);
    int values[] = {0, 0, 0, 1, 1, 1, 0};
    panel.eval(values);
    click(display, *panel.minus_button);
    ASSERT_TRUE(reaches(1));
    EXPECT_TRUE(sees(2, blue_seen)) << lamp_seen(2);
    click(display, *panel.minus_button);
    ASSERT_TRUE(reaches(0));
    EXPECT_TRUE(sees(2, yellow_seen)) << lamp_seen(2);
    click(display, *panel.plus_button);
    ASSERT_TRUE(reaches(1));
    click(display, *panel.plus_button);
    ASSERT_TRUE(reaches(2));
    EXPECT_EQ(shown_names(panel), numbers(6, 7));
    EXPECT_EQ(Fl::readqueue(), nullptr);
    EXPECT_STREQ(panel.plus_button->label(), "+");
    EXPECT_STREQ(panel.minus_button->label(), "+");
}

TEST_F(real_panel, RedrawsOnlyTheLampsWhoseColourChanges) {
    fill(3);
    int values[] = {0, 1, 7};
    panel.eval(values);
    ASSERT_TRUE(sees(0, yellow_seen));
    ASSERT_TRUE(settle([&] { return !panel.window->damage(); }));
    panel.lamps[1]->selection_color(FL_GREEN);
    int next[] = {1, 1, 9};
    panel.eval(next);
    EXPECT_NE(panel.lamps[0]->damage(), 0);
    EXPECT_EQ(panel.lamps[1]->damage(), 0);
    EXPECT_EQ(panel.lamps[2]->damage(), 0);
    EXPECT_EQ(panel.browser->damage(), 0);
    EXPECT_EQ(panel.lamps[0]->color(), blue);
    EXPECT_EQ(panel.lamps[0]->selection_color(), black);
    EXPECT_EQ(panel.lamps[1]->selection_color(), unsigned(FL_GREEN));
    EXPECT_TRUE(sees(0, blue_seen));
}

TEST_F(real_panel, EvalLeavesTheLinesAndTheOtherPages) {
    fill(4);
    const std::string line = "a caller's own line";
    panel.browser->text(1, line.c_str());
    int values[] = {1, 0, 0, 0};
    panel.eval(values);
    EXPECT_EQ(panel.browser->text(1), line);
    EXPECT_EQ(panel.page, 1);
    EXPECT_TRUE(sees(0, yellow_seen));
    values[3] = 1;  // the panel has a copy of its own
    panel.internal_colorise(0);
    EXPECT_EQ(panel.lamps[0]->color(), yellow);
}

TEST_F(real_panel, CheckDoesNothing) {
    fill(4);
    const lines before = shown_names(panel);
    panel.minus_button->do_callback();
    panel.plus_button->do_callback();
    panel.check();
    EXPECT_EQ(shown_names(panel), before);
    EXPECT_EQ(panel.page, 1);
}

TEST(OutputPanelEval, OfAHiddenWindowTakesTheValuesAndColoursLater) {
    hidden_panel test;
    add_outputs(test.panel, 2);
    int values[] = {0, 1};
    test.panel.eval(values);
    EXPECT_EQ(test.panel.value_array[1], 1);
    EXPECT_EQ(test.panel.lamps[0]->color(), red);
    test.window.show();
    test.panel.eval(values);
    EXPECT_EQ(test.panel.lamps[0]->color(), yellow);
    EXPECT_EQ(test.panel.lamps[1]->color(), blue);
}

TEST(OutputPanelInAParent, LightsItsLamps17PixelsApart) {
    screen display;
    Fl_Window parent(700, 150, "parent");
    OFD_simulator_output panel(&parent, 400, 150, "Sorties");
    parent.end();
    add_outputs(panel, 4);
    parent.show();
    ASSERT_TRUE(wait_shown(display, parent));
    int values[] = {0, 1, 0, 1};
    panel.eval(values);
    const Fl_Widget& caption = *parent.child(0);
    for (int row = 0; row < 4; ++row) {
        const std::uint32_t wanted = values[row] ? blue_seen : yellow_seen;
        const auto seen = [&](int down) {  // from the lamp's top; the caption stands at 480, 10
            return pixel(display, caption, 412 - 480, 34 - 10 + 17 * row + down);
        };
        EXPECT_TRUE(settle([&] { return seen(0) == wanted; }, seconds(5)))
            << row << ": " << seen(0);
        EXPECT_EQ(seen(11), wanted) << row;
        EXPECT_NE(seen(-1), wanted) << row;
        EXPECT_NE(seen(12), wanted) << row;
    }
}

TEST(OutputPanelColorise, LeavesARowWithoutAnOutputAlone) {
    hidden_panel test;
    add_outputs(test.panel, 4);
    for (const int row : {-1, 1, 2, 3, 32768, INT_MIN, INT_MAX}) test.panel.internal_colorise(row);
    EXPECT_EQ(test.panel.lamps[0]->color(), red);
    EXPECT_FALSE(test.panel.lamps[1]->visible());
    test.panel.value_array[3] = 1;
    test.panel.internal_colorise(0);
    EXPECT_EQ(test.panel.lamps[0]->color(), blue);
}

TEST(OutputPanelButtons, TakeOtherCallbacks) {
    hidden_panel test;
    add_outputs(test.panel, 7);
    test.panel.my_moins_button()->callback(Fl_Widget::default_callback);
    while (Fl::readqueue()) continue;
    test.panel.my_moins_button()->do_callback();
    EXPECT_EQ(Fl::readqueue(), test.panel.my_moins_button());
    EXPECT_EQ(test.panel.page, 2);
    OFD_simulator_output_callback_moins(nullptr, &test.panel);
    EXPECT_EQ(test.panel.page, 1);
    OFD_simulator_output_callback_plus(nullptr, &test.panel);
    EXPECT_EQ(test.panel.page, 2);
}

// ---------------------------------------------------------------- ends

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
