// How the window's widgets look, and the few lines that make one.
#pragma once
#include <FL/Enumerations.H>

#include <string>

#include "station_view/window_actions.h"
#include "station_view/window_layout.h"

class Fl_Box;
class Fl_Widget;

namespace window_style {

// 0xRRGGBB00, as the toolkit takes them.
inline constexpr auto paper = static_cast<Fl_Color>(0xF3F4F600);
inline constexpr auto ink = static_cast<Fl_Color>(0x20242800);
inline constexpr auto quiet_ink = static_cast<Fl_Color>(0x5F687200);
inline constexpr auto line = static_cast<Fl_Color>(0xC9CED400);
inline constexpr auto button = static_cast<Fl_Color>(0xE4E7EB00);
inline constexpr auto white = static_cast<Fl_Color>(0xFFFFFF00);
inline constexpr auto green = static_cast<Fl_Color>(0x1E7B4500);
inline constexpr auto red = static_cast<Fl_Color>(0xB3261E00);
inline constexpr auto amber = static_cast<Fl_Color>(0xF2C03000);
inline constexpr auto blue = static_cast<Fl_Color>(0x2F5F9E00);
inline constexpr int text_px = 13, small_px = 12;

/// A line of text at the left of its area, in the group being filled; it keeps its own copy.
Fl_Box* add_text(const window_layout::area& at, const std::string& text);
/// The heading of a part of the window.
Fl_Box* add_heading(const window_layout::area& at, const std::string& text);
/// Gives a button its action's label, tooltip and this window's look.
void dress(Fl_Widget& button, window_action action, language in);
/// The same for one that is no action of the window.
void dress(Fl_Widget& button, const std::string& label, const std::string& tooltip);

/// Changes a label, and draws it again, only when it differs.
void relabel(Fl_Widget& widget, const std::string& text);

}  // namespace window_style
