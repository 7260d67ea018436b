// The window's contents where the station is drawn: drawing, desk's column and faults or exercise,
// arranged anew with each size.
#pragma once
#include <FL/Fl_Group.H>

#include "station_view/window_layout.h"

class window_body : public Fl_Group {
public:
    /// In the group being filled. Its three children will be the three parts, in the order of
    /// `window_layout::arrangement`.
    explicit window_body(window_layout::side_part side)
        : Fl_Group(0, 0, window_layout::width, window_layout::height), side_(side) {}
    void resize(int x, int y, int w, int h) override;
    /// The drawing takes all of it, or gives the others their places again.
    void change_drawing_alone();

private:
    const window_layout::side_part side_;
    bool drawing_alone_ = false;
};
