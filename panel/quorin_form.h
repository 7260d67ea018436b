// The control panel's form: one window with a toggle button for each of the ZK4's 13 outputs, an
// indicator for each of its 22 inputs, and captions.
#pragma once
#include <FL/Fl_Double_Window.H>

#include "panel/form_children.h"

/// The window and the widgets that the run loop needs. Nothing here is ever deleted: the form lives
/// as long as the program.
///
///     constexpr int rent = quorin_form::place_of(quorin_form::shape::button, "RENT");
///     const auto* const form = new quorin_class;
///     form->kept[rent]->label();  // "RENT"
class quorin_class {
public:
    /// 1120 by 190 pixels, titled "quorin"; its user data is this object. It owns all the widgets.
    Fl_Double_Window* window;
    /// The 13 buttons (Fl_Button) and 22 indicators
    /// (Fl_Box): member n, counted from 1, is kept[n - 1].
    Fl_Widget* kept[quorin_form::members];

    /// Builds the window and its 71 children, and does not show it. No group is being filled
    /// afterwards. Needs no display.
    quorin_class();
};
