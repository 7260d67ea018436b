#include "station_view/window_body.h"

#include <FL/Fl.H>
#include <X11/keysym.h>

#include <initializer_list>
#include <utility>

namespace {

using placed_child = std::pair<int, window_layout::area>;

void place(const Fl_Group& group, std::initializer_list<placed_child> children) {
    for (const auto& [index, at] : children)
        group.child(index)->resize(group.x() + at.x, group.y() + at.y, at.w, at.h);
}

void set_seen(Fl_Widget& widget, bool seen) {
    if (seen != (widget.visible() != 0)) seen ? widget.show() : widget.hide();
}

constexpr int button_gap = 6;

enum part { picture, incidents, middle, faults, back };

}  // namespace

void window_body::take_buttons(const column_buttons& buttons) {
    buttons_ = buttons;
    show_buttons();
}

// The toolkit goes round only in a window that has several children.
int window_body::handle(int event) {
    if (Fl_Group::handle(event)) return 1;
    constexpr int others = FL_CTRL | FL_ALT | FL_META;
    const int key = Fl::event_key();
    const bool tab = key == FL_Tab || key == XK_ISO_Left_Tab;
    if (event != FL_KEYBOARD || !tab || Fl::event_state(others)) return 0;
    const bool back = Fl::event_state(FL_SHIFT) != 0;
    for (int i = 0; i < children(); ++i)
        if (child(back ? children() - 1 - i : i)->take_focus()) return 1;
    return 0;
}

void window_body::resize(int x, int y, int w, int h) {
    Fl_Widget::resize(x, y, w, h);
    arrange();
}

void window_body::arrange() {
    const auto now = window_layout::arranged(w(), h(), side_);
    one_column_ = now.one_column;
    // In a window that has room for both again, and then has not, the emergency stop is seen first.
    if (!one_column_) shows_faults_ = false;
    if (drawing_alone_) {
        const auto alone = window_layout::drawing_alone_arranged(w(), h());
        place(*this, {{picture, alone.picture}, {incidents, alone.incidents}, {back, alone.back}});
    } else {
        place(*this, {{picture, now.picture},
                      {incidents, now.incidents},
                      {middle, now.middle},
                      {faults, now.faults}});
        show_buttons();
    }
    show_parts();
    redraw();
}

void window_body::show_parts() {
    const bool both = !drawing_alone_ && !one_column_;
    const std::pair<part, bool> parts[] = {{back, drawing_alone_},
                                           {middle, both || (!drawing_alone_ && !shows_faults_)},
                                           {faults, both || (!drawing_alone_ && shows_faults_)}};
    bool keyboard_goes = false;
    for (const auto& [each, seen] : parts) {
        keyboard_goes = keyboard_goes || (!seen && child(each)->contains(Fl::focus()));
        set_seen(*child(each), seen);
    }
    if (keyboard_goes) give_keyboard();
}

// The journal's button takes the other one's place, too, where that is not seen.
void window_body::show_buttons() {
    if (!buttons_) return;
    const auto& [journal, to_faults, to_desk] = *buttons_;
    set_seen(*to_faults, one_column_);
    set_seen(*to_desk, one_column_);
    const int right = one_column_ ? to_faults->x() - button_gap : to_faults->x() + to_faults->w();
    journal->size(right - journal->x(), journal->h());
}

void window_body::change_drawing_alone() {
    drawing_alone_ = !drawing_alone_;
    arrange();
    give_keyboard();
}

void window_body::show_faults() {
    drawing_alone_ = false;
    shows_faults_ = true;
    arrange();
}

void window_body::show_desk() {
    shows_faults_ = false;
    arrange();
    buttons_->to_faults->take_focus();
}

// The toolkit would give it to the first box that the space bar ticks.
void window_body::give_keyboard() {
    const auto& column = static_cast<const Fl_Group&>(*child(middle));
    Fl_Widget* to = column.child(column.children() - 1);
    if (drawing_alone_) to = child(back);
    if (faults_for_desk()) to = buttons_->to_desk;
    to->take_focus();
}
