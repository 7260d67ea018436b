// Before the toolkit's headers, which bring the X server's macros.
#include <gtest/gtest.h>

#include "forms/vision_sheet.h"

#include <algorithm>
#include <array>
#include <climits>
#include <cmath>
#include <cstring>
#include <functional>
#include <random>

#include "forms/drawing.h"
#include "recording_surface.h"

namespace {

using sheet_drawing = std::function<void(OFL_vision_sheet&)>;

std::string line_call(int ax, int ay, int bx, int by) {
    std::ostringstream call;
    call << "line " << ax << ' ' << ay << ' ' << bx << ' ' << by;
    return call.str();
}

call_list drawn_by(OFL_vision_sheet& sheet, const sheet_drawing& draw) {
    return calls_of([&] { draw(sheet); });
}

struct primitive {
    const char* what;
    sheet_drawing draw;
    call_list calls;
};

const std::string text_of_literals = "RENT";

// Each primitive, and its calls between the push and the pop of the clip.
// clang-format off
const primitive primitives[] = {
    {"line", [](auto& s) { s.ofl_line(1, 2, 30, 40, 88); }, {"color 88", "line 1 2 30 40"}},
    {"dash line", [](auto& s) { s.ofl_dash_line(1, 2, 30, 40, 88); },
     {"color 88", "line_style 1 0 plain", "line 1 2 30 40", "line_style 0 0 plain"}},
    {"break line", [](auto& s) { s.ofl_break_line(0, 0, 8, 0, 88); },
     {"color 88", "line 0 0 2 4", "line 2 4 6 -4", "line 6 -4 8 0"}},
    {"rect", [](auto& s) { s.ofl_rect(1, 2, 30, 40, 88); }, {"color 88", "rect 1 2 30 40"}},
    {"rectf", [](auto& s) { s.ofl_rectf(1, 2, 30, 40, 88); }, {"color 88", "rectf 1 2 30 40"}},
    {"rectbound", [](auto& s) { s.ofl_rectbound(1, 2, 30, 40, 88); },
     {"color 88", "rectf 1 2 30 40", "color 56", "rect 1 2 30 40"}},
    {"circ", [](auto& s) { s.ofl_circ(1, 2, 30, 88); }, {"color 88", "arc 1 2 30 30 0 360"}},
    {"circf", [](auto& s) { s.ofl_circf(1, 2, 30, 88); }, {"color 88", "pie 1 2 30 30 0 360"}},
    {"circbound", [](auto& s) { s.ofl_circbound(1, 2, 30, 88); },
     {"color 88", "pie 1 2 30 30 0 360", "color 56", "arc 1 2 30 30 0 360"}},
    {"arrowbound", [](auto& s) { s.ofl_arrowbound(0, 0, 10, 0, 88); },
     {"color 88", "pie 10 0 20 20 160 200", "color 56"}},
    {"text", [](auto& s) { s.ofl_drw_text(FL_ALIGN_CENTER, 10, 20, 100, 30, 88, 14, 4, "RENT"); },
     {"font 4 14", "color 88", "draw 46 38 RENT"}},
    {"String", [](auto& s) { s.ofl_drw_String(FL_ALIGN_CENTER, 10, 20, 100, 30, 88, 4, 14, text_of_literals); },
     {"font 4 14", "color 88", "draw 46 38 RENT"}},
    {"arrow line", [](auto& s) { s.ofl_drw_arrow_line(0, 0, 10, 0, 4, 0.5, 88); },
     {"color 88", "line 7 -1 10 0", "line 7 1 10 0", "line 0 0 10 0"}},
};
// clang-format on

TEST(VisionSheet, StartsInactiveAndBlack) {
    const OFL_vision_sheet sheet;
    EXPECT_EQ(sheet.x0, 0);
    EXPECT_EQ(sheet.y0, 0);
    EXPECT_EQ(sheet.x1, 0);
    EXPECT_EQ(sheet.y1, 0);
    EXPECT_EQ(sheet.colour, 56);
}

TEST(VisionSheet, HoldsItsFieldsInOrder) {
    OFL_vision_sheet sheet;
    sheet.define(1, 2, 30, 40, 5);
    std::array<int, 5> words;
    static_assert(sizeof words == sizeof sheet);
    std::memcpy(words.data(), &sheet, sizeof words);
    EXPECT_EQ(words, (std::array<int, 5>{1, 2, 31, 42, 5}));
}

TEST(VisionSheet, ResizeKeepsTheColour) {
    OFL_vision_sheet sheet;
    sheet.define(1, 2, 30, 40, FL_RED);
    sheet.resize(-5, -6, 7, 8);
    EXPECT_EQ(sheet.x0, -5);
    EXPECT_EQ(sheet.y0, -6);
    EXPECT_EQ(sheet.x1, 2);
    EXPECT_EQ(sheet.y1, 2);
    EXPECT_EQ(sheet.colour, 88);
}

TEST(VisionSheet, ClipsEachPrimitiveOnceWhenActive) {
    OFL_vision_sheet sheet;
    sheet.define(5, 6, 100, 80, 1);
    for (const auto& [what, draw, calls] : primitives) {
        call_list clipped = calls;
        clipped.insert(clipped.begin(), "push_clip 5 6 100 80");
        clipped.push_back("pop_clip");
        EXPECT_EQ(drawn_by(sheet, draw), clipped) << what;
    }
}

TEST(VisionSheet, NeverClipsWhenInactive) {
    const struct {
        int x, y, w, h;
    } places[] = {{0, 0, 0, 0},   {5, 6, 0, 80},   {5, 6, 100, 0},
                  {5, 6, -1, 80}, {5, 6, 100, -1}, {5, 6, -3, -3}};
    for (const auto& [x, y, w, h] : places) {
        OFL_vision_sheet sheet;
        sheet.define(x, y, w, h, 1);
        for (const auto& [what, draw, calls] : primitives) {
            EXPECT_EQ(drawn_by(sheet, draw), calls) << what << " in " << w << " x " << h;
        }
    }
}

TEST(VisionSheet, ClipsAsSoonAsOnePixelWide) {
    OFL_vision_sheet sheet;
    sheet.define(0, 0, 1, 1, 1);
    EXPECT_EQ(drawn_by(sheet, [](auto& s) { s.ofl_rect(0, 0, 9, 9, 3); }),
              (call_list{"push_clip 0 0 1 1", "color 3", "rect 0 0 9 9", "pop_clip"}));
}

TEST(VisionSheet, TakesVariablesOfBothTypesInEveryPlace) {
    int i1 = 1, i9 = 9;
    unsigned u1 = 1, u9 = 9;
    OFL_vision_sheet sheet;
    sheet.define(u1, u1, u9, u9, u9);
    sheet.define(i1, i1, i9, i9, i9);
    sheet.resize(u1, i1, u9, 9u);
    const call_list line = {"push_clip 1 1 9 9", "color 9", "line 1 1 9 9", "pop_clip"};
    EXPECT_EQ(drawn_by(sheet, [&](auto& s) { s.ofl_line(i1, i1, i9, i9, i9); }), line);
    EXPECT_EQ(drawn_by(sheet, [&](auto& s) { s.ofl_line(u1, u1, u9, u9, u9); }), line);
    const call_list text = {"push_clip 1 1 9 9", "font 9 1", "color 9", "draw 1 9 a", "pop_clip"};
    EXPECT_EQ(drawn_by(sheet,
                       [&](auto& s) {
                           s.ofl_drw_String(FL_ALIGN_LEFT | FL_ALIGN_INSIDE, i1, u1, i9, u9, u9, i9,
                                            i1, "a");
                       }),
              text);
    EXPECT_EQ(drawn_by(sheet,
                       [&](auto& s) {
                           s.ofl_drw_text(FL_ALIGN_LEFT | FL_ALIGN_INSIDE, u1, i1, u9, i9, i9, u1,
                                          u9, "a");
                       }),
              text);
}

TEST(VisionSheet, DrawsTextsAsTheToolkitDoesWithItsSymbols) {
    const std::string texts[] = {"",
                                 "te",
                                 "100 %",
                                 "%s%n",
                                 "@->",
                                 "@@",
                                 "a@->",
                                 "deux\nlignes",
                                 std::string(5000, 'x'),
                                 "d\xC3\xA9pos\xC3\xA9"
                                 "e"};
    for (const std::string& text : texts) {
        for (const unsigned align : {0u, 4u, 20u, 21u, 0x40u, 0x80u | 20u}) {
            const call_list wanted = calls_of([&] {
                fl_font(4, 14);
                fl_color(88);
                fl_draw(text.c_str(), 10, 20, 100, 30, align, nullptr, 1);
            });
            OFL_vision_sheet sheet;
            EXPECT_EQ(drawn_by(sheet,
                               [&](auto& s) {
                                   s.ofl_drw_String(align, 10, 20, 100, 30, 88, 4, 14, text);
                               }),
                      wanted);
            EXPECT_EQ(drawn_by(sheet,
                               [&](auto& s) {
                                   s.ofl_drw_text(align, 10, 20, 100, 30, 88, 14, 4, text.c_str());
                               }),
                      wanted);
        }
    }
    OFL_vision_sheet sheet;
    const call_list arrow =
        drawn_by(sheet, [](auto& s) { s.ofl_drw_text(0, 0, 0, 50, 50, 88, 14, 4, "@->"); });
    EXPECT_NE(std::ranges::find(arrow, "begin_polygon"), arrow.end()) << "a symbol, not its name";
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
    for (const auto& [ax, ay, bx, by, lines] : cases) {
        OFL_vision_sheet sheet;
        call_list calls = drawn_by(sheet, [&](auto& s) { s.ofl_break_line(ax, ay, bx, by, 88); });
        EXPECT_EQ(calls.front(), "color 88");
        calls.erase(calls.begin());
        EXPECT_EQ(calls, lines) << ax << ' ' << ay << ' ' << bx << ' ' << by;
    }
}

TEST(BreakLine, IsTheFormulaEverywhere) {
    std::mt19937 random(62);
    std::uniform_int_distribution<int> place(-5000, 5000);
    OFL_vision_sheet sheet;
    for (int i = 0; i < 2000; ++i) {
        const int x1 = place(random), y1 = place(random), x2 = place(random), y2 = place(random);
        const int a_x = (3 * x1 + x2 + 2 * (y1 - y2)) / 4, a_y = (3 * y1 + y2 + 2 * (x2 - x1)) / 4;
        const int b_x = (x1 + 3 * x2 + 2 * (y2 - y1)) / 4, b_y = (y1 + 3 * y2 + 2 * (x1 - x2)) / 4;
        EXPECT_EQ(drawn_by(sheet, [&](auto& s) { s.ofl_break_line(x1, y1, x2, y2, 7); }),
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
    for (const auto& [ax, ay, bx, by, pie] : cases) {
        OFL_vision_sheet sheet;
        EXPECT_EQ(drawn_by(sheet, [&](auto& s) { s.ofl_arrowbound(ax, ay, bx, by, 88); }),
                  (call_list{"color 88", pie, "color 56"}));
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
        // Oblique, in the four directions: the slope of (30, 40) is 0.927295, of (30, -40) its
        // opposite.
        // 20 cos 0.427295 = 18.21, 20 sin 0.427295 = 8.29; 20 cos 1.427295 = 2.86, 20 sin 1.427295
        // = 19.79
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
        OFL_vision_sheet sheet;
        EXPECT_EQ(
            drawn_by(sheet,
                     [&](auto& s) { s.ofl_drw_arrow_line(ax, ay, bx, by, length, angle, 88); }),
            (call_list{"color 88", line_call(a_x, a_y, bx, by), line_call(b_x, b_y, bx, by),
                       line_call(ax, ay, bx, by)}));
    }
}

TEST(ArrowLine, IsTheFormulaEverywhere) {
    std::mt19937 random(63);
    std::uniform_int_distribution<int> place(-20, 20), size(-50, 50);
    std::uniform_real_distribution<double> turn(-7, 7);
    OFL_vision_sheet sheet;
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
        EXPECT_EQ(
            drawn_by(sheet, [&](auto& s) { s.ofl_drw_arrow_line(x1, y1, x2, y2, len, alpha, 7); }),
            (call_list{"color 7", line_call(a_x, a_y, x2, y2), line_call(b_x, b_y, x2, y2),
                       line_call(x1, y1, x2, y2)}));
    }
}

// Nothing overflows, and the clip stays paired, at the ends of int.
TEST(VisionSheet, EndsSafelyAtTheLimitsOfInt) {
    const int ends[] = {INT_MIN, -1, 0, 1, INT_MAX};
    for (const int a : ends) {
        for (const int b : ends) {
            OFL_vision_sheet sheet;
            sheet.define(a, a, b, b, a);
            for (const double angle : {0.5, HUGE_VAL, std::nan("")}) {
                const call_list calls = drawn_by(sheet, [&](auto& s) {
                    s.ofl_break_line(a, b, b, a, 1);
                    s.ofl_arrowbound(a, b, b, a, 1);
                    s.ofl_drw_arrow_line(a, b, b, a, a, angle, 1);
                    s.ofl_drw_arrow_line(a, b, b, b, b, angle, 1);
                    s.ofl_drw_arrow_line(a, b, a, a, b, angle, 1);
                });
                const auto count = [&](const char* name) {
                    return std::ranges::count_if(
                        calls, [&](const std::string& call) { return call.starts_with(name); });
                };
                const bool active = sheet.x1 > sheet.x0 && sheet.y1 > sheet.y0;
                EXPECT_EQ(count("push_clip"), active ? 5 : 0);
                EXPECT_EQ(count("pop_clip"), active ? 5 : 0);
                EXPECT_EQ(count("line"), 3 * 4);
            }
        }
    }
}

}  // namespace
