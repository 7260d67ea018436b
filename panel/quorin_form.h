// The control panel's form: one window with a toggle button for each of the ZK4's 13 outputs, an
// indicator for each of its 22 inputs, and captions.
#pragma once
#include <string_view>

#include <FL/Fl_Double_Window.H>

inline constexpr int quorin_members = 35;

class quorin_class {
public:
    Fl_Double_Window*
        window;  ///< 1120 by 190 pixels, titled "quorin"; its user data is this object.
    Fl_Widget* kept[quorin_members];  ///< The 13 buttons (Fl_Button) and 22 indicators (Fl_Box);
                                      ///< member n is kept[n - 1].

    /// Builds the window and its 71 children, which the window owns. Does not show it. Nothing here
    /// is ever deleted: the form lives as long as the program.
    quorin_class();
};

/// The place in quorin_class::kept of the button that drives the output `name`, or of the indicator
/// that shows the input `name`; -1 when there is none.
///
///     form->kept[quorin_place("RENT")];  // the button "RENT"
int quorin_place(std::string_view name);
