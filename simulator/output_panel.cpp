#include "simulator/output_panel.h"

#include <algorithm>

#include <FL/Fl_Box.H>
#include <FL/Fl_Browser.H>
#include <FL/Fl_Button.H>

#include "simulator/panel_parts.h"

using panel_parts::shifted;

namespace {

/// Where the two constructors differ.
struct layout {
    int plus_x, minus_x;
    const char* minus_label;
    int lamp_spacing;
    Fl_Color lamp_selection;
};

// clang-format off
// In a window of its own, both buttons read "+"; the left one goes back all the same.
constexpr layout own_layout    = { 70, 30, "+", 16, FL_WHITE};
constexpr layout parent_layout = {150, 70, "-", 17, FL_RED};
// clang-format on

constexpr int own_width = 240;
constexpr std::int32_t value_not_given = 2;

Fl_Color lamp_colour(std::int32_t value) {
    return value == 0 ? FL_YELLOW : value == 1 ? FL_BLUE : FL_RED;
}

/// The rows that fit in a height, at most as many as
/// the lamp table holds; 0 or less for a low panel.
int rows_in(int height) {
    const std::int64_t fitting = (std::int64_t{height} - 85) / 16;
    return static_cast<int>(std::min<std::int64_t>(fitting, OFD_simulator_output::lamp_room));
}

Fl_Box* add_lamp(int x, int y, Fl_Color selection) {
    auto* lamp = new Fl_Box(x, y, 10, 12, "");
    lamp->box(FL_FLAT_BOX);
    lamp->selection_color(selection);
    lamp->labelfont(FL_TIMES);
    lamp->align(FL_ALIGN_LEFT | FL_ALIGN_INSIDE);
    lamp->hide();
    return lamp;
}

Fl_Button* add_page_button(OFD_simulator_output& panel, int x, int height, const char* label,
                           Fl_Callback* callback) {
    Fl_Button* button =
        panel_parts::add_button(shifted(panel.x_offset, x), shifted(height, -30), 20, label);
    button->callback(callback, &panel);
    return button;
}

void build(OFD_simulator_output& panel, int height, const layout& place) {
    panel.plus_button =
        add_page_button(panel, place.plus_x, height, "+", OFD_simulator_output_callback_plus);
    panel.minus_button = add_page_button(panel, place.minus_x, height, place.minus_label,
                                         OFD_simulator_output_callback_moins);
    panel.browser = new Fl_Browser(shifted(panel.x_offset, 20), 30, 198, shifted(height, -68));
    const int lamp_x = shifted(panel.x_offset, 7);
    for (int row = 0; row < panel.rows; ++row) {
        panel.lamps[row] = add_lamp(lamp_x, 34 + place.lamp_spacing * row, place.lamp_selection);
    }
}

/// The output that a row stands for on the page shown, or -1.
int output_of(const OFD_simulator_output& panel, int row) {
    if (row < 0 || row >= panel.rows) return -1;
    const std::int64_t output = std::int64_t{panel.rows} * panel.page + row;
    return output >= 0 && output < panel.count ? static_cast<int>(output) : -1;
}

void hide_lamps(OFD_simulator_output& panel) {
    for (int row = 0; row < panel.rows; ++row) panel.lamps[row]->hide();
}

void refill_rows(OFD_simulator_output& panel) {
    panel.browser->clear();
    for (int row = 0; row < panel.rows; ++row) {
        const int output = output_of(panel, row);
        if (output < 0) break;
        panel.browser->add(panel.name_array[output].c_str());
        panel.internal_colorise(row);
        panel.lamps[row]->show();
    }
}

/// Detaches the paging buttons that are still in the window from a panel that is going away, unless
/// the caller has given them other user data.
void forget_panel(const Fl_Group& window, const OFD_simulator_output& panel) {
    for (Fl_Button* button : {panel.plus_button, panel.minus_button}) {
        const bool lives = window.find(button) < window.children();
        if (lives && button->user_data() == &panel) button->user_data(nullptr);
    }
}

}  // namespace

OFD_simulator_output::OFD_simulator_output(int height, const std::string& title)
    : window(panel_parts::begin_own_window(own_width, height)), x_offset(0), rows(rows_in(height)) {
    build(*this, height, own_layout);
    panel_parts::show_own_window(window, title);
}

OFD_simulator_output::OFD_simulator_output(Fl_Window* parent, int x, int height,
                                           const std::string& title)
    : window(parent), x_offset(x), rows(rows_in(height)) {
    panel_parts::add_caption(shifted(x, 80), title);
    build(*this, height, parent_layout);
}

OFD_simulator_output::~OFD_simulator_output() {
    if (count > 0) {
        delete[] name_array;
        delete[] value_array;
    }
    if (living_window.exists()) {
        forget_panel(*living_window.widget()->as_group(), *this);
        living_window.widget()->hide();
    }
}

void OFD_simulator_output::add(const std::string& name) {
    names.push_back(name);
    auto* longer_names = new std::string[count + 1];
    auto* longer_values = new std::int32_t[count + 1];
    std::copy_n(name_array, count, longer_names);
    std::copy_n(value_array, count, longer_values);
    longer_names[count] = name;  // before the old array goes: `name` may stand in it
    longer_values[count] = value_not_given;
    if (count > 0) {
        delete[] name_array;
        delete[] value_array;
    }
    name_array = longer_names;
    value_array = longer_values;
    ++count;
    next_page();
}

void OFD_simulator_output::eval(int* values) {
    if (count >= 1) std::copy_n(values, count, value_array);
    for (int row = 0; row < rows; ++row) {
        if (lamps[row]->visible_r()) internal_colorise(row);
    }
}

void OFD_simulator_output::check() {}

void OFD_simulator_output::next_page() {
    const int last = rows > 0 ? (count - 1) / rows : 0;
    hide_lamps(*this);
    if (page < last) ++page;
    refill_rows(*this);
}

void OFD_simulator_output::previous_page() {
    hide_lamps(*this);
    if (page > 0) --page;
    refill_rows(*this);
}

void OFD_simulator_output::internal_colorise(int row) {
    const int output = output_of(*this, row);
    if (output < 0) return;
    const Fl_Color colour = lamp_colour(value_array[output]);
    if (lamps[row]->color() == colour) return;
    lamps[row]->color(colour, FL_BLACK);
    lamps[row]->redraw();
}

Fl_Widget* OFD_simulator_output::my_plus_button() { return plus_button; }
Fl_Widget* OFD_simulator_output::my_moins_button() { return minus_button; }

void OFD_simulator_output_callback_plus(Fl_Widget*, void* panel) {
    if (panel) static_cast<OFD_simulator_output*>(panel)->next_page();
}

void OFD_simulator_output_callback_moins(Fl_Widget*, void* panel) {
    if (panel) static_cast<OFD_simulator_output*>(panel)->previous_page();
}
