// The dispenser, the magazine and its drawer, the suction cup and the press, above the belts.
//
// Seen from the front. The magazine and the drawer, which stand behind zone 2, are drawn to its
// left, so that the drawer's way is seen.
#include <algorithm>
#include <cmath>
#include <string>

#include "station_view/station_parts.h"
#include "workcell/station_figures.h"

namespace {

using enum shape_kind;

// Where the devices stand: above the middle of a base at its stop.
constexpr double nozzle_mm = station::stop_mm[0] - station::base_mm / 2.0;
constexpr double cup_mm = station::stop_mm[1] - station::base_mm / 2.0;
constexpr double press_mm = (station::press_head_begin_mm + station::press_head_end_mm) / 2.0;
constexpr double magazine_mm = 430;
constexpr double part_mm = 52;
constexpr double cylinder_row = 4.4, cylinder_end_row = 9.0;

/// A rectangle around a place along the belts.
void around(picture_builder& into, shape_kind kind, ink colour, double mm, double width_mm,
            double top, double bottom) {
    into.bar(kind, colour, into.x(mm - width_mm / 2), into.y(top), into.x(mm + width_mm / 2),
             into.y(bottom));
}

/// A cylinder at the beam and its rod, down to a row.
void draw_cylinder(picture_builder& into, double mm, double width_mm, double rod_mm, double down) {
    around(into, fill, ink::dark_metal, mm, width_mm / 2, beam_row, cylinder_row + 0.2);
    around(into, bound, ink::metal, mm, rod_mm, cylinder_end_row - 1, down);
    around(into, bound, ink::housing, mm, width_mm, cylinder_row, cylinder_end_row);
}

void draw_part(picture_builder& into, double mm, double bottom) {
    around(into, bound, ink::part, mm, part_mm, bottom - part_rows, bottom);
}

void draw_zone(picture_builder& into, const station_scene& scene, double mm, bilingual words) {
    into.text(told(words, scene), into.x(mm), into.y(3.3), text_side::middle, ink::faint, 0.9);
}

bool base_below_nozzle(const workcell_state& state) {
    return std::ranges::any_of(state.bases, [](const workcell_base& each) {
        return each.front_mm >= nozzle_mm && each.front_mm - station::base_mm <= nozzle_mm;
    });
}

// Ten cells, one for each second, and the seconds in figures.
void draw_timer(picture_builder& into, const station_scene& scene) {
    begin_part(into, scene, station_part::press_timer);
    const double held = fraction_of(scene.state.press_held_s / 10);
    constexpr double top = 11.6, bottom = 12.7;
    const int left = into.x(station::press_head_end_mm, 1.8);
    const int right = left + into.px(6);
    into.bar(fill, ink::white, left, into.y(top), right, into.y(bottom));
    into.bar(fill, ink::lit, left, into.y(top),
             left + static_cast<int>(std::lround(held * (right - left))), into.y(bottom));
    for (int second = 1; second < 10; ++second) {
        const int at = left + (right - left) * second / 10;
        into.line(ink::black, at, into.y(top), at, into.y(bottom) - 1);
    }
    into.bar(outline, ink::black, left, into.y(top), right, into.y(bottom));
    into.text(std::to_string(static_cast<int>(held * 10)) + " s", right + into.px(0.5),
              into.y((top + bottom) / 2));
}

}  // namespace

void draw_dispenser(picture_builder& into, const station_scene& scene) {
    begin_part(into, scene, station_part::glue_dispenser);
    draw_zone(into, scene, nozzle_mm, {"zone 1 : colle", "zone 1: glue"});
    const int end = into.y(base_below_nozzle(scene.state) ? base_row + 0.75 : belt_row);
    if (scene.state.dispensing)
        into.bar(fill, ink::glue, into.x(nozzle_mm - 3), into.y(16.2), into.x(nozzle_mm + 3), end);
    around(into, fill, ink::dark_metal, nozzle_mm, 16, beam_row, 7);
    around(into, bound, ink::housing, nozzle_mm, 48, 6.4, 12.4);
    around(into, fill, ink::glue, nozzle_mm, 40, 8.2, 12);
    around(into, bound, ink::metal, nozzle_mm, 20, 12.4, 15);
    around(into, bound, ink::metal, nozzle_mm, 9, 15, 16.4);
}

void draw_magazine(picture_builder& into, const station_scene& scene) {
    begin_part(into, scene, station_part::magazine);
    constexpr double top = 9.1, bottom = 16.3, width_mm = part_mm + 4, wall_mm = 4;
    for (int i = 0; i < std::clamp(scene.state.parts_in_magazine, 0, 7); ++i)
        draw_part(into, magazine_mm, bottom - 0.1 - i * (part_rows + 0.08));
    for (const double side : {-1.0, 1.0})
        around(into, fill, ink::black, magazine_mm + side * (width_mm + wall_mm) / 2, wall_mm, top,
               bottom);
    into.text(std::to_string(scene.state.parts_in_magazine), into.x(magazine_mm), into.y(8.2),
              text_side::middle, ink::black, 1, true);
}

void draw_drawer(picture_builder& into, const station_scene& scene) {
    begin_part(into, scene, station_part::drawer);
    constexpr double tray_mm = part_mm + 12, wall_mm = 4, thick = 0.3;
    const double out = fraction_of(scene.state.drawer_out);
    const double mm = magazine_mm + out * (cup_mm - magazine_mm);
    // The rail stays where it is.
    into.bar(fill, ink::dark_metal, into.x(magazine_mm - tray_mm / 2),
             into.y(drawer_floor_row + thick), into.x(cup_mm + tray_mm / 2),
             into.y(drawer_floor_row + thick) + into.px(0.15));
    if (scene.state.part_in_drawer) draw_part(into, mm, drawer_floor_row);
    around(into, fill, ink::stamp, mm, tray_mm, drawer_floor_row, drawer_floor_row + thick);
    for (const double side : {-1.0, 1.0})
        around(into, fill, ink::stamp, mm + side * (tray_mm - wall_mm) / 2, wall_mm,
               drawer_floor_row - 0.5, drawer_floor_row + thick);
}

// Low, its lip lies on the part in the drawer.
void draw_cup(picture_builder& into, const station_scene& scene) {
    begin_part(into, scene, station_part::suction_cup);
    constexpr double high = 10.6, low = drawer_floor_row - part_rows;
    const double lip = high + fraction_of(scene.state.cup_down) * (low - high);
    draw_zone(into, scene, cup_mm, {"zone 2 : pièce", "zone 2: part"});
    const ink air = scene.state.vacuum    ? ink::vacuum
                    : scene.state.suction ? ink::suction
                                          : ink::white;
    draw_cylinder(into, cup_mm, 26, 8, lip - 1.2);
    around(into, bound, ink::metal, cup_mm, 24, lip - 1.2, lip - 0.5);
    around(into, bound, air, cup_mm, 46, lip - 0.55, lip);
    if (scene.state.part_in_cup) draw_part(into, cup_mm, lip + part_rows);
}

// Low, its head lies on a base.
void draw_press(picture_builder& into, const station_scene& scene) {
    begin_part(into, scene, station_part::press);
    constexpr double high = 11, low = base_row - 0.15, head_rows = 1.5;
    constexpr double head_mm = station::press_head_end_mm - station::press_head_begin_mm;
    const double end = high + fraction_of(scene.state.press_down) * (low - high);
    draw_zone(into, scene, press_mm, {"zone 3 : presse", "zone 3: press"});
    draw_cylinder(into, press_mm, 44, 16, end - head_rows);
    around(into, bound, ink::dark_metal, press_mm, head_mm, end - head_rows, end);
    draw_timer(into, scene);
}
