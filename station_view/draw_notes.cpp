// What stands beside the mechanism: how the session goes, the desk, the counts, the legend.
#include <iterator>
#include <string>

#include "session/keyed_rows.h"
#include "station_view/station_parts.h"

namespace {

using enum shape_kind;

// How high the banner and the title stand, and what is left free around their texts.
constexpr double header_row = 1.8, banner_size = 1.35;

// A great sign in the empty place left of the dispenser.
enum class mode_sign { none, bars, arrows, cross, block };

struct mode_row {
    session_mode key;
    station_part part;
    ink paper, colour;
    mode_sign sign;
    bilingual words;
};

// clang-format off
constexpr mode_row modes[] = {
    {session_mode::running,       station_part::running,       ink::paper,        ink::faint,  mode_sign::none,   {"en marche", "running"}},
    {session_mode::paused,        station_part::paused,        ink::paused_paper, ink::black,  mode_sign::bars,   {"PAUSE", "PAUSED"}},
    {session_mode::replay,        station_part::replay,        ink::replay_paper, ink::replay, mode_sign::arrows, {"REJEU", "REPLAY"}},
    {session_mode::replay_paused, station_part::replay_paused, ink::replay_paper, ink::replay, mode_sign::bars,   {"REJEU EN PAUSE", "REPLAY PAUSED"}},
    {session_mode::link_dead,     station_part::link_dead,     ink::dead_paper,   ink::black,  mode_sign::cross,  {"LIAISON SANS COMMANDE", "NOBODY COMMANDS"}},
    {session_mode::over,          station_part::over,          ink::over_paper,   ink::stamp,  mode_sign::block,  {"SESSION TERMINÉE", "SESSION OVER"}},
};
// clang-format on
static_assert(one_row_each(modes));

/// From corner to corner, so thick across.
void draw_cross(picture_builder& into, ink colour, picture_box at, int thick) {
    const int right = at.x + at.w - 1, bottom = at.y + at.h - 1;
    for (int i = 0; i < thick; ++i) {
        into.line(colour, at.x + i, at.y, right - thick + 1 + i, bottom);
        into.line(colour, at.x + i, bottom, right - thick + 1 + i, at.y);
    }
}

void draw_sign(picture_builder& into, mode_sign sign, ink colour) {
    const int middle = (into.x(-400, 13) + into.x(220, -4.5)) / 2;
    const int top = into.y(12), bottom = into.y(17), side = bottom - top;
    if (sign == mode_sign::cross)
        draw_cross(into, colour, {middle - side / 2, top, side, side}, into.px(1));
    if (sign == mode_sign::block)
        into.bar(fill, colour, middle - side / 2, top, middle + side / 2, bottom);
    for (const int at : {-1, 1}) {
        const int bar = middle + at * side / 4, head = middle + at * side * 3 / 8;
        if (sign == mode_sign::bars)
            into.bar(fill, colour, bar - side / 7, top, bar + side / 7, bottom);
        if (sign == mode_sign::arrows)
            into.bar(head_right, colour, head - side * 3 / 8, top, head + side * 3 / 8, bottom);
    }
}

/// How wide a banner is to either side of its middle.
int banner_half_px(const picture_builder& into, const std::string& text) {
    return text_width_px(text, into.text_px(banner_size), true) / 2 + into.px(0.7);
}

/// A text in a coloured box around the middle of a width.
void draw_banner(picture_builder& into, const std::string& text, int middle, ink colour) {
    const int half = banner_half_px(into, text), high = into.px(1);
    const int y = into.y(header_row);
    into.bar(fill, colour, middle - half, y - high, middle + half, y + high);
    into.text(text, middle, y, text_side::middle, ink::white, banner_size, true);
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

// In a pause the station takes it with the next step only.
bool is_stopped(const station_scene& scene) { return scene.state.emergency_stop || scene.desk.atu; }

void draw_emergency(picture_builder& into, const station_scene& scene) {
    if (!is_stopped(scene)) return;
    begin_part(into, scene, station_part::emergency_stop);
    draw_hazard_frame(into);
    draw_banner(into, scene.english ? "EMERGENCY STOP" : "ARRÊT D'URGENCE", into.w() / 2,
                ink::alarm);
}

// Time goes on under an emergency stop, too, but nothing runs.
void draw_running(picture_builder& into, const station_scene& scene, const mode_row& mode) {
    const bool stopped = is_stopped(scene);
    if (stopped) begin_part(into, scene, station_part::emergency_stop);
    const bilingual words = stopped ? bilingual{"arrêt d'urgence", "emergency stop"} : mode.words;
    into.text(told(words, scene), into.x(right_end_mm), into.y(header_row), text_side::right,
              stopped ? ink::alarm : mode.colour, 1.1);
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
    const int wide = into.px(1.3), bottom = into.y(7.3), top = into.y(pushed ? 6.6 : 5.9);
    into.bar(bound, colour, middle - wide, top, middle + wide, bottom);
    into.bar(bound, ink::dark_metal, middle - wide - into.px(0.4), bottom,
             middle + wide + into.px(0.4), into.y(7.6));
    if (!pushed)
        into.bar(fill, ink::white, middle - wide + 1, top + 1, middle + wide - 1,
                 top + into.px(0.35));
}

}  // namespace

station_part part_of(session_mode mode) { return row_of(modes, mode).part; }

void draw_mode(picture_builder& into, const station_scene& scene) {
    const mode_row& mode = row_of(modes, scene.mode);
    const std::string words = told(mode.words, scene);
    const int right = into.x(right_end_mm);
    into.background(mode.paper);
    begin_part(into, scene, mode.part);
    if (mode.sign == mode_sign::cross)
        draw_cross(into, ink::dead_cross, {0, 0, into.w(), into.h()}, into.px(0.6));
    draw_sign(into, mode.sign, mode.colour);
    if (mode.sign == mode_sign::none)
        draw_running(into, scene, mode);
    else
        draw_banner(into, words, right - banner_half_px(into, words), mode.colour);
    draw_emergency(into, scene);
    draw_title(into, scene);
}

void draw_desk(picture_builder& into, const station_scene& scene) {
    begin_part(into, scene, station_part::desk);
    const int left = into.x(-400), right = into.x(-400, 21.5);
    into.bar(bound, ink::housing, left, into.y(4.5), right, into.y(10.4));
    into.text(scene.english ? "desk" : "pupitre", into.x(-400, 16), into.y(6.8), text_side::left,
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
                {{"pièces perdues", "lost parts"}, scene.state.parts_lost}};
    constexpr double first_row = 5.3, step = 3.05, below = 1.38;
    const int left = into.x(right_end_mm, -10), right = into.x(right_end_mm), gap = into.px(0.5);
    into.bar(bound, ink::housing, left, into.y(4.5), right, into.y(16.9));
    double row = first_row;
    for (const auto& [words, count] : rows) {
        into.text(told(words, scene), left + gap, into.y(row), text_side::left, ink::faint);
        into.text(std::to_string(count), right - gap, into.y(row + below), text_side::right,
                  ink::black, 1.3, true);
        row += step;
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
        into.text(told(words, scene), into.x(-400, at + 0.8), into.y(row), text_side::left,
                  ink::faint);
    }
    const int left = into.x(-400, 10.8), half = into.px(0.45);
    into.bar(head_right, ink::lit, left, into.y(row) - half, left + into.px(1.1),
             into.y(row) + half);
    into.text(scene.english ? "command at 1" : "commande à 1", into.x(-400, 12.2), into.y(row),
              text_side::left, ink::faint);
}
