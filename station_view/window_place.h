// Where the window opens, so that it and the panel can both be seen and taken hold of.
#pragma once
#include "station_view/window_layout.h"

namespace window_place {

/// The panel: its size; it opens in the middle of the screen.
inline constexpr int panel_width = 1120, panel_height = 190;
/// What a window manager's frame takes at the top of a window, generously.
inline constexpr int title_bar = 32;

/// The window's own area, without the manager's frame, on a screen whose usable part is `screen`.
/// Above the panel where there is room, else below, else where there is more room, as low as need
/// be but no lower than `least_height`: neither window then covers the other's title bar.
[[nodiscard]] window_layout::area beside_panel(const window_layout::area& screen);

}  // namespace window_place
