// The sheet's shapes that are computed: the break symbol and the two arrows.

// Before the toolkit's headers, which bring the X server's macros.
#include <gtest/gtest.h>

#include "forms/vision_sheet.h"

#include <cmath>
#include <random>

#include "tests/forms/recording_surface.h"

namespace {

const OFL_vision_sheet sheet;  // inactive: nothing but the shape is drawn

std::string line_call(int ax, int ay, int bx, int by) {
    std::ostringstream call;
    call.imbue(std::locale::classic());
    call << "line " << ax << ' ' << ay << ' ' << bx << ' ' << by;
    return call.str();
}

TEST(BreakLine, TruncatesTowardZero) {
    const struct {
        int ax, ay, bx, by;
        call_list lines;
    } cases[] = {
        {0, 0, 8, 0, {"line 0 0 2 4", "line 2 4 6 -4", "line 6 -4 8 0"}},
        {8, 0, 0, 0, {"line 8 0 6 -4", "line 6 -4 2 4", "line 2 4 0 0"}},
        {0, 0, 0, 8, {"line 0 0 -4 2", "line -4 2 4 6", "line 4 6 0 8"}},
        {0, 0, 0, 0, {"line 0 0 0 0", "line 0 0 0 0", "line 0 0 0 0"}},
        // 3/4, 6/4; 9/4, -6/4
        {0, 0, 3, 0, {"line 0 0 0 1", "line 0 1 2 -1", "line 2 -1 3 0"}},
        // -3/4, -6/4; -9/4, 6/4: toward zero on this side too
        {0, 0, -3, 0, {"line 0 0 0 -1", "line 0 -1 -2 1", "line -2 1 -3 0"}},
        // (3 + 6 + 2 * (2 - 9)) / 4, (6 + 9 + 2 * (6 - 1)) / 4; (1 + 18 + 2 * (9 - 2)) / 4, (2 + 27
        // + 2 * (1 - 6)) / 4
        {1, 2, 6, 9, {"line 1 2 -1 6", "line -1 6 8 4", "line 8 4 6 9"}},
    };
    for (const auto& each : cases) {
        call_list calls =
            calls_of([&] { sheet.ofl_break_line(each.ax, each.ay, each.bx, each.by, 88); });
        EXPECT_EQ(calls.front(), "color 88");
        calls.erase(calls.begin());
        EXPECT_EQ(calls, each.lines)
            << each.ax << ' ' << each.ay << ' ' << each.bx << ' ' << each.by;
    }
}

TEST(BreakLine, IsTheFormulaEverywhere) {
    std::mt19937 random(62);
    std::uniform_int_distribution<int> place(-5000, 5000);
    for (int i = 0; i < 2000; ++i) {
        const int x1 = place(random), y1 = place(random), x2 = place(random), y2 = place(random);
        const int a_x = (3 * x1 + x2 + 2 * (y1 - y2)) / 4, a_y = (3 * y1 + y2 + 2 * (x2 - x1)) / 4;
        const int b_x = (x1 + 3 * x2 + 2 * (y2 - y1)) / 4, b_y = (y1 + 3 * y2 + 2 * (x1 - x2)) / 4;
        EXPECT_EQ(calls_of([&] { sheet.ofl_break_line(x1, y1, x2, y2, 7); }),
                  (call_list{"color 7", line_call(x1, y1, a_x, a_y), line_call(a_x, a_y, b_x, b_y),
                             line_call(b_x, b_y, x2, y2)}));
    }
}

TEST(Arrowbound, OpensBackAlongTheSegmentInASquareOfTwiceItsLength) {
    const struct {
        int ax, ay, bx, by;
        const char* pie;
    } cases[] = {
        {0, 0, 10, 0, "pie 10 0 20 20 160 200"},
        {10, 0, 0, 0, "pie 0 0 20 20 -20 20"},
        {0, 0, 0, 10, "pie 0 10 20 20 70 110"},
        {0, 10, 0, 0, "pie 0 0 20 20 250 290"},
        {5, 5, 5, 5, "pie 5 5 0 0 160 200"},
        {0, 0, 3, 4, "pie 3 4 10 10 106.87 146.87"},
        {0, 0, 1, 1, "pie 1 1 2 2 115 155"},  // 2.83, truncated
        // In single precision: in double it would be 51.5651 and 91.5651.
        {0, 0, -1, 3, "pie -1 3 6 6 51.565 91.565"},
        {7, 9, 2, 9, "pie 2 9 10 10 -20 20"},
    };
    for (const auto& each : cases) {
        EXPECT_EQ(calls_of([&] { sheet.ofl_arrowbound(each.ax, each.ay, each.bx, each.by, 88); }),
                  (call_list{"color 88", each.pie, "color 56"}));
    }
}

TEST(ArrowLine, PutsTheBarbsByTheDirectionOfTheShaft) {
    const struct {
        int ax, ay, bx, by, length;
        double angle;
        int a_x, a_y, b_x, b_y;
    } cases[] = {
        // Right and left: 4 cos 0.5 = 3.51, 4 sin 0.5 = 1.92, each truncated.
        {0, 0, 10, 0, 4, 0.5, 7, -1, 7, 1},
        {10, 0, 0, 0, 4, 0.5, 3, -1, 3, 1},
        // Down, up, and a shaft without length, which counts as up.
        {5, 0, 5, 10, 4, 0.5, 4, 7, 6, 7},
        {5, 10, 5, 0, 4, 0.5, 4, 3, 6, 3},
        {5, 5, 5, 5, 4, 0.5, 4, 8, 6, 8},
        // Oblique, in the four directions: the slope of (30, 40) is 0.927295,
        // of (30, -40) its opposite. 20 cos 0.427295 = 18.21, 20 sin 0.427295
        // = 8.29; 20 cos 1.427295 = 2.86, 20 sin 1.427295 = 19.79
        {0, 0, 30, 40, 20, 0.5, 12, 32, 28, 21},
        {30, 40, 0, 0, 20, 0.5, 18, 8, 2, 19},
        // A at the angle -1.427295, B at -0.427295
        {0, 0, 30, -40, 20, 0.5, 28, -21, 12, -32},
        {0, 0, -30, 40, 20, 0.5, -28, 21, -12, 32},
        // The slope is not a whole number's: (3, 1) gives 0.321751; 10 cos 0.178249 = 9.84, 10 sin
        // -0.178249 = -1.77
        // and 10 cos 0.821751 = 6.81, 10 sin 0.821751 = 7.32
        {0, 0, 3, 1, 10, 0.5, -6, 2, -3, -6},
        // A product is truncated before it is added: toward zero, whatever its sign.
        {0, 0, 10, 0, -4, 0.5, 13, 1, 13, -1},
        {0, 0, 10, 0, 0, 0.5, 10, 0, 10, 0},
    };
    for (const auto& [ax, ay, bx, by, length, angle, a_x, a_y, b_x, b_y] : cases) {
        const auto draw = [&, ax = ax, ay = ay, bx = bx, by = by, length = length, angle = angle] {
            sheet.ofl_drw_arrow_line(ax, ay, bx, by, length, angle, 88);
        };
        EXPECT_EQ(calls_of(draw),
                  (call_list{"color 88", line_call(a_x, a_y, bx, by), line_call(b_x, b_y, bx, by),
                             line_call(ax, ay, bx, by)}));
    }
}

TEST(ArrowLine, IsTheFormulaEverywhere) {
    std::mt19937 random(63);
    std::uniform_int_distribution<int> place(-20, 20), size(-50, 50);
    std::uniform_real_distribution<double> turn(-7, 7);
    for (int i = 0; i < 5000; ++i) {
        const int x1 = place(random), y1 = place(random), x2 = place(random), y2 = place(random);
        const int len = size(random);
        const double alpha = turn(random);
        int a_x, a_y, b_x, b_y;
        if (x2 == x1) {
            a_x = x2 - int(len * std::sin(alpha));
            b_x = x2 + int(len * std::sin(alpha));
            a_y = b_y = y1 < y2 ? y2 - int(len * std::cos(alpha)) : y2 + int(len * std::cos(alpha));
        } else if (y2 == y1) {
            a_x = b_x = x1 < x2 ? x2 - int(len * std::cos(alpha)) : x2 + int(len * std::cos(alpha));
            a_y = y2 - int(len * std::sin(alpha));
            b_y = y2 + int(len * std::sin(alpha));
        } else {
            const double theta = std::atan(double(y2 - y1) / double(x2 - x1));
            const int sign = x1 < x2 ? -1 : 1;
            a_x = x2 + sign * int(len * std::cos(theta - alpha));
            a_y = y2 + sign * int(len * std::sin(theta - alpha));
            b_x = x2 + sign * int(len * std::cos(theta + alpha));
            b_y = y2 + sign * int(len * std::sin(theta + alpha));
        }
        EXPECT_EQ(calls_of([&] { sheet.ofl_drw_arrow_line(x1, y1, x2, y2, len, alpha, 7); }),
                  (call_list{"color 7", line_call(a_x, a_y, x2, y2), line_call(b_x, b_y, x2, y2),
                             line_call(x1, y1, x2, y2)}));
    }
}

}  // namespace
