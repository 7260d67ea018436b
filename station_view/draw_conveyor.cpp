// The belts, the blockers and the bases, to scale along the belts, and the ruler that says so.
#include <algorithm>
#include <cmath>
#include <string>

#include "station_view/station_parts.h"
#include "workcell/station_figures.h"

namespace {

using enum shape_kind;

constexpr double cleat_mm = 40;
constexpr std::size_t most_bases = 100;

/// A point of the pattern on a belt that has run so far: 0 up to the pattern's length.
double phase_mm(std::int64_t travelled_um) {
    constexpr auto pattern_um = static_cast<std::int64_t>(cleat_mm * 1000);
    return static_cast<double>((travelled_um % pattern_um + pattern_um) % pattern_um) / 1000;
}

// A roller, with a hole that goes round as the belt runs.
void draw_roller(picture_builder& into, int centre_x, int centre_y, int side, double angle) {
    into.disc(bound_disc, ink::belt, centre_x, centre_y, side);
    const int orbit = side / 4, hole = std::max(side / 5, 2);
    into.disc(disc, ink::cleat, centre_x + static_cast<int>(std::lround(orbit * std::cos(angle))),
              centre_y + static_cast<int>(std::lround(orbit * std::sin(angle))), hole);
}

// A loop around two rollers: what is on top moves to the right, what is below to the left.
void draw_belt(picture_builder& into, double begin_mm, double end_mm, std::int64_t travelled_um) {
    const int top = into.y(belt_row), bottom = into.y(belt_end_row), high = bottom - top;
    const int left = into.x(begin_mm) + high / 2, right = into.x(end_mm) - high / 2;
    const int skin = std::max(high / 4, 2), cleat = into.px(0.3);
    into.bar(fill, ink::belt, left, top, right, bottom);
    into.bar(fill, ink::dark_metal, left, top + skin, right, bottom - skin);
    const double phase = phase_mm(travelled_um);
    for (double mm = phase - cleat_mm; mm < end_mm - begin_mm; mm += cleat_mm) {
        const int above = into.x(begin_mm + mm), below = into.x(end_mm - mm);
        if (above >= left && above + cleat <= right)
            into.bar(fill, ink::cleat, above, top, above + cleat, top + skin);
        if (below >= left && below + cleat <= right)
            into.bar(fill, ink::cleat, below, bottom - skin, below + cleat, bottom);
    }
    const double angle = phase / cleat_mm * 2 * 3.14159265358979;
    for (const int centre : {left, right}) draw_roller(into, centre, top + high / 2, high, angle);
}

// From left to right in a base, in millimetres behind its leading edge.
struct span_mm {
    double behind, before;
};
constexpr span_mm body{station::base_mm, 0}, recess{70, 10}, content{66, 14}, stamp{76, 4};

class base_drawing {
public:
    base_drawing(picture_builder& into, double front_mm)
        : into_(into), front_mm_(std::clamp(front_mm, least_mm, most_mm)) {}

    void bar(shape_kind kind, ink colour, span_mm along, double top, double bottom) {
        into_.bar(kind, colour, into_.x(front_mm_ - along.behind), into_.y(top),
                  into_.x(front_mm_ - along.before), into_.y(bottom));
    }

private:
    static constexpr double least_mm = station::base_mm - station::waiting_belt_mm,
                            most_mm = station::main_belt_mm + station::base_mm;
    picture_builder& into_;
    double front_mm_;
};

// A box with a recess: the glue lies in it, the part on the glue until it is pressed down, and what
// was pressed carries a stamp.
void draw_base(picture_builder& into, const workcell_base& base) {
    constexpr double floor = base_row + 0.75, glue_rows = 0.3;
    base_drawing drawing(into, std::isnan(base.front_mm) ? 0 : base.front_mm);
    const double glue = glue_rows * fraction_of(base.glue_s);
    drawing.bar(bound, ink::base, body, base_row, belt_row);
    drawing.bar(bound, ink::white, recess, base_row, floor);
    if (glue > 0) drawing.bar(fill, ink::glue, recess, floor - glue, floor);
    const double part = base.pressed ? floor : floor - glue;
    if (base.part) drawing.bar(bound, ink::part, content, part - part_rows, part);
    if (base.pressed) drawing.bar(fill, ink::stamp, stamp, belt_row - 0.55, belt_row - 0.2);
}

std::string sentence_of(const workcell_base& base, bool english) {
    const auto said = [english](bool is, const char* yes, const char* no, const char* oui,
                                const char* non) {
        return std::string(english ? (is ? yes : no) : (is ? oui : non));
    };
    return (english ? "Base no. " : "Support n° ") + std::to_string(base.number) + ", " +
           said(base.glued, "glued", "not glued", "collé", "non collé") + ", " +
           said(base.part, "with a part", "without a part", "avec pièce", "sans pièce") + ", " +
           said(base.pressed, "pressed", "not pressed", "pressé", "non pressé") +
           (english ? ": MTA, then MT carry it along." : " : MTA puis MT le font avancer.");
}

}  // namespace

void draw_ruler(picture_builder& into, const station_scene& scene) {
    begin_part(into, scene, station_part::ruler);
    constexpr double line_row = 27.6, text_row = 28.6;
    const int y = into.y(line_row), tick = into.px(0.4);
    into.line(ink::faint, into.x(-station::waiting_belt_mm), y, into.x(station::main_belt_mm), y);
    for (const int mm : {-400, -200, 0, 300, 600, 900, 1200}) {
        into.line(ink::faint, into.x(mm), y - tick, into.x(mm), y);
        into.text(std::to_string(mm) + (mm == 1200 ? " mm" : ""), into.x(mm), into.y(text_row),
                  text_side::middle, ink::faint, 0.85);
    }
}

void draw_belts(picture_builder& into, const station_scene& scene) {
    begin_part(into, scene, station_part::waiting_belt);
    draw_belt(into, -station::waiting_belt_mm, 0, scene.state.waiting_belt_um);
    begin_part(into, scene, station_part::main_belt);
    draw_belt(into, 0, station::main_belt_mm, scene.state.main_belt_um);
}

// Half out it reaches the bases' path, as in the model.
void draw_blockers(picture_builder& into, const station_scene& scene) {
    constexpr station_part parts[] = {station_part::blocker_1, station_part::blocker_2,
                                      station_part::blocker_3};
    constexpr double reach_rows = 1.1, housing_row = 22.1, housing_end_row = 25.2;
    for (std::size_t zone = 0; zone < std::size(parts); ++zone) {
        begin_part(into, scene, parts[zone]);
        const double stop = station::stop_mm[zone];
        const double out = fraction_of(scene.state.blockers_out[zone]);
        const double tip = belt_row + (1 - 2 * out) * reach_rows;
        into.bar(bound, ink::warning, into.x(stop + 2), into.y(tip), into.x(stop + 12),
                 into.y(tip + 3.4));
        into.bar(bound, ink::metal, into.x(stop - 3), into.y(housing_row), into.x(stop + 17),
                 into.y(housing_end_row));
    }
}

void draw_bases(picture_builder& into, const station_scene& scene) {
    const auto& bases = scene.state.bases;
    for (std::size_t i = 0; i < std::min(bases.size(), most_bases); ++i) {
        into.begin("base", sentence_of(bases[i], scene.english));
        draw_base(into, bases[i]);
    }
}

// A chute above the belt's beginning, with the first few of what it holds.
void draw_loader(picture_builder& into, const station_scene& scene) {
    begin_part(into, scene, station_part::loader);
    constexpr double begin = -station::waiting_belt_mm, end = begin + station::base_mm;
    constexpr double top = 12.6, bottom = 17.6, step = 1.25;
    const int wall = into.px(0.2), left = into.x(begin), right = into.x(end);
    for (int i = 0; i < std::clamp(scene.state.bases_in_stock, 0, 4); ++i)
        into.bar(bound, ink::base, left, into.y(bottom - (i + 1) * step) + 1, right,
                 into.y(bottom - i * step));
    into.bar(fill, ink::black, left - wall, into.y(top), left, into.y(bottom));
    into.bar(fill, ink::black, right, into.y(top), right + wall, into.y(bottom));
    const int text_x = into.x(end, 0.9);
    into.text(scene.english ? "stock" : "réserve", text_x, into.y(14.2), text_side::left,
              ink::faint);
    into.text(std::to_string(scene.state.bases_in_stock), text_x, into.y(15.7), text_side::left,
              ink::black, 1.2, true);
}
