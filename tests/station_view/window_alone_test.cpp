// The drawing alone in the window, and the way back.
#include <gtest/gtest.h>

#include "tests/station_view/window_on_display.h"

namespace {

namespace layout = window_layout;

TEST_F(WindowOnDisplay, TheDrawingTakesTheWholeWindowAndGivesItBack) {
    start({"--paused"});
    const auto columns = [this] {
        return std::pair(pixels(layout::good, 2), pixels(layout::faults, 9));
    };
    const auto beside = columns();
    const auto is_beside = [&] { return columns() == beside; };
    for (const bool by_key : {true, false}) {
        by_key ? display.key(XK_g) : click(layout::drawing_alone);
        EXPECT_TRUE(wait_until([&] { return !is_beside(); })) << by_key;
        display.key(by_key ? XK_F11 : XK_g);
        EXPECT_TRUE(wait_until(is_beside)) << by_key;
    }
    click(layout::drawing_alone);
    ASSERT_TRUE(wait_until([&] { return !is_beside(); }));
    click(layout::drawing_alone_arranged(layout::width, layout::height).back);
    EXPECT_TRUE(wait_until(is_beside)) << "by the mouse alone";
    display.key(XK_space);
    EXPECT_TRUE(wait_until([&] { return !is_beside(); })) << "the space bar is that button's";
    EXPECT_EQ(live->told("pannes"), "");
    display.key(XK_space);
    EXPECT_TRUE(wait_until(is_beside));
    click(layout::pause);
    EXPECT_TRUE(told_becomes("etat", "marche")) << "the buttons work again";
    end();
}

}  // namespace
