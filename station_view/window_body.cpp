#include "station_view/window_body.h"

#include <initializer_list>
#include <utility>

namespace {

using placed_child = std::pair<int, window_layout::area>;

void place(const Fl_Group& group, std::initializer_list<placed_child> children) {
    for (const auto& [index, at] : children)
        group.child(index)->resize(group.x() + at.x, group.y() + at.y, at.w, at.h);
}

enum part { picture, incidents, middle, faults, back };

}  // namespace

void window_body::resize(int x, int y, int w, int h) {
    Fl_Widget::resize(x, y, w, h);
    if (drawing_alone_) {
        const auto now = window_layout::drawing_alone_arranged(w, h);
        place(*this, {{picture, now.picture}, {incidents, now.incidents}, {back, now.back}});
    } else {
        const auto now = window_layout::arranged(w, h, side_);
        place(*this, {{picture, now.picture},
                      {incidents, now.incidents},
                      {middle, now.middle},
                      {faults, now.faults}});
    }
    redraw();
}

void window_body::change_drawing_alone() {
    drawing_alone_ = !drawing_alone_;
    for (const part each : {middle, faults})
        drawing_alone_ ? child(each)->hide() : child(each)->show();
    drawing_alone_ ? child(back)->show() : child(back)->hide();
    resize(x(), y(), w(), h());
    // The toolkit would give the keyboard to the first box that the space bar ticks.
    give_keyboard();
}

void window_body::give_keyboard() {
    Fl_Widget* button = child(back);
    if (!drawing_alone_) {
        auto& column = static_cast<Fl_Group&>(*child(middle));
        button = column.child(column.children() - 1);
    }
    button->take_focus();
}
