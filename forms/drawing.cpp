#include "forms/drawing.h"

#include <algorithm>
#include <cmath>

#include <FL/fl_draw.H>

namespace {

constexpr double same_coordinate = 1e-10;

bool differ(double a, double b) { return std::fabs(a - b) > same_coordinate; }

bool between(double value, double a, double b) {
    return std::min(a, b) <= value && value <= std::max(a, b);
}

}  // namespace

void fl_ovalf(int x, int y, int w, int h, unsigned colour) {
    fl_color(colour);
    fl_pie(x, y, w, h, 0, 360);
}

void fl_ovalf(int x, int y, int w, int h, int colour) {
    fl_ovalf(x, y, w, h, static_cast<unsigned>(colour));
}

void fl_circf(int x, int y, int r, unsigned colour) { fl_ovalf(x, y, r, r, colour); }

void fl_circf(int x, int y, int r, int colour) { fl_circf(x, y, r, static_cast<unsigned>(colour)); }

void fl_rectbound(int x, int y, int w, int h, unsigned colour) {
    fl_color(colour);
    fl_rectf(x, y, w, h);
    fl_color(FL_BLACK);
    fl_rect(x, y, w, h);
}

void fl_line(int x1, int y1, int x2, int y2, unsigned colour) {
    fl_color(colour);
    fl_line(x1, y1, x2, y2);
}

int point_dans_segment(double px, double py, double x1, double y1, double x2, double y2,
                       double tolerance) {
    if (!differ(x1, x2)) return between(py, y1, y2) && tolerance > std::fabs(px - x1);
    if (!differ(y1, y2)) return between(px, x1, x2) && tolerance > std::fabs(py - y1);
    if (!between(px, x1, x2) || !between(py, y1, y2)) return 0;
    const double length = std::sqrt((y1 - y2) * (y1 - y2) + (x1 - x2) * (x1 - x2));
    if (!(length > same_coordinate)) return 0;
    return tolerance > std::fabs(((px - x1) * (y1 - y2) - (py - y1) * (x1 - x2)) / length);
}
