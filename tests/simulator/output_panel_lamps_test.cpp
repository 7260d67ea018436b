// The colours of the lamps.
#include "tests/simulator/output_panel_fixture.h"

#include <climits>

namespace {

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
        EXPECT_TRUE(settle([&] { return seen(0) == wanted; })) << row << ": " << seen(0);
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

}  // namespace
