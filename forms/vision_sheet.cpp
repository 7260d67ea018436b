#include "forms/vision_sheet.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>

#include <FL/fl_draw.H>

#include "forms/drawing.h"
#include "forms/toolkit_text.h"

namespace {

constexpr double half_turn_degrees = 180;
constexpr double pi = 3.141592653589793;

/// Clips to an active sheet for as long as it lives. It remembers whether it pushed, so that it
/// pops exactly then.
class sheet_clip {
public:
    explicit sheet_clip(const OFL_vision_sheet& sheet)
        : pushed_(sheet.x1 > sheet.x0 && sheet.y1 > sheet.y0) {
        if (pushed_)
            fl_push_clip(sheet.x0, sheet.y0, span(sheet.x0, sheet.x1), span(sheet.y0, sheet.y1));
    }
    ~sheet_clip() {
        if (pushed_) fl_pop_clip();
    }
    sheet_clip(const sheet_clip&) = delete;
    sheet_clip& operator=(const sheet_clip&) = delete;

private:
    static int span(int from, int to) {
        return static_cast<int>(
            std::min<std::int64_t>(std::int64_t{to} - from, std::numeric_limits<int>::max()));
    }
    bool pushed_;
};

struct point {
    int x, y;
};

/// Coordinates are added in 64 bits: no sum of ours overflows, and one beyond int wraps.
int wrapped(std::int64_t coordinate) { return static_cast<int>(coordinate); }

/// Truncated toward zero; held within int, and 0 when not a number.
int truncated(double value) {
    if (std::isnan(value)) return 0;
    return static_cast<int>(std::clamp<double>(value, std::numeric_limits<int>::min(),
                                               std::numeric_limits<int>::max()));
}

/// The point of the break symbol that is a quarter of the way from `near` to `far`.
point break_corner(point near, point far) {
    const std::int64_t x = near.x, y = near.y, to_x = far.x, to_y = far.y;
    return {wrapped((3 * x + to_x + 2 * (y - to_y)) / 4),
            wrapped((3 * y + to_y + 2 * (to_x - x)) / 4)};
}

struct barbs {
    point first, second;
};

/// The ends of the two barbs of an arrow from (ax, ay) to (bx, by). Every product is truncated
/// before it is added.
barbs barb_ends(point from, point head, int barb_px, double angle) {
    const auto along = [=](double a) { return std::int64_t{truncated(barb_px * std::cos(a))}; };
    const auto across = [=](double a) { return std::int64_t{truncated(barb_px * std::sin(a))}; };
    const std::int64_t x = head.x, y = head.y;
    if (from.x == head.x) {
        const int end_y = wrapped(from.y < head.y ? y - along(angle) : y + along(angle));
        return {{wrapped(x - across(angle)), end_y}, {wrapped(x + across(angle)), end_y}};
    }
    const int back = from.x < head.x ? -1 : 1;
    if (from.y == head.y) {
        const int end_x = wrapped(x + back * along(angle));
        return {{end_x, wrapped(y - across(angle))}, {end_x, wrapped(y + across(angle))}};
    }
    const double slope = std::atan((double{1} * head.y - from.y) / (double{1} * head.x - from.x));
    const auto end = [&](double a) {
        return point{wrapped(x + back * along(a)), wrapped(y + back * across(a))};
    };
    return {end(slope - angle), end(slope + angle)};
}

}  // namespace

void OFL_vision_sheet::define(int x, int y, int w, int h, int new_colour) {
    resize(x, y, w, h);
    colour = new_colour;
}

void OFL_vision_sheet::resize(int x, int y, int w, int h) {
    x0 = x;
    y0 = y;
    x1 = wrapped(std::int64_t{x} + w);
    y1 = wrapped(std::int64_t{y} + h);
}

void OFL_vision_sheet::ofl_line(int ax, int ay, int bx, int by, unsigned line_colour) const {
    const sheet_clip clip(*this);
    fl_line(ax, ay, bx, by, line_colour);
}

void OFL_vision_sheet::ofl_dash_line(int ax, int ay, int bx, int by, unsigned line_colour) const {
    const sheet_clip clip(*this);
    fl_color(line_colour);
    fl_line_style(FL_DASH, 0);
    fl_line(ax, ay, bx, by);
    fl_line_style(0);
}

void OFL_vision_sheet::ofl_break_line(int ax, int ay, int bx, int by, unsigned line_colour) const {
    const point first = break_corner({ax, ay}, {bx, by});
    const point second = break_corner({bx, by}, {ax, ay});
    const sheet_clip clip(*this);
    fl_color(line_colour);
    fl_line(ax, ay, first.x, first.y);
    fl_line(first.x, first.y, second.x, second.y);
    fl_line(second.x, second.y, bx, by);
}

void OFL_vision_sheet::ofl_rect(int x, int y, int w, int h, unsigned line_colour) const {
    const sheet_clip clip(*this);
    fl_color(line_colour);
    fl_rect(x, y, w, h);
}

void OFL_vision_sheet::ofl_rectf(int x, int y, int w, int h, unsigned fill_colour) const {
    const sheet_clip clip(*this);
    fl_color(fill_colour);
    fl_rectf(x, y, w, h);
}

void OFL_vision_sheet::ofl_rectbound(int x, int y, int w, int h, unsigned fill_colour) const {
    const sheet_clip clip(*this);
    fl_rectbound(x, y, w, h, fill_colour);
}

void OFL_vision_sheet::ofl_circ(int x, int y, int r, unsigned line_colour) const {
    const sheet_clip clip(*this);
    fl_color(line_colour);
    fl_arc(x, y, r, r, 0, 360);
}

void OFL_vision_sheet::ofl_circf(int x, int y, int r, unsigned fill_colour) const {
    const sheet_clip clip(*this);
    fl_circf(x, y, r, fill_colour);
}

void OFL_vision_sheet::ofl_circbound(int x, int y, int r, unsigned fill_colour) const {
    const sheet_clip clip(*this);
    fl_circf(x, y, r, fill_colour);
    fl_color(FL_BLACK);
    fl_arc(x, y, r, r, 0, 360);
}

void OFL_vision_sheet::ofl_arrowbound(int ax, int ay, int bx, int by, unsigned fill_colour) const {
    const double dx = double{1} * bx - ax, dy = double{1} * by - ay;
    const int side = truncated(2 * std::sqrt(dx * dx + dy * dy));
    const float angle = static_cast<float>(std::atan2(dy, dx) * half_turn_degrees / pi);
    const sheet_clip clip(*this);
    fl_color(fill_colour);
    fl_pie(bx, by, side, side, 160 - angle, 200 - angle);
    fl_color(FL_BLACK);
}

void OFL_vision_sheet::ofl_drw_arrow_line(int ax, int ay, int bx, int by, int barb_px,
                                          double barb_angle, unsigned line_colour) const {
    const auto [first, second] = barb_ends({ax, ay}, {bx, by}, barb_px, barb_angle);
    const sheet_clip clip(*this);
    fl_color(line_colour);
    fl_line(first.x, first.y, bx, by);
    fl_line(second.x, second.y, bx, by);
    fl_line(ax, ay, bx, by);
}

void OFL_vision_sheet::ofl_drw_text(unsigned align, int x, int y, int w, int h,
                                    unsigned text_colour, int size, int font,
                                    const char* text) const {
    const sheet_clip clip(*this);
    fl_font(font, size);
    fl_color(text_colour);
    fl_draw(text, x, y, w, h, align);
}

void OFL_vision_sheet::ofl_drw_String(unsigned align, int x, int y, int w, int h,
                                      unsigned text_colour, int font, int size,
                                      const std::string& text) const {
    ofl_drw_text(align, x, y, w, h, text_colour, size, font, toolkit_text(text));
}
