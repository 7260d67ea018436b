#include "station_view/window_style.h"

#include <FL/Fl_Box.H>

namespace window_style {

Fl_Box* add_text(const window_layout::area& at, const std::string& text) {
    auto* const box = new Fl_Box(at.x, at.y, at.w, at.h);
    box->copy_label(text.c_str());
    box->align(FL_ALIGN_LEFT | FL_ALIGN_INSIDE);
    box->box(FL_FLAT_BOX);  // of its own, so that it can be drawn again alone
    box->color(paper);
    box->labelsize(text_px);
    box->labelcolor(ink);
    return box;
}

Fl_Box* add_heading(const window_layout::area& at, const std::string& text) {
    Fl_Box* const box = add_text(at, text);
    box->labelfont(FL_HELVETICA_BOLD);
    box->labelcolor(quiet_ink);
    return box;
}

void dress(Fl_Widget& button, window_action action, language in) {
    dress(button, row_of_action(action).label.in(in), tooltip_of(action, in));
}

void dress(Fl_Widget& button, const std::string& label, const std::string& tooltip) {
    button.copy_label(label.c_str());
    button.copy_tooltip(tooltip.c_str());
    button.box(FL_THIN_UP_BOX);
    button.color(window_style::button, amber);
    button.labelsize(text_px);
    button.labelcolor(ink);
}

void relabel(Fl_Widget& widget, const std::string& text) {
    if (widget.label() && text == widget.label()) return;
    widget.copy_label(text.c_str());
    widget.redraw();
}

}  // namespace window_style
