// The outputs of the panel, page by page.
#include "tests/simulator/output_panel_fixture.h"

#include <algorithm>
#include <climits>
#include <random>
#include <vector>

namespace {

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

}  // namespace
