#include "station_view/held_button.h"

#include <FL/Fl.H>

held_button::held_button(int x, int y, int w, int h, std::function<void(bool held)> changed)
    : Fl_Button(x, y, w, h), changed_(std::move(changed)) {}

void held_button::hold(bool held) {
    if (held == held_) return;
    held_ = held;
    changed_(held);
}

int held_button::handle(int event) {
    const bool by_key = Fl::event_key() == ' ' && Fl::focus() == this;
    switch (event) {
        case FL_PUSH:
            if (Fl::visible_focus()) Fl::focus(this);
            hold(true);
            return 1;
        case FL_DRAG:
            return 1;
        case FL_RELEASE:
        case FL_HIDE:
            hold(false);
            return 1;
        case FL_UNFOCUS:
            hold(false);
            return Fl_Button::handle(event);
        case FL_KEYBOARD:
            if (by_key) hold(true);
            return by_key;
        case FL_KEYUP:
            if (by_key) hold(false);
            return by_key;
        default:
            return Fl_Button::handle(event);
    }
}
