// Where the window's parts are. Pixels from its top left, at the size in which it opens; and how
// they stand at any other.
#pragma once

namespace window_layout {

/// A part of the window, without its frame.
struct area {
    /// Pixels; x + w and y + h lie outside.
    int x, y, w, h;
};

/// The size in which the window opens on a screen that has room for it.
inline constexpr int width = 1718, height = 380;
/// Below this the right-hand columns would not be whole.
inline constexpr int least_width = 1000, least_height = 240;

/// The drawing, and the list of incidents below it.
inline constexpr area picture = {8, 8, 1060, 300}, incidents = {8, 312, 1060, 60};
/// In the picture's and the incidents' place when inputs are set by hand.
inline constexpr int panels_width = 640;

/// The desk: its heading, the two buttons that are held, the emergency stop and what lets it up.
inline constexpr area desk_title = {1080, 6, 290, 18};
inline constexpr area start_cycle = {1080, 28, 86, 40}, stop_cycle = {1172, 28, 86, 40};
inline constexpr area unlock = {1080, 74, 178, 24}, emergency = {1270, 24, 100, 76};

/// The time: its heading and the clock, the buttons, the speed with its slider, what the session is
/// doing.
inline constexpr area time_title = {1080, 106, 120, 18}, clock = {1210, 106, 160, 18};
inline constexpr area pause = {1080, 128, 92, 28}, step = {1179, 128, 92, 28},
                      next_change = {1278, 128, 92, 28};
inline constexpr area slower = {1080, 162, 26, 24}, speed = {1110, 162, 168, 24},
                      faster = {1282, 162, 26, 24}, speed_text = {1312, 162, 58, 24};
inline constexpr area state = {1080, 194, 290, 30};

/// The counts: their heading, and the three of them.
inline constexpr area production_title = {1080, 232, 290, 18};
inline constexpr area good = {1080, 254, 92, 58}, bad = {1179, 254, 92, 58},
                      incident_count = {1278, 254, 92, 58};
/// Of a replay; at any other time there is nothing.
inline constexpr area moment = {1080, 316, 290, 24};
/// What opens the journal, and what gives the drawing the whole window. Between them, where desk
/// and faults have one column, what brings the faults into it; the journal's button is narrower
/// then.
inline constexpr area journal = {1080, 344, 188, 28}, to_faults = {1178, 344, 90, 28},
                      drawing_alone = {1276, 344, 94, 28};

/// The faults, or the exercise in their place; and what brings the desk back where it shares a
/// column with them.
inline constexpr area faults_title = {1382, 6, 230, 18}, faults = {1382, 28, 328, 344},
                      to_desk = {1616, 3, 94, 22};
// The heading is painted anew by itself.
static_assert(faults_title.x + faults_title.w <= to_desk.x);

/// Where the parts of a window of that size are. In a tall one the faults stand below the desk's
/// column rather than beside it, and the drawing gets what that leaves. In one that is low and
/// narrow they have the desk's place, and one of the two is seen, if that makes the names larger.
/// An exercise, which stands in their place, is there to be read: it has the whole width below
/// drawing and desk, and a column of its own in a low window. The incidents have four lines, but
/// two in a window that is lower than it opens on a large screen.
struct arrangement {
    /// `middle` is the column of desk, time and counts.
    area picture, incidents, middle, faults;
    /// Whether `middle` and `faults` are one place.
    bool one_column = false;
};
/// What the faults' place is for.
enum class side_part { faults, exercise };
/// From this height on it is below; in a lower window, it may be the desk's below this width.
inline constexpr int tall = 640, narrow = 1600;
/// The parts of a window of `w` by `h` pixels.
[[nodiscard]] arrangement arranged(int w, int h, side_part side = side_part::faults);

/// The same with the drawing alone: the incidents stay below it, and beside them is the button that
/// brings the rest back.
struct drawing_arrangement {
    /// `back` is the button.
    area picture, incidents, back;
};
/// The parts of a window of `w` by `h` pixels that shows the drawing alone.
[[nodiscard]] drawing_arrangement drawing_alone_arranged(int w, int h);

}  // namespace window_layout
