// Before the toolkit's headers, which bring the X server's macros.
#include <gtest/gtest.h>

#include "forms/drawing.h"

#include <cmath>
#include <functional>
#include <limits>
#include <random>

#include "tests/forms/recording_surface.h"

namespace {

struct drawing_case {
    const char* what;
    std::function<void()> draw;
    call_list calls;
};

void expect_calls(const std::vector<drawing_case>& cases) {
    for (const auto& [what, draw, calls] : cases) EXPECT_EQ(calls_of(draw), calls) << what;
}

// Every argument in every form: literals, and variables and constants of both types.
int i1 = 1, i2 = 2, i30 = 30, i40 = 40, i88 = 88;
unsigned u1 = 1, u2 = 2, u30 = 30, u40 = 40, u88 = 88;
const int c1 = 1, c88 = 88;
const unsigned k1 = 1, k88 = 88;

TEST(Ovalf, FillsTheWholeTurnInItsBox) {
    const call_list calls = {"color 88", "pie 1 2 30 40 0 360"};
    expect_calls({
        {"literals", [] { fl_ovalf(1, 2, 30, 40, 88); }, calls},
        {"unsigned literals", [] { fl_ovalf(1u, 2u, 30u, 40u, 88u); }, calls},
        {"int", [] { fl_ovalf(i1, i2, i30, i40, i88); }, calls},
        {"unsigned", [] { fl_ovalf(u1, u2, u30, u40, u88); }, calls},
        {"int places, unsigned colour", [] { fl_ovalf(i1, i2, i30, i40, u88); }, calls},
        {"unsigned places, int colour", [] { fl_ovalf(u1, u2, u30, u40, i88); }, calls},
        {"int constants", [] { fl_ovalf(c1, 2, 30, 40, c88); }, calls},
        {"unsigned constants", [] { fl_ovalf(k1, 2, 30, 40, k88); }, calls},
        {"a named colour", [] { fl_ovalf(1, i2, 30, u40, FL_RED); }, calls},
    });
}

TEST(Circf, TakesTheCornerAndTheSideOfTheSquareAround) {
    const call_list calls = {"color 88", "pie 1 2 30 30 0 360"};
    expect_calls({
        {"literals", [] { fl_circf(1, 2, 30, 88); }, calls},
        {"unsigned literals", [] { fl_circf(1u, 2u, 30u, 88u); }, calls},
        {"int", [] { fl_circf(i1, i2, i30, i88); }, calls},
        {"unsigned", [] { fl_circf(u1, u2, u30, u88); }, calls},
        {"int places, unsigned colour", [] { fl_circf(i1, i2, i30, u88); }, calls},
        {"unsigned places, int colour", [] { fl_circf(u1, u2, u30, i88); }, calls},
        {"constants", [] { fl_circf(c1, 2, 30, k88); }, calls},
        {"a named colour", [] { fl_circf(1, 2, 30, FL_RED); }, calls},
        {"the square from 10 to 30",
         [] { fl_circf(10, 10, 20, 3); },
         {"color 3", "pie 10 10 20 20 0 360"}},
    });
}

TEST(Rectbound, FillsThenOutlinesInBlack) {
    const call_list calls = {"color 88", "rectf 1 2 30 40", "color 56", "rect 1 2 30 40"};
    expect_calls({
        {"literals", [] { fl_rectbound(1, 2, 30, 40, 88); }, calls},
        {"unsigned literals", [] { fl_rectbound(1u, 2u, 30u, 40u, 88u); }, calls},
        {"int", [] { fl_rectbound(i1, i2, i30, i40, i88); }, calls},
        {"unsigned", [] { fl_rectbound(u1, u2, u30, u40, u88); }, calls},
        {"int places, unsigned colour", [] { fl_rectbound(i1, i2, i30, i40, u88); }, calls},
        {"unsigned places, int colour", [] { fl_rectbound(u1, u2, u30, u40, i88); }, calls},
        {"constants", [] { fl_rectbound(c1, 2, 30, 40, k88); }, calls},
        {"a named colour", [] { fl_rectbound(1, i2, u30, 40, FL_RED); }, calls},
    });
}

TEST(Line, TakesItsColourAfterItsEnds) {
    const call_list calls = {"color 88", "line 1 2 30 40"};
    expect_calls({
        {"literals", [] { fl_line(1, 2, 30, 40, 88); }, calls},
        {"unsigned literals", [] { fl_line(1u, 2u, 30u, 40u, 88u); }, calls},
        {"int", [] { fl_line(i1, i2, i30, i40, i88); }, calls},
        {"unsigned", [] { fl_line(u1, u2, u30, u40, u88); }, calls},
        {"int places, unsigned colour", [] { fl_line(i1, i2, i30, i40, u88); }, calls},
        {"unsigned places, int colour", [] { fl_line(u1, u2, u30, u40, i88); }, calls},
        {"constants", [] { fl_line(c1, 2, 30, 40, k88); }, calls},
        {"a named colour", [] { fl_line(1, i2, u30, 40, FL_RED); }, calls},
    });
}

TEST(Line, LeavesTheToolkitsOwnLinesAlone) {
    expect_calls({
        {"four", [] { fl_line(1, 2, 30, 40); }, {"line 1 2 30 40"}},
        {"six", [] { fl_line(1, 2, 30, 40, 50, 60); }, {"line 1 2 30 40 50 60"}},
    });
}

TEST(Drawing, PassesAnyColourAndAnyPlaceAsItStands) {
    expect_calls({
        {"a mixed colour",
         [] { fl_ovalf(-5, -6, 0, -1, 0x12345600u); },
         {"color 305419776", "pie -5 -6 0 -1 0 360"}},
        {"a negative colour",
         [] { fl_circf(0, 0, 1, -1); },
         {"color 4294967295", "pie 0 0 1 1 0 360"}},
    });
}

struct segment_case {
    double px, py, x1, y1, x2, y2, tolerance;
    int found;
};

void PrintTo(const segment_case& each, std::ostream* out) {
    *out << '(' << each.px << ", " << each.py << ") on (" << each.x1 << ", " << each.y1 << ")-("
         << each.x2 << ", " << each.y2 << ") within " << each.tolerance;
}

constexpr double infinite = std::numeric_limits<double>::infinity();
constexpr double no_number = std::numeric_limits<double>::quiet_NaN();

// clang-format off
const segment_case segments[] = {
    // Horizontal: the span in x, bounds included, either way round; the distance in y, strictly.
    {5, 0.4, 0, 0, 10, 0, 0.5, 1},   {5, 0.5, 0, 0, 10, 0, 0.5, 0},   {5, -0.4, 0, 0, 10, 0, 0.5, 1},
    {5, -0.5, 0, 0, 10, 0, 0.5, 0},  {11, 0, 0, 0, 10, 0, 0.5, 0},    {-0.1, 0, 0, 0, 10, 0, 0.5, 0},
    {0, 0, 0, 0, 10, 0, 0.5, 1},     {10, 0, 0, 0, 10, 0, 0.5, 1},    {5, 0.4, 10, 0, 0, 0, 0.5, 1},
    {11, 0, 10, 0, 0, 0, 0.5, 0},    {5, 0, 0, 0, 10, 0, 0, 0},       {5, 0, 0, 0, 10, 0, -1, 0},
    // Nearly horizontal still counts as horizontal: y is not confined to the box.
    {5, 0.4, 0, 0, 10, 1e-11, 0.5, 1}, {5, 0.4, 0, 0, 10, 1e-10, 0.5, 1}, {5, 0.4, 0, 0, 10, 2e-10, 0.5, 0},
    // Vertical.
    {0.4, 5, 0, 0, 0, 10, 0.5, 1},   {0.5, 5, 0, 0, 0, 10, 0.5, 0},   {-0.4, 5, 0, 0, 0, 10, 0.5, 1},
    {0, 11, 0, 0, 0, 10, 0.5, 0},    {0, 10, 0, 0, 0, 10, 0.5, 1},    {0, 0, 0, 0, 0, 10, 0.5, 1},
    {0.4, 5, 0, 10, 0, 0, 0.5, 1},   {0, -1, 0, 10, 0, 0, 0.5, 0},    {0.4, 5, 0, 0, 1e-11, 10, 0.5, 1},
    {0.4, 5, 0, 0, 1e-10, 10, 0.5, 1},                                {0.4, 5, 0, 0, 2e-10, 10, 0.5, 0},
    // A point, taken as vertical: its y exactly, its x within the tolerance.
    {3, 4, 3, 4, 3, 4, 0.5, 1},      {3.4, 4, 3, 4, 3, 4, 0.5, 1},    {3.5, 4, 3, 4, 3, 4, 0.5, 0},
    {3, 4.1, 3, 4, 3, 4, 0.5, 0},    {3, 4, 3, 4, 3, 4, 0, 0},
    // Oblique: within the box, bounds included, and strictly nearer than the tolerance to the line.
    {5, 5, 0, 0, 10, 10, 0.5, 1},    {5, 5, 10, 10, 0, 0, 0.5, 1},    {5, 5, 0, 10, 10, 0, 0.5, 1},
    {0, 0, 0, 0, 10, 10, 0.5, 1},    {10, 10, 0, 0, 10, 10, 0.5, 1},  {10.1, 10, 0, 0, 10, 10, 5, 0},
    {10, 10.1, 0, 0, 10, 10, 5, 0},  {-0.1, 0, 0, 0, 10, 10, 5, 0},   {0, -0.1, 0, 0, 10, 10, 5, 0},
    {5, 5, 0, 0, 10, 10, 0, 0},      {6, 2, 0, 0, 6, 8, 5, 1},
    // From (0, 0) to (6, 8) the point (6, 0.5) is (6 * 8 - 0.5 * 6) / 10 = 4.5 away.
    {6, 0.5, 0, 0, 6, 8, 4.5, 0},    {6, 0.5, 0, 0, 6, 8, 4.51, 1},   {6, 0.5, 6, 8, 0, 0, 4.51, 1},
    // What no segment holds.
    {no_number, 0, 0, 0, 10, 10, 5, 0}, {5, no_number, 0, 0, 10, 0, 5, 0}, {5, 5, 0, 0, 10, 10, no_number, 0},
    {infinite, 5, 0, 0, 10, 10, 5, 0},  {5, 5, 0, 0, 10, 10, infinite, 1},
};
// clang-format on

TEST(PointDansSegment, WantsTheSpanAndLessThanTheTolerance) {
    for (const segment_case& each : segments) {
        const auto& [px, py, x1, y1, x2, y2, tolerance, found] = each;
        EXPECT_EQ(point_dans_segment(px, py, x1, y1, x2, y2, tolerance), found)
            << testing::PrintToString(each);
    }
}

TEST(PointDansSegment, FindsWhatIsBuiltOnTheSegmentAndNothingFurtherAway) {
    std::mt19937 random(6);
    std::uniform_real_distribution<double> place(-1000, 1000), part(0.2, 0.8), off(0, 0.1);
    for (int i = 0; i < 2000; ++i) {
        const double x1 = place(random), y1 = place(random), x2 = place(random), y2 = place(random);
        const double length = std::hypot(x2 - x1, y2 - y1), t = part(random);
        // Far enough from a level segment for a step aside to stay within the box.
        if (std::fabs(x2 - x1) < 1 || std::fabs(y2 - y1) < 1) continue;
        const double aside = off(random);
        const double px = x1 + t * (x2 - x1) - aside * (y2 - y1) / length;
        const double py = y1 + t * (y2 - y1) + aside * (x2 - x1) / length;
        EXPECT_EQ(point_dans_segment(px, py, x1, y1, x2, y2, aside + 1e-6), 1) << i;
        EXPECT_EQ(point_dans_segment(px, py, x1, y1, x2, y2, aside - 1e-6), 0) << i;
        EXPECT_EQ(point_dans_segment(px, py, x2, y2, x1, y1, aside + 1e-6), 1) << i;
        EXPECT_EQ(point_dans_segment(py, px, y1, x1, y2, x2, aside + 1e-6), 1) << i;
        const double beyond_x = x2 + 0.01 * (x2 - x1), beyond_y = y2 + 0.01 * (y2 - y1);
        EXPECT_EQ(point_dans_segment(beyond_x, beyond_y, x1, y1, x2, y2, 1e6), 0) << i;
    }
}

}  // namespace
