// What stands beside the mechanism: how the session goes, the desk, the counts, the legend.
#include <iterator>
#include <string>

#include "session/keyed_rows.h"
#include "station_view/station_parts.h"

namespace {

using enum shape_kind;

constexpr double header_row = 2.1;

// A great mark behind the station, in a shade of the paper.
enum class watermark { none, bars, arrows, cross, block };

struct mode_row {
    session_mode key;
    station_part part;
    ink paper, mark_ink, banner;
    watermark mark;
    bilingual words;
};

// clang-format off
constexpr mode_row modes[] = {
    {session_mode::running,       station_part::running,       ink::paper,        ink::paper,       ink::paper,       watermark::none,   {"en marche", "running"}},
    {session_mode::paused,        station_part::paused,        ink::paused_paper, ink::paused_mark, ink::black,       watermark::bars,   {"PAUSE", "PAUSED"}},
    {session_mode::replay,        station_part::replay,        ink::replay_paper, ink::replay_mark, ink::replay,      watermark::arrows, {"REJEU", "REPLAY"}},
    {session_mode::replay_paused, station_part::replay_paused, ink::replay_paper, ink::replay_mark, ink::replay,      watermark::bars,   {"REJEU EN PAUSE", "REPLAY PAUSED"}},
    {session_mode::link_dead,     station_part::link_dead,     ink::dead_paper,   ink::dead_mark,   ink::black,       watermark::cross,  {"LIAISON PERDUE", "LINK LOST"}},
    {session_mode::over,          station_part::over,          ink::over_paper,   ink::over_mark,   ink::stamp,       watermark::block,  {"SESSION TERMINÉE", "SESSION OVER"}},
};
// clang-format on
static_assert(one_row_each(modes));

void draw_cross(picture_builder& into, ink colour) {
    const int thick = into.px(0.8);
    for (int i = 0; i < thick; ++i) {
        into.line(colour, i, 0, into.w() - thick + i, into.h() - 1);
        into.line(colour, i, into.h() - 1, into.w() - thick + i, 0);
    }
}

void draw_watermark(picture_builder& into, watermark mark, ink colour) {
    const int middle = into.w() / 2, top = into.y(5), bottom = into.y(26), unit = into.px(3);
    if (mark == watermark::cross) draw_cross(into, colour);
    if (mark == watermark::block)
        into.bar(fill, colour, middle - 3 * unit, top, middle + 3 * unit, bottom);
    for (const int at : {-1, 1}) {
        const int centre = middle + at * 5 * unit / 2;
        if (mark == watermark::bars)
            into.bar(fill, colour, centre - unit, top, centre + unit, bottom);
        if (mark == watermark::arrows)
            into.bar(head_right, colour, centre - 3 * unit, top, centre + 3 * unit, bottom);
    }
}

/// A text in a coloured box around the middle of a width.
void draw_banner(picture_builder& into, const std::string& text, int middle, ink colour) {
    constexpr double size = 1.35;
    const int wide = text_width_px(text, into.px(size)) / 2 + into.px(0.8), high = into.px(1.05);
    const int y = into.y(header_row);
    into.bar(fill, colour, middle - wide, y - high, middle + wide, y + high);
    into.text(text, middle, y, text_side::middle, ink::white, size, true);
}

// Yellow and black along the whole edge.
void draw_hazard_frame(picture_builder& into) {
    const int thick = into.px(0.7), block = into.px(2.5);
    const int w = into.w(), h = into.h();
    for (int at = 0, i = 0; at < w; at += block, ++i) {
        const ink colour = i % 2 ? ink::warning : ink::black;
        into.bar(fill, colour, at, 0, at + block, thick);
        into.bar(fill, colour, at, h - thick, at + block, h);
    }
    for (int at = thick, i = 0; at < h - thick; at += block, ++i) {
        const ink colour = i % 2 ? ink::black : ink::warning;
        const int end = at + block < h - thick ? at + block : h - thick;
        into.bar(fill, colour, 0, at, thick, end);
        into.bar(fill, colour, w - thick, at, w, end);
    }
}

void draw_title(picture_builder& into, const station_scene& scene) {
    if (scene.title.empty()) return;
    begin_part(into, scene, station_part::title);
    into.text(scene.title, into.px(3), into.y(header_row), text_side::left, ink::black, 1.35, true,
              into.w() / 2 - into.px(18));
}

struct key_row {
    bool station_desk::*pushed;
    ink colour;
};
constexpr key_row desk_keys[] = {{&station_desk::dc, ink::lit},
                                 {&station_desk::ac, ink::black},
                                 {&station_desk::atu, ink::alarm}};

// A pushed button is down, and its inside dark.
void draw_key(picture_builder& into, int middle, ink colour, bool pushed) {
    const int wide = into.px(1.3), bottom = into.y(7.9), top = into.y(pushed ? 7.2 : 6.5);
    into.bar(bound, colour, middle - wide, top, middle + wide, bottom);
    into.bar(bound, ink::dark_metal, middle - wide - into.px(0.4), bottom,
             middle + wide + into.px(0.4), into.y(8.2));
    if (!pushed)
        into.bar(fill, ink::white, middle - wide + 1, top + 1, middle + wide - 1,
                 top + into.px(0.35));
}

}  // namespace

station_part part_of(session_mode mode) { return row_of(modes, mode).part; }

void draw_mode(picture_builder& into, const station_scene& scene) {
    const mode_row& mode = row_of(modes, scene.mode);
    into.background(mode.paper);
    begin_part(into, scene, mode.part);
    draw_watermark(into, mode.mark, mode.mark_ink);
    const std::string words = mode.words.in(scene);
    const int right = into.w() - into.px(10);
    if (mode.mark == watermark::none)
        into.text(words, right, into.y(header_row), text_side::middle, ink::faint, 1.1);
    else
        draw_banner(into, words, right, mode.banner);
    if (scene.state.emergency_stop) {
        begin_part(into, scene, station_part::emergency_stop);
        draw_hazard_frame(into);
        draw_banner(into, scene.english ? "EMERGENCY STOP" : "ARRÊT D'URGENCE", into.w() / 2,
                    ink::alarm);
    }
    draw_title(into, scene);
}

void draw_desk(picture_builder& into, const station_scene& scene) {
    begin_part(into, scene, station_part::desk);
    const int left = into.x(-400), right = into.x(-400, 21.5);
    into.bar(bound, ink::housing, left, into.y(4.5), right, into.y(11));
    into.text(scene.english ? "desk" : "pupitre", into.x(-400, 15.7), into.y(7.2), text_side::left,
              ink::faint);
    for (std::size_t i = 0; i < std::size(desk_keys); ++i)
        draw_key(into, into.x(-400, 2.5 + 5 * static_cast<double>(i)), desk_keys[i].colour,
                 scene.desk.*desk_keys[i].pushed);
}

void draw_counts(picture_builder& into, const station_scene& scene) {
    begin_part(into, scene, station_part::counts);
    const struct {
        bilingual words;
        int count;
    } rows[] = {{{"bonnes", "good"}, scene.state.good},
                {{"mauvaises", "bad"}, scene.state.bad},
                {{"incidents", "incidents"}, scene.state.incidents},
                {{"perdues", "lost parts"}, scene.state.parts_lost}};
    into.bar(bound, ink::housing, into.x(1280, -9.6), into.y(4.5), into.x(1280, 1.3), into.y(11));
    double row = 5.5;
    for (const auto& [words, count] : rows) {
        into.text(words.in(scene), into.x(1280, -9.2), into.y(row), text_side::left, ink::faint);
        into.text(std::to_string(count), into.x(1280, 0.9), into.y(row), text_side::right,
                  ink::black, 1, true);
        row += 1.5;
    }
}

void draw_legend(picture_builder& into, const station_scene& scene) {
    begin_part(into, scene, station_part::legend);
    constexpr double row = 25.6;
    const struct {
        std::int32_t value;
        double at;
        bilingual words;
    } lamps[] = {{1, 0.5, {"1", "1"}}, {0, 3.2, {"0", "0"}}, {-1, 5.9, {"autre", "other"}}};
    for (const auto& [value, at, words] : lamps) {
        draw_lamp(into, into.x(-400, at), into.y(row), value);
        into.text(words.in(scene), into.x(-400, at + 0.8), into.y(row), text_side::left,
                  ink::faint);
    }
    const int left = into.x(-400, 10.8), half = into.px(0.45);
    into.bar(head_right, ink::lit, left, into.y(row) - half, left + into.px(1.1),
             into.y(row) + half);
    into.text(scene.english ? "command at 1" : "commande à 1", into.x(-400, 12.2), into.y(row),
              text_side::left, ink::faint);
}
