#include "station_view/mushroom_button.h"

#include <FL/Fl.H>
#include <FL/fl_draw.H>

#include <algorithm>

#include "station_view/window_style.h"

namespace {

constexpr auto plate = static_cast<Fl_Color>(0xF6C51B00), cap = static_cast<Fl_Color>(0xD2231700),
               cap_down = static_cast<Fl_Color>(0x8E150D00),
               rim = static_cast<Fl_Color>(0x5C0D0800);

constexpr int round_px = window_layout::emergency.h;

}  // namespace

int mushroom_button::handle(int event) {
    const bool key = event == FL_KEYBOARD && Fl::event_key() == ' ' && Fl::focus() == this;
    if (event != FL_PUSH && !key)
        return event == FL_DRAG || event == FL_RELEASE || Fl_Button::handle(event);
    // It acts when it goes down: an emergency does not wait for the finger.
    if (Fl::visible_focus()) Fl::focus(this);
    do_callback();
    return 1;
}

void mushroom_button::draw() {
    draw_box(FL_THIN_UP_BOX, plate);
    const int inset = value() ? 12 : 6;
    // In a low window it is an oval: its words need the width.
    const int wide = std::min(w(), std::max(h(), round_px)) - inset, high = h() - inset;
    const int left = x() + (w() - wide) / 2, top = y() + (h() - high) / 2;
    fl_color(rim);
    fl_pie(left, top, wide, high, 0, 360);
    const int edge = value() ? 6 : 3;
    fl_color(value() ? cap_down : cap);
    fl_pie(left + edge, top + edge, wide - 2 * edge, high - 2 * edge, 0, 360);
    fl_font(FL_HELVETICA_BOLD, value() ? 8 : 9);
    fl_color(FL_WHITE);
    fl_draw(label(), x(), y(), w(), h(), FL_ALIGN_CENTER, nullptr, 0);
    if (Fl::focus() == this) draw_focus(FL_THIN_UP_BOX, x(), y(), w(), h());
}
