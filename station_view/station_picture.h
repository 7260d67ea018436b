// What is drawn of the station, decided without a display: from the model's state to shapes.
//
// A picture is a pure function of a scene and of a size in pixels: it has no clock, and the same
// scene gives the same picture. Whoever shows it paints it again when it differs from the last one.
// docs/station_view.md says how it is laid out, and how a thing is added to it.
#pragma once
#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "session/station_model.h"
#include "workcell/station_names.h"
#include "workcell/workcell_model.h"

/// How the session goes. Each looks different at a glance; so does an emergency stop in any of
/// them.
enum class session_mode { running, paused, replay, replay_paused, link_dead, over, count };

/// What the drawing shows.
struct station_scene {
    /// What is: the mechanism is drawn by it.
    workcell_state state{};
    /// What the panel sees, faults included: the lamps.
    std::array<std::int32_t, static_cast<std::size_t>(station_input::count)> sensors{};
    /// The commands as they arrived on the link.
    std::array<std::int32_t, static_cast<std::size_t>(station_output::count)> commands{};
    /// Which of the desk's buttons are pushed.
    station_desk desk;
    /// Decides the background.
    session_mode mode = session_mode::running;
    /// The language of the words that are drawn.
    bool english = false;
    /// UTF-8, one line; cut where there is no room for it.
    std::string title;

    /// Whether nothing that is drawn has changed: all but the simulated time.
    bool same_drawing(const station_scene& other) const;
};

/// A rectangle in pixels; x + w and y + h lie outside.
struct picture_box {
    /// From the picture's top left corner; no box of a picture has a size below 0.
    int x = 0, y = 0, w = 0, h = 0;
    /// Whether the pixel lies in it.
    bool contains(int at_x, int at_y) const {
        return at_x >= x && at_x < x + w && at_y >= y && at_y < y + h;
    }
    bool operator==(const picture_box&) const = default;
};

// clang-format off
/// The colours of the drawing, by what they are for.
enum class ink {
    // The background in each mode; the cross over a station that nobody commands.
    paper, paused_paper, replay_paper, dead_paper, over_paper, dead_cross,
    // Texts and outlines; a command that is not 1; what is there to help only.
    black, white, unlit, faint,
    // A sensor at 1 and at 0, as on the panel.
    lamp_one, lamp_zero,
    // A command that is 1; a value that is neither 1 nor 0.
    lit, odd,
    // The mechanism.
    metal, dark_metal, belt, cleat, base, glue, part, stamp, suction, vacuum, housing,
    // An emergency stop; a replay.
    alarm, warning, replay,
    count
};
// clang-format on

/// The red, green and blue of a colour, 0xRRGGBB.
std::uint32_t rgb_of(ink colour);

/// How a shape is drawn in its box.
enum class shape_kind {
    /// A filled rectangle; its outline; both, the outline black.
    fill,
    outline,
    bound,
    /// From one corner of its box to another: top left to bottom right, or bottom left to top
    /// right; both ends drawn.
    line_down,
    line_up,
    dashes_down,
    dashes_up,
    /// In the square of side w: filled; its outline; both, the outline black.
    disc,
    ring,
    bound_disc,
    /// A filled arrow head, whose point is in the middle of one side of its box.
    head_right,
    head_left,
    head_up,
    head_down,
    /// One line of text in its box, vertically in its middle.
    text,
    count
};

/// To which side of its box a text is set.
enum class text_side { left, middle, right };

/// One shape, within the picture. A later one lies on top of an earlier one.
struct picture_shape {
    /// What is drawn, in which colour and where.
    shape_kind kind = shape_kind::fill;
    ink colour = ink::black;
    picture_box box;
    /// Which of the picture's things it shows; -1 for none.
    int thing = -1;
    /// For a text: UTF-8, its size in pixels, where it stands in its box.
    std::string text = {};
    int text_px = 0;
    text_side side = text_side::left;
    /// Of a text: for what is to be read from afar.
    bool bold = false;

    bool operator==(const picture_shape&) const = default;
};

/// Something that can be pointed at.
struct picture_thing {
    /// "te" and "MT" for sensors and commands; an English word or two for the rest.
    std::string name;
    /// One sentence that says what it is, and which names belong to it. UTF-8.
    std::string sentence;
    bool operator==(const picture_thing&) const = default;
};

/// The picture: shapes in the order in which they are painted, and what can be pointed at.
struct station_picture {
    /// Its size, in pixels.
    int w = 0, h = 0;
    /// The height of the names, in pixels.
    int name_px = 0;
    /// That of the whole picture, below all shapes.
    ink background = ink::paper;
    /// The lowest first.
    std::vector<picture_shape> shapes;
    /// In no order of theirs: shapes name them by their places.
    std::vector<picture_thing> things;
    bool operator==(const station_picture&) const = default;
};

/// The station as it is drawn on so many pixels. Any scene and any size will do: what is no number
/// or out of bounds is drawn at the nearest place, and nothing lies outside. From 1000 x 300 on, no
/// text lies on another; a size below 1 gives an empty picture.
station_picture draw_station(const station_scene& scene, int w, int h);

/// The thing at a point of the picture; null where there is none. Valid as long as the picture.
const picture_thing* thing_at(const station_picture& picture, int x, int y);
