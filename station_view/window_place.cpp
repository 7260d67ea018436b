#include "station_view/window_place.h"

#include <algorithm>

namespace window_place {

window_layout::area beside_panel(const window_layout::area& screen) {
    const int panel_top = (screen.h - panel_height) / 2 - title_bar;
    const int panel_bottom = (screen.h + panel_height) / 2 + 4;
    const int above = panel_top - title_bar, below = screen.h - panel_bottom - title_bar;
    const bool goes_above = above >= window_layout::height || above >= below;
    const int room = std::max(goes_above ? above : below, window_layout::least_height);
    const int w = std::clamp(screen.w - 8, window_layout::least_width, window_layout::width);
    const int h = std::min(room, window_layout::height);
    // What does not fit above goes below, and over the screen's lower edge.
    const int y = goes_above && above >= h ? title_bar : panel_bottom + title_bar;
    return {screen.x + std::max(0, (screen.w - w) / 2), screen.y + y, w, h};
}

}  // namespace window_place
