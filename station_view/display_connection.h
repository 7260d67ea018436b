// The X display of a program that must not end with it.
//
// The toolkit ends a program that has no display, or whose display goes away, at once and in its
// own words. Here the first is a failure like any other, and the second a flag: Xlib's calls on a
// display that is gone do nothing from then on, and the program goes its own way.
#pragma once

namespace display_connection {

/// Opens the display that DISPLAY names for the toolkit. Throws `refusal` where there is none: one
/// line, which names --headless. Before any other call of the toolkit.
void open();

/// For poll, while it is there: can be read when it has something to say.
[[nodiscard]] int descriptor();
/// Whether it has said something that was read already and that the toolkit has not taken.
[[nodiscard]] bool has_events();

/// Whether it has gone away. Nothing can be shown then, and no widget should be touched.
[[nodiscard]] bool lost();

}  // namespace display_connection
