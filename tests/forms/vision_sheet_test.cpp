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
#include "tests/forms/recording_surface.h"

namespace {

using sheet_drawing = std::function<void(OFL_vision_sheet&)>;

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

/// Every primitive, all its whole numbers being `one` and `nine`.
template <typename one_type, typename nine_type>
void draw_all(const OFL_vision_sheet& sheet, one_type& one, nine_type& nine) {
    sheet.ofl_line(one, one, nine, nine, nine);
    sheet.ofl_dash_line(one, one, nine, nine, nine);
    sheet.ofl_break_line(one, one, nine, nine, nine);
    sheet.ofl_rect(one, one, nine, nine, nine);
    sheet.ofl_rectf(one, one, nine, nine, nine);
    sheet.ofl_rectbound(one, one, nine, nine, nine);
    sheet.ofl_circ(one, one, nine, nine);
    sheet.ofl_circf(one, one, nine, nine);
    sheet.ofl_circbound(one, one, nine, nine);
    sheet.ofl_arrowbound(one, one, nine, nine, nine);
    sheet.ofl_drw_arrow_line(one, one, nine, nine, nine, 0.5, nine);
    sheet.ofl_drw_text(one, one, one, nine, nine, nine, nine, one, "a");
    sheet.ofl_drw_String(one, one, one, nine, nine, nine, one, nine, "a");
}

TEST(VisionSheet, TakesLiteralsAndVariablesOfBothTypesInEveryPlace) {
    int i1 = 1, i9 = 9;
    unsigned u1 = 1, u9 = 9;
    const int c1 = 1, c9 = 9;
    const unsigned k1 = 1, k9 = 9;
    OFL_vision_sheet sheet;
    sheet.define(1, 1, 9, 9, 9);
    sheet.define(1u, 1u, 9u, 9u, 9u);
    sheet.define(u1, u1, u9, u9, u9);
    sheet.define(i1, i1, i9, i9, i9);
    sheet.resize(1, 1u, 9, 9u);
    sheet.resize(u1, i1, u9, i9);
    const call_list wanted = calls_of([&] { draw_all(sheet, i1, i9); });
    ASSERT_EQ(std::ranges::count(wanted, "push_clip 1 1 9 9"), 13);
    EXPECT_EQ(calls_of([&] { draw_all(sheet, u1, u9); }), wanted);
    EXPECT_EQ(calls_of([&] { draw_all(sheet, i1, u9); }), wanted);
    EXPECT_EQ(calls_of([&] { draw_all(sheet, u1, i9); }), wanted);
    EXPECT_EQ(calls_of([&] { draw_all(sheet, c1, c9); }), wanted);
    EXPECT_EQ(calls_of([&] { draw_all(sheet, k1, k9); }), wanted);
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
