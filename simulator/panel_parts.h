// What the two simulator panels share: their own window,
// their small buttons, their captions. Pixels everywhere.
#pragma once

#include <string>

class Fl_Button;
class Fl_Window;

namespace panel_parts {

/// `a + b`, wrapping: an extreme offset or height gives an odd place, never an overflow.
constexpr int shifted(int a, int b) {
    return static_cast<int>(static_cast<unsigned>(a) + static_cast<unsigned>(b));
}

/// A new top-level window with a flat frame that covers it, being filled. Whatever group was being
/// filled no longer is.
Fl_Window* begin_own_window(int width, int height);

/// Ends the filling of `window` and shows it under the mouse as a transient window. The window
/// keeps its own copy of `title`.
void show_own_window(Fl_Window* window, const std::string& title);

/// A push button, 20 high, in the group being filled. `label` is kept, not copied.
Fl_Button* add_button(int x, int y, int width, const char* label);

/// A caption on the top line, in the group being filled; it keeps its own copy of `text`.
void add_caption(int x, const std::string& text);

}  // namespace panel_parts
