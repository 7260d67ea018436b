#include "station_view/board_signs.h"

#include <FL/fl_draw.H>

#include <algorithm>

#include "session/keyed_rows.h"
#include "station_view/window_style.h"

namespace {

using window_layout::area;
namespace style = window_style;

constexpr auto pale_blue = static_cast<Fl_Color>(0xDCE8F700),
               pale_red = static_cast<Fl_Color>(0xFBE3E100);

int stroke_of(const area& at) { return std::max(2, at.w / 8); }

void stroke(const area& at, Fl_Color colour) {
    fl_color(colour);
    fl_line_style(FL_SOLID | FL_CAP_ROUND | FL_JOIN_ROUND, stroke_of(at));
}

void disc(const area& at, Fl_Color colour) {
    fl_color(colour);
    fl_pie(at.x, at.y, at.w, at.h, 0, 360);
}

// Two discs: the toolkit's thick arcs are ragged.
void ring(const area& at, Fl_Color colour, Fl_Color inside = style::white) {
    disc(at, colour);
    const int in = stroke_of(at);
    disc({at.x + in, at.y + in, at.w - 2 * in, at.h - 2 * in}, inside);
}

void tick(const area& at, Fl_Color colour) {
    stroke(at, colour);
    const int x[] = {at.x + at.w * 25 / 100, at.x + at.w * 44 / 100, at.x + at.w * 76 / 100};
    const int y[] = {at.y + at.h * 52 / 100, at.y + at.h * 72 / 100, at.y + at.h * 30 / 100};
    fl_line(x[0], y[0], x[1], y[1], x[2], y[2]);
    fl_line_style(0);
}

void cross(const area& at, Fl_Color colour) {
    stroke(at, colour);
    const int in = at.w * 28 / 100;
    fl_line(at.x + in, at.y + in, at.x + at.w - in, at.y + at.h - in);
    fl_line(at.x + in, at.y + at.h - in, at.x + at.w - in, at.y + in);
    fl_line_style(0);
}

void square(const area& at, Fl_Color colour) {
    fl_color(colour);
    fl_rectf(at.x, at.y, at.w, at.h);
}

void arrow(const area& at, Fl_Color colour) {
    fl_color(colour);
    fl_polygon(at.x + at.w / 8, at.y, at.x + at.w, at.y + at.h / 2, at.x + at.w / 8, at.y + at.h);
}

void to_come(const area& at) { ring(at, style::quiet_ink); }
void current(const area& at) { arrow(at, style::blue); }
void overdue(const area& at) {
    arrow(at, style::red);
    fl_color(FL_WHITE);
    fl_rectf(at.x + at.w * 28 / 100, at.y + at.h * 30 / 100, std::max(2, at.w / 6),
             at.h * 42 / 100);
}
void reached(const area& at) {
    disc(at, style::green);
    tick(at, FL_WHITE);
}
// A clock: its hands say why it does not count.
void too_late(const area& at) {
    ring(at, style::ink, style::amber);
    stroke(at, style::ink);
    const int x = at.x + at.w / 2, y = at.y + at.h / 2;
    fl_line(x, at.y + at.h / 4, x, y);
    fl_line(x, y, at.x + at.w * 70 / 100, y);
    fl_line_style(0);
}
void missed(const area& at) {
    square(at, style::red);
    cross(at, FL_WHITE);
}
void kept(const area& at) {
    ring(at, style::green);
    tick(at, style::green);
}
// The sign of what is forbidden, empty.
void not_happened(const area& at) {
    ring(at, style::quiet_ink);
    stroke(at, style::quiet_ink);
    const int in = at.w / 5;
    fl_line(at.x + in, at.y + at.h - in, at.x + at.w - in, at.y + in);
    fl_line_style(0);
}
void happened(const area& at) {
    fl_color(style::red);
    fl_polygon(at.x + at.w / 2, at.y, at.x + at.w, at.y + at.h, at.x, at.y + at.h);
    stroke(at, FL_WHITE);
    const int x = at.x + at.w / 2;
    fl_line(x, at.y + at.h * 40 / 100, x, at.y + at.h * 66 / 100);
    fl_line(x, at.y + at.h * 84 / 100, x, at.y + at.h * 85 / 100);
    fl_line_style(0);
}

// clang-format off
constexpr sign_look looks[] = {
    {board_sign::text,         nullptr,      style::ink,       style::ink,       style::white, false},
    {board_sign::heading,      nullptr,      style::quiet_ink, style::quiet_ink, style::white, true},
    {board_sign::to_come,      to_come,      style::ink,       style::quiet_ink, style::white, false},
    {board_sign::current,      current,      style::ink,       style::blue,      pale_blue,    true},
    {board_sign::overdue,      overdue,      style::ink,       style::red,       pale_red,     true},
    {board_sign::reached,      reached,      style::ink,       style::green,     style::white, false},
    {board_sign::too_late,     too_late,     style::ink,       style::red,       style::white, false},
    {board_sign::missed,       missed,       style::ink,       style::red,       style::white, false},
    {board_sign::kept,         kept,         style::ink,       style::green,     style::white, false},
    {board_sign::not_happened, not_happened, style::ink,       style::quiet_ink, style::white, false},
    {board_sign::happened,     happened,     style::ink,       style::red,       pale_red,     true},
};
// clang-format on
static_assert(one_row_each(looks));

}  // namespace

const sign_look& look_of(board_sign sign) { return row_of(looks, sign); }

void draw_result_sign(const area& at, bool passed) {
    passed ? tick(at, FL_WHITE) : cross(at, FL_WHITE);
}
