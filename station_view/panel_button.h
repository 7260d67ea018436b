// A button that does what a function says.
#pragma once
#include <FL/Fl_Button.H>

#include <functional>

#include "station_view/window_style.h"

class panel_button : public Fl_Button {
public:
    /// In the group being filled, with its action's label and tooltip.
    panel_button(const window_layout::area& at, window_action action, language in,
                 std::function<void()> pressed)
        : Fl_Button(at.x, at.y, at.w, at.h), pressed_(std::move(pressed)) {
        window_style::dress(*this, action, in);
        callback([](Fl_Widget* self, void*) { static_cast<panel_button*>(self)->pressed_(); });
    }

private:
    std::function<void()> pressed_;
};
