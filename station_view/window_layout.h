// Where the window's parts are. Pixels from its top left, at the size in which it opens.
#pragma once

namespace window_layout {

struct area {
    int x, y, w, h;
};

inline constexpr int width = 1500, height = 386;
/// Below this the right-hand columns would not be whole.
inline constexpr int least_width = 1000, least_height = 240;

inline constexpr area picture = {8, 8, 880, 266}, incidents = {8, 280, 880, 98};
/// In the picture's and the incidents' place when inputs are set by hand.
inline constexpr int panels_width = 640;

inline constexpr area desk_title = {900, 6, 290, 18};
inline constexpr area start_cycle = {900, 28, 86, 40}, stop_cycle = {992, 28, 86, 40};
inline constexpr area unlock = {900, 74, 178, 24}, emergency = {1090, 24, 100, 76};

inline constexpr area time_title = {900, 106, 120, 18}, clock = {1030, 106, 160, 18};
inline constexpr area pause = {900, 128, 92, 28}, step = {999, 128, 92, 28},
                      next_change = {1098, 128, 92, 28};
inline constexpr area slower = {900, 162, 26, 24}, speed = {930, 162, 168, 24},
                      faster = {1102, 162, 26, 24}, speed_text = {1132, 162, 58, 24};
inline constexpr area state = {900, 194, 290, 30};

inline constexpr area production_title = {900, 232, 290, 18};
inline constexpr area good = {900, 254, 92, 58}, bad = {999, 254, 92, 58},
                      incident_count = {1098, 254, 92, 58};
inline constexpr area journal = {900, 350, 290, 28};

inline constexpr area faults_title = {1202, 6, 290, 18}, faults = {1202, 28, 290, 350};

}  // namespace window_layout
