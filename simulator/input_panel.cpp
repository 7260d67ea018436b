#include "simulator/input_panel.h"

#include <unistd.h>

#include <FL/Fl_Button.H>
#include <FL/Fl_Check_Browser.H>

#include "simulator/panel_parts.h"

using panel_parts::shifted;

namespace {

constexpr int own_width = 400;
constexpr useconds_t pass_pause_us = 1000;

Fl_Check_Browser* add_check_list(int x, int height) {
    auto* list = new Fl_Check_Browser(x, 30, 180, shifted(height, -70));
    list->type(FL_MULTI_BROWSER);
    return list;
}

/// Lets the toolkit work, then takes the oldest widget used; null when there is none.
Fl_Widget* next_used_widget() {
    Fl::check();
    return Fl::readqueue();
}

/// Stores the signals, and clears on the screen those that are not sticky.
void send_signals(OFD_simulator_input& panel, int* values) {
    const int inputs = static_cast<int>(panel.names.size());
    for (int item = 1; item <= inputs; ++item) {
        values[item - 1] = panel.signal_browser->checked(item) ? 1 : 0;
        if (!panel.sticky_browser->checked(item)) panel.signal_browser->checked(item, 0);
    }
}

}  // namespace

OFD_simulator_input::OFD_simulator_input(int height)
    : OFD_simulator_input(panel_parts::begin_own_window(own_width, height), 0, height) {
    panel_parts::show_own_window(window, "Inputs Pannel");
}

OFD_simulator_input::OFD_simulator_input(Fl_Window* parent, int x, int height) : window(parent) {
    panel_parts::add_caption(shifted(x, 80), "Signal");
    panel_parts::add_caption(shifted(x, 280), "Sticky");
    signal_browser = add_check_list(shifted(x, 10), height);
    sticky_browser = add_check_list(shifted(x, 210), height);
    const int button_y = shifted(height, -30);
    go_button = panel_parts::add_button(shifted(x, 180), button_y, 60, "GO");
    init_button = panel_parts::add_button(shifted(x, 10), button_y, 60, "INIT");
    quit_button = panel_parts::add_button(shifted(x, 330), button_y, 60, "QUIT");
}

OFD_simulator_input::~OFD_simulator_input() {
    if (living_window.exists()) living_window.widget()->hide();
}

void OFD_simulator_input::add(const std::string& name) {
    names.push_back(name);
    ++count;
    for (Fl_Check_Browser* list : {signal_browser, sticky_browser}) {
        list->add(name.c_str());
        list->redraw();  // adding does not, and an item takes no click before it is drawn
    }
}

void OFD_simulator_input::check(int* init, int* quit, int* values) {
    const Fl_Widget* used;
    do {
        used = next_used_widget();
        *quit = used == quit_button;
        if (used != quit_button) *init = used == init_button;
        if (used == init_button) signal_browser->check_none();
        if (used == go_button) send_signals(*this, values);
        usleep(pass_pause_us);
    } while (used != quit_button && used != init_button && used != go_button);
}

void OFD_simulator_input::eval(int* quit, int* values) {
    *quit = next_used_widget() == quit_button;
    if (!*quit) {
        const int inputs = static_cast<int>(names.size());
        for (int item = 1; item <= inputs; ++item) {
            // The list would keep only the low byte of a value.
            signal_browser->checked(item, values[item - 1] != 0);
        }
    }
    usleep(pass_pause_us);
}
