// A button that does what a function says: once for each stroke of the space bar, unless its action
// repeats.
#pragma once
#include <FL/Fl_Button.H>

#include <functional>

#include "station_view/held_space.h"
#include "station_view/window_style.h"

class panel_button : public Fl_Button {
public:
    /// In the group being filled, with its action's label and tooltip.
    panel_button(const window_layout::area& at, window_action action, language in,
                 std::function<void()> pressed)
        : Fl_Button(at.x, at.y, at.w, at.h),
          pressed_(std::move(pressed)),
          repeats_(row_of_action(action).repeats) {
        window_style::dress(*this, action, in);
        callback([](Fl_Widget* self, void*) { static_cast<panel_button*>(self)->pressed_(); });
    }

    int handle(int event) override {
        return space_.repeats(event) && !repeats_ ? 1 : Fl_Button::handle(event);
    }

private:
    std::function<void()> pressed_;
    const bool repeats_;
    held_space space_;
};
