#include "station_view/picture_builder.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "workcell/station_figures.h"

namespace {

constexpr double first_mm = -station::waiting_belt_mm;
constexpr double last_mm = station::main_belt_mm + station::base_mm;
// So many units are always there, across and down; a row grows to so many units at most.
constexpr double units_across = 100, rows = 30, most_units_a_row = 1.9;
constexpr double margin_units = 3;

bool begins_character(char byte) { return (static_cast<unsigned char>(byte) & 0xC0) != 0x80; }

// Those of a wide typeface.
double character_units(char byte) {
    constexpr std::string_view narrow = " .,:;'!|()ijlft-", wide = "mwMW@%";
    if (!begins_character(byte)) return 0;
    if (narrow.find(byte) != narrow.npos) return 0.4;
    if (wide.find(byte) != wide.npos || static_cast<unsigned char>(byte) >= 0xE0) return 1;
    return byte >= 'A' && byte <= 'Z' ? 0.79 : 0.67;
}

bool is_cut(const picture_shape& shape, int w, int h) {
    const picture_box& at = shape.box;
    return at.x < 0 || at.y < 0 || at.x + at.w > w || at.y + at.h > h;
}

}  // namespace

int text_width_px(const std::string& text, int size_px, bool bold) {
    constexpr double bolder = 1.11;
    double units = 0;
    for (const char byte : text) units += character_units(byte);
    return static_cast<int>(std::ceil(units * size_px * (bold ? bolder : 1)));
}

std::string fitted(const std::string& text, int size_px, bool bold, int most_px) {
    if (text_width_px(text, size_px, bold) <= most_px) return text;
    const std::string ellipsis = "…";
    std::string beginning = text;
    while (!beginning.empty() && text_width_px(beginning + ellipsis, size_px, bold) > most_px) {
        while (!begins_character(beginning.back()) && beginning.size() > 1) beginning.pop_back();
        beginning.pop_back();
    }
    return beginning + ellipsis;
}

double fraction_of(double value) { return value > 0 ? std::min(value, 1.0) : 0; }

picture_builder::picture_builder(int w, int h)
    : unit_(std::min(w / units_across, h / rows)),
      row_(std::min(h / rows, most_units_a_row * unit_)) {
    picture_.w = w;
    picture_.h = h;
    picture_.name_px = text_px(1);
}

void picture_builder::begin(std::string name, std::string sentence) {
    thing_ = static_cast<int>(picture_.things.size());
    picture_.things.push_back({std::move(name), std::move(sentence)});
}

int picture_builder::x(double mm, double units) const {
    const double along = fraction_of((mm - first_mm) / (last_mm - first_mm));
    const double margin = margin_units * unit_;
    return static_cast<int>(
        std::lround(margin + along * (picture_.w - 2 * margin) + units * unit_));
}

// The rows stand in the middle of a picture that is higher than they are.
int picture_builder::y(double row) const {
    return static_cast<int>(std::lround((picture_.h - rows * row_) / 2 + row * row_));
}

int picture_builder::px(double units) const {
    return std::max(1, static_cast<int>(std::lround(units * unit_)));
}

int picture_builder::text_px(double units) const {
    return std::max(1, static_cast<int>(units * unit_ + 1e-6));
}

void picture_builder::bar(shape_kind kind, ink colour, int x0, int y0, int x1, int y1) {
    x0 = std::clamp(x0, 0, picture_.w);
    y0 = std::clamp(y0, 0, picture_.h);
    x1 = std::clamp(x1, 0, picture_.w);
    y1 = std::clamp(y1, 0, picture_.h);
    add({.kind = kind, .colour = colour, .box = {x0, y0, x1 - x0, y1 - y0}});
}

void picture_builder::disc(shape_kind kind, ink colour, int centre_x, int centre_y, int side) {
    add({.kind = kind,
         .colour = colour,
         .box = {centre_x - side / 2, centre_y - side / 2, side, side}});
}

void picture_builder::line(ink colour, int x0, int y0, int x1, int y1, bool dashed) {
    const bool down = (x0 <= x1) == (y0 <= y1);
    const shape_kind kind = dashed ? (down ? shape_kind::dashes_down : shape_kind::dashes_up)
                                   : (down ? shape_kind::line_down : shape_kind::line_up);
    const auto [left, right] = std::minmax(x0, x1);
    const auto [top, bottom] = std::minmax(y0, y1);
    add({.kind = kind, .colour = colour, .box = {left, top, right - left + 1, bottom - top + 1}});
}

void picture_builder::text(const std::string& text, int at_x, int middle_y, text_side side,
                           ink colour, double units, bool bold, int most_px) {
    const int size = text_px(units);
    const int room = most_px > 0 ? std::min(most_px, picture_.w) : picture_.w;
    const std::string shown = fitted(text, size, bold, room);
    const int wide = text_width_px(shown, size, bold), high = size * 6 / 5;
    const int left = at_x - (side == text_side::left     ? 0
                             : side == text_side::middle ? wide / 2
                                                         : wide);
    add({.kind = shape_kind::text,
         .colour = colour,
         .box = {left, middle_y - high / 2, wide, high},
         .text = shown,
         .text_px = size,
         .side = side,
         .bold = bold});
}

// Rectangles were cut to the picture; the rest is in it or is left out.
void picture_builder::add(const picture_shape& shape) {
    if (shape.box.w <= 0 || shape.box.h <= 0 || is_cut(shape, picture_.w, picture_.h)) return;
    picture_.shapes.push_back(shape);
    picture_.shapes.back().thing = thing_;
}
