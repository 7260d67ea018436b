#include "station_view/window_body.h"

void window_body::resize(int x, int y, int w, int h) {
    Fl_Widget::resize(x, y, w, h);
    const window_layout::arrangement now = window_layout::arranged(w, h, side_);
    const window_layout::area parts[] = {
        drawing_alone_ ? window_layout::area{0, 0, w, h} : now.drawing, now.middle, now.faults};
    for (int i = 0; i < children(); ++i)
        child(i)->resize(x + parts[i].x, y + parts[i].y, parts[i].w, parts[i].h);
    redraw();
}

void window_body::change_drawing_alone() {
    drawing_alone_ = !drawing_alone_;
    for (int i = 1; i < children(); ++i) drawing_alone_ ? child(i)->hide() : child(i)->show();
    resize(x(), y(), w(), h());
}
