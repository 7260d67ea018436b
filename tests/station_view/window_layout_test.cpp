// Where the window opens, and where its parts are at each size.
#include <gtest/gtest.h>

#include <vector>

#include "station_view/station_picture.h"
#include "station_view/window_place.h"

namespace {

using window_layout::area;
using window_layout::side_part;

bool overlap(const area& a, const area& b) {
    return a.x < b.x + b.w && b.x < a.x + a.w && a.y < b.y + b.h && b.y < a.y + a.h;
}

/// With a title bar of `bar` above it.
area title_bar_of(const area& window, int bar) { return {window.x, window.y - bar, window.w, bar}; }

area panel_on(const area& screen) {
    return {screen.x + (screen.w - 1120) / 2, screen.y + (screen.h - 190) / 2, 1120, 190};
}

TEST(WindowPlace, NeitherWindowCoversTheOthersTitleBar) {
    constexpr int bar = 28;
    const area screens[] = {{0, 0, 1920, 1080},  {0, 0, 1366, 768},  {0, 0, 1280, 1024},
                            {0, 0, 1024, 768},   {0, 0, 800, 600},   {0, 0, 2560, 1440},
                            {0, 27, 1920, 1053}, {0, 0, 3840, 2160}, {0, 0, 1280, 720}};
    for (const area& screen : screens) {
        const area mine = window_place::beside_panel(screen), panel = panel_on(screen);
        EXPECT_FALSE(overlap(mine, title_bar_of(panel, bar))) << screen.w << "x" << screen.h;
        EXPECT_FALSE(overlap(panel, title_bar_of(mine, bar))) << screen.w << "x" << screen.h;
        EXPECT_GE(mine.y, screen.y + bar) << "its own can be taken hold of";
        EXPECT_LT(mine.y, screen.y + screen.h) << screen.w << "x" << screen.h;
    }
}

TEST(WindowPlace, BothAreWholeOnAScreenOf1920By1080) {
    const area screen = {0, 0, 1920, 1080}, mine = window_place::beside_panel(screen);
    EXPECT_FALSE(overlap(mine, panel_on(screen)));
    EXPECT_GE(mine.x, 0);
    EXPECT_LE(mine.x + mine.w, 1920);
    EXPECT_LE(mine.y + mine.h, 1080);
    EXPECT_GE(window_layout::picture.h - (window_layout::height - mine.h), 300)
        << "the drawing has room for its texts";
}

void expect_apart_in(const area& window, const std::vector<area>& parts) {
    for (const area& part : parts) {
        EXPECT_GE(part.x, 0) << window.w << "x" << window.h;
        EXPECT_GT(part.w, 0) << window.w << "x" << window.h;
        EXPECT_GT(part.h, 0) << window.w << "x" << window.h;
        EXPECT_LE(part.x + part.w, window.w) << window.w << "x" << window.h;
        EXPECT_LE(part.y + part.h, window.h) << window.w << "x" << window.h;
        for (const area& other : parts) {
            EXPECT_TRUE(&other == &part || !overlap(part, other)) << window.w << "x" << window.h;
        }
    }
}

TEST(WindowLayout, PartsFillTheWindowAndTouchEachOtherOnly) {
    const area windows[] = {{0, 0, 1000, 240},  {0, 0, 1000, 300},  {0, 0, 1000, 639},
                            {0, 0, 1299, 380},  {0, 0, 1300, 240},  {0, 0, 1366, 244},
                            {0, 0, 1718, 380},  {0, 0, 1718, 639},  {0, 0, 1718, 640},
                            {0, 0, 1366, 720},  {0, 0, 1920, 1046}, {0, 0, 1000, 1000},
                            {0, 0, 3840, 2120}, {0, 0, 3840, 300}};
    for (const area& window : windows) {
        for (const side_part side : {side_part::faults, side_part::exercise}) {
            const auto now = window_layout::arranged(window.w, window.h, side);
            expect_apart_in(window, {now.picture, now.incidents, now.middle});
            expect_apart_in(window, {now.picture, now.incidents, now.faults});
            EXPECT_EQ(overlap(now.middle, now.faults), now.one_column);
            EXPECT_EQ(now.faults.y + now.faults.h, window.h) << "the last part goes to the edge";
        }
        const auto [whole, below, back] = window_layout::drawing_alone_arranged(window.w, window.h);
        expect_apart_in(window, {whole, below, back});
        EXPECT_GE(whole.w, window.w - 12) << "the drawing goes from edge to edge";
    }
}

TEST(WindowLayout, DeskAndFaultsShareAColumnWhereTheWindowIsLowAndNarrow) {
    const struct {
        int w, h;
        bool one_column;
    } cases[] = {{1000, 240, true},  {1000, 639, true},  {1300, 380, true},  {1366, 380, true},
                 {1599, 380, true},  {1366, 300, true},  {1366, 244, false}, {1300, 240, false},
                 {1250, 240, true},  {1000, 640, false}, {1600, 380, false}, {1718, 380, false},
                 {1599, 244, false}, {3840, 300, false}};
    for (const auto& [w, h, one_column] : cases) {
        const auto now = window_layout::arranged(w, h);
        EXPECT_EQ(now.one_column, one_column) << w << "x" << h;
        if (one_column) {
            EXPECT_EQ(now.middle.x, now.faults.x) << w << "x" << h;
            EXPECT_EQ(now.middle.w, now.faults.w) << w << "x" << h;
            EXPECT_GE(now.faults.w, window_layout::width - window_layout::faults_title.x)
                << "the list is whole";
        }
        EXPECT_FALSE(window_layout::arranged(w, h, side_part::exercise).one_column)
            << "an exercise is always seen: " << w << "x" << h;
    }
}

TEST(WindowLayout, AtTheSizeInWhichItOpensAllIsAtItsPlace) {
    const auto same = [](const area& one, const area& other) {
        return one.x == other.x && one.y == other.y && one.w == other.w && one.h == other.h;
    };
    const auto now = window_layout::arranged(window_layout::width, window_layout::height);
    EXPECT_TRUE(same(now.picture, window_layout::picture));
    EXPECT_TRUE(same(now.incidents, window_layout::incidents));
    EXPECT_TRUE(same(now.middle, {1072, 0, 306, 380}));
    EXPECT_TRUE(same(now.faults, {1378, 0, 340, 380}));
}

TEST(WindowLayout, IncidentsHaveMoreRoomInAHighWindow) {
    EXPECT_EQ(window_layout::arranged(1718, 380).incidents.h, 60);
    EXPECT_GE(window_layout::arranged(1920, 1046).incidents.h, 90);
    EXPECT_GE(window_layout::drawing_alone_arranged(1920, 1046).incidents.h, 90);
    EXPECT_GE(window_layout::arranged(3840, 2120).incidents.h, 160);
}

TEST(WindowLayout, IncidentsGiveWayInALowWindowAndGrowWithItsHeight) {
    constexpr int line = 15, edges = 2;
    for (const int w : {1000, 1366, 1718}) {
        for (const int h : {240, 244, 300, 339}) {
            const int now = window_layout::arranged(w, h).incidents.h;
            EXPECT_GE(now, 2 * line + edges) << h;
            EXPECT_LT(now, 3 * line) << h;
            EXPECT_EQ(window_layout::drawing_alone_arranged(w, h).incidents.h, now) << h;
        }
        for (int h = 241; h <= 700; ++h) {
            const auto before = window_layout::arranged(w, h - 1),
                       now = window_layout::arranged(w, h);
            EXPECT_GE(now.incidents.h, before.incidents.h) << h;
            EXPECT_LE(now.incidents.h, before.incidents.h + 1) << h;
            EXPECT_GE(now.picture.h, before.picture.h) << h;
        }
    }
}

TEST(WindowLayout, NamesAreLegibleOnAProjector) {
    const auto name_px = [](const area& at) { return draw_station({}, at.w, at.h).name_px; };
    // Maximised on a projector of 1920 x 1080, below a title bar and above a task bar.
    EXPECT_GE(name_px(window_layout::arranged(1920, 1000).picture), 14);
    EXPECT_GE(name_px(window_layout::arranged(1920, 1000, side_part::exercise).picture), 14);
    const auto alone = [](int w, int h) {
        return window_layout::drawing_alone_arranged(w, h).picture;
    };
    EXPECT_GE(name_px(alone(1920, 1000)), 18);
    EXPECT_GE(name_px(alone(1000, 380)), 9) << "in the smallest window";
}

TEST(WindowLayout, NamesCanBeReadInSmallWindows) {
    const struct {
        int w, h, px;
    } cases[] = {{1000, 240, 6}, {1000, 300, 6}, {1016, 244, 6},  {1280, 300, 8}, {1280, 380, 9},
                 {1358, 244, 6}, {1366, 300, 8}, {1366, 380, 10}, {1718, 380, 10}};
    for (const auto& [w, h, px] : cases) {
        const area picture = window_layout::arranged(w, h).picture;
        EXPECT_EQ(draw_station({}, picture.w, picture.h).name_px, px) << w << "x" << h;
    }
}

TEST(WindowLayout, AWiderWindowHasNoSmallerNames) {
    const auto name_px = [](int w, int h) {
        const area picture = window_layout::arranged(w, h).picture;
        return draw_station({}, picture.w, picture.h).name_px;
    };
    for (const int h : {240, 244, 300, 340, 380}) {
        for (int w = 1010; w <= 2000; w += 10)
            EXPECT_GE(name_px(w, h), name_px(w - 10, h) - 1) << w << "x" << h;
    }
}

}  // namespace
