// A window in which keys do what its owner says, whichever of its widgets has the keyboard.
#pragma once
#include <FL/Fl_Double_Window.H>

#include <functional>

#include "station_view/window_actions.h"

class keyed_window : public Fl_Double_Window {
public:
    /// Asked for each key that goes down or up and that no widget has used itself; whether it was
    /// used. Escape never closes the window.
    using key_taker = std::function<bool(int symbol, bool shift, key_press what)>;

    keyed_window(int w, int h, const char* title, key_taker take, std::function<void()> left);
    int handle(int event) override;

private:
    key_press press_of(int event);

    key_taker take_;
    std::function<void()> left_;
    /// The toolkit's number of the key that is down; 0: none.
    int held_ = 0;
};
