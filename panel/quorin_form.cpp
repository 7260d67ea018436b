#include "panel/quorin_form.h"

#include <FL/Fl_Box.H>
#include <FL/Fl_Button.H>
#include <FL/Fl_Double_Window.H>

#include "panel/form_children.h"

using quorin_form::child;
using quorin_form::shape;

namespace {

Fl_Button* make_button(const child& each) {
    auto* const button = new Fl_Button(each.x, each.y, each.w, each.h, each.label);
    button->type(FL_TOGGLE_BUTTON);
    return button;
}

Fl_Box* make_box(const child& each) {
    auto* const box = new Fl_Box(each.x, each.y, each.w, each.h, each.label);
    box->box(each.kind == shape::frame ? FL_UP_BOX : FL_FLAT_BOX);
    if (each.kind == shape::caption) {
        box->selection_color(FL_LIGHT1);
        box->align(FL_ALIGN_LEFT | FL_ALIGN_INSIDE);
    }
    return box;
}

Fl_Widget* make_widget(const child& each) {
    Fl_Widget* widget = nullptr;
    if (each.kind == shape::button)
        widget = make_button(each);
    else
        widget = make_box(each);
    widget->labelfont(FL_TIMES);
    return widget;
}

}  // namespace

quorin_class::quorin_class() : window(new Fl_Double_Window(1120, 190, "quorin")) {
    window->box(FL_NO_BOX);
    window->user_data(this);
    for (const child& each : quorin_form::children) {
        Fl_Widget* const widget = make_widget(each);
        if (each.member) kept[each.member - 1] = widget;
    }
    window->end();
}
