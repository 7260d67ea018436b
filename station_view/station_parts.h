// The pieces that the picture is put together from, each in a file of its own.
#pragma once
#include <string>

#include "lesson/bilingual.h"
#include "station_view/picture_builder.h"
#include "station_view/station_picture.h"

// The rows in which things lie. The belts carry bases of a fixed height.
inline constexpr double beam_row = 3.9, belt_row = 20, belt_end_row = 21.6, base_row = 18.3;
// A part's height, and where one lies when it is not on a base: in the drawer, and under the cup
// when that is low.
inline constexpr double part_rows = 0.9, drawer_floor_row = 17.35;

// Where the drawing ends on the right: a base that leaves is over the belt's end by its length.
inline constexpr double right_end_mm = 1280;

/// The text in the scene's language.
inline std::string told(const bilingual& words, const station_scene& scene) {
    return words.in(scene.english ? language::english : language::french);
}

/// What can be pointed at beside sensors and commands.
enum class station_part {
    running,
    paused,
    replay,
    replay_paused,
    link_dead,
    over,
    emergency_stop,
    title,
    desk,
    loader,
    waiting_belt,
    main_belt,
    base,
    glue_dispenser,
    magazine,
    drawer,
    suction_cup,
    press,
    press_timer,
    blocker_1,
    blocker_2,
    blocker_3,
    counts,
    ruler,
    legend,
    count
};

/// Begins the part in the picture, with its sentence.
void begin_part(picture_builder& into, const station_scene& scene, station_part part);

/// The part of a mode: its banner and its marks.
station_part part_of(session_mode mode);

// In the order in which they lie on each other.
void draw_mode(picture_builder& into, const station_scene& scene);
void draw_ruler(picture_builder& into, const station_scene& scene);
void draw_belts(picture_builder& into, const station_scene& scene);
void draw_blockers(picture_builder& into, const station_scene& scene);
void draw_bases(picture_builder& into, const station_scene& scene);
void draw_loader(picture_builder& into, const station_scene& scene);
void draw_dispenser(picture_builder& into, const station_scene& scene);
void draw_magazine(picture_builder& into, const station_scene& scene);
void draw_drawer(picture_builder& into, const station_scene& scene);
void draw_cup(picture_builder& into, const station_scene& scene);
void draw_press(picture_builder& into, const station_scene& scene);
void draw_desk(picture_builder& into, const station_scene& scene);
void draw_counts(picture_builder& into, const station_scene& scene);
void draw_legend(picture_builder& into, const station_scene& scene);
void draw_sensors(picture_builder& into, const station_scene& scene);
void draw_commands(picture_builder& into, const station_scene& scene);

/// A lamp around a centre: a red disc with a glint for 1, a smaller blue square for 0, a larger
/// crossed white box for any other value, so that grey tones tell them apart.
void draw_lamp(picture_builder& into, int centre_x, int centre_y, std::int32_t value);
