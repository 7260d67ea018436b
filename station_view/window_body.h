// The window's contents where the station is drawn: picture, incidents, desk's column and faults or
// exercise, arranged anew with each size; or the drawing alone.
#pragma once
#include <FL/Fl_Group.H>

#include "station_view/window_layout.h"

class window_body : public Fl_Group {
public:
    /// In the group being filled. Its children will be the four parts, in the order of
    /// `window_layout::arrangement`, and last the button that brings the rest back when the drawing
    /// is alone. The one that makes it so is the last in the desk's column.
    explicit window_body(window_layout::side_part side)
        : Fl_Group(0, 0, window_layout::width, window_layout::height), side_(side) {}
    void resize(int x, int y, int w, int h) override;
    /// The drawing takes all of it, or gives the others their places again.
    void change_drawing_alone();

private:
    void give_keyboard();

    const window_layout::side_part side_;
    bool drawing_alone_ = false;
};
