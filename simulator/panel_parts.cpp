#include "simulator/panel_parts.h"

#include <FL/Fl_Box.H>
#include <FL/Fl_Button.H>
#include <FL/Fl_Window.H>
#include <FL/forms.H>

namespace panel_parts {

Fl_Window* begin_own_window(int width, int height) {
    // Without a place the toolkit makes a top-level window, whatever group was being filled.
    auto* window = new Fl_Window(width, height);
    window->box(FL_NO_BOX);
    new Fl_Box(FL_FLAT_BOX, 0, 0, width, height, "");
    return window;
}

void show_own_window(Fl_Window* window, const std::string& title) {
    // Unless the program went through fl_initialize, fl_end_form turns every y upside down.
    const char caller_flip = fl_flip;
    fl_flip = 0;
    fl_end_form();
    fl_flip = caller_flip;
    fl_show_form(window, FL_PLACE_MOUSE, FL_TRANSIENT, title.c_str());
    window->copy_label(title.c_str());  // fl_show_form kept the caller's characters
}

Fl_Button* add_button(int x, int y, int width, const char* label) {
    Fl_Button* button = fl_add_button(FL_NORMAL_BUTTON, x, y, width, 20, label);
    button->labelfont(FL_TIMES);
    button->labelsize(10);
    return button;
}

void add_caption(int x, const std::string& text) {
    Fl_FormsText* caption = fl_add_text(FL_NO_BOX, x, 10, 40, 20, nullptr);
    caption->align(FL_ALIGN_LEFT);
    caption->copy_label(text.c_str());
}

}  // namespace panel_parts
