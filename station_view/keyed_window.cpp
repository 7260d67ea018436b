#include "station_view/keyed_window.h"

#include <FL/Fl.H>

#include <utility>

namespace {

/// The key, or the sign that it stands for: where "+" is depends on the keyboard.
int symbol() {
    const char text = Fl::event_length() == 1 ? *Fl::event_text() : '\0';
    return text == '+' || text == '-' ? text : Fl::event_key();
}

}  // namespace

keyed_window::keyed_window(int w, int h, const char* title, key_taker take,
                           std::function<void()> left)
    : Fl_Double_Window(w, h, title), take_(std::move(take)), left_(std::move(left)) {}

key_press keyed_window::press_of(int event) {
    const int key = Fl::event_key();
    if (event == FL_KEYUP) {
        if (held_ == key) held_ = 0;
        return key_press::up;
    }
    return std::exchange(held_, key) == key ? key_press::repeat : key_press::down;
}

int keyed_window::handle(int event) {
    if (event == FL_UNFOCUS) {
        held_ = 0;
        left_();
    }
    if (event != FL_KEYBOARD && event != FL_SHORTCUT && event != FL_KEYUP)
        return Fl_Double_Window::handle(event);
    const key_press what = press_of(event);
    constexpr int others = FL_CTRL | FL_ALT | FL_META;
    if (!Fl::event_state(others) && take_(symbol(), Fl::event_state(FL_SHIFT) != 0, what)) return 1;
    // The toolkit would take it for the window's cross.
    if (event == FL_SHORTCUT && Fl::event_key() == FL_Escape) return 1;
    return Fl_Double_Window::handle(event);
}
