#include "panel/quorin_form.h"

#include <FL/Fl_Box.H>
#include <FL/Fl_Button.H>
#include <FL/Fl_Double_Window.H>

#include <algorithm>
#include <iterator>

namespace {

enum class shape { frame, button, indicator, caption };

struct child {
    shape kind;
    int x, y, w, h;
    const char* label;
    int member = 0;  ///< Number in the class, from 1; 0 when it is not kept.
    const char* name =
        label;  ///< For a kept one: the output that it drives, or the input that it shows.
};

// In creation order, a later widget on top of an earlier one. Pixels from the window's top left.
// The frame is wider than the window and starts above it, so that its right and top edges are
// clipped. The captions of the second and third blockers carry two blanks.
// clang-format off
constexpr child children[] = {
    {shape::frame,       0,  -1, 1162, 191, nullptr},
    {shape::button,    210,  10,  60, 20, "RENT", 1},
    {shape::button,    210,  40,  60, 20, "SORT", 2},
    {shape::caption,   270,  10,  80, 20, "Rentrer tiroir"},
    {shape::caption,   270,  40,  80, 20, "Sortir tiroir"},
    {shape::button,    567,  10,  60, 20, "DESP", 3},
    {shape::button,    567,  40,  60, 20, "MONP", 4},
    {shape::caption,   627,  10, 110, 20, "Descendre presse"},
    {shape::caption,   627,  40,  80, 20, "Monter presse"},
    {shape::button,    210,  70,  60, 20, "DESV", 5},
    {shape::button,    210, 100,  60, 20, "MONV", 6},
    {shape::caption,   270,  70,  90, 20, "Descendre vent."},
    {shape::caption,   270, 100,  80, 20, "Monter vent."},
    {shape::button,    567,  70,  60, 20, "BZ1", 7},
    {shape::button,    210, 130,  60, 20, "ASPI", 8},
    {shape::caption,   270, 130,  80, 20, "Aspiration"},
    {shape::button,     10,  10,  70, 20, "MTA", 9},
    {shape::button,     10,  40,  70, 20, "MT", 10},
    {shape::caption,    82,  10, 123, 20, "Marche tapis att"},
    {shape::caption,    82,  40, 113, 20, "Marche tapis"},
    {shape::indicator, 391,  10,  60, 20, "te", 11},
    {shape::indicator, 391,  40,  60, 20, "ts", 12},
    {shape::indicator, 936,  70,  60, 20, "b1s", 13},
    {shape::indicator, 763,  70,  60, 20, "b1e", 14},
    {shape::indicator, 391,  70,  60, 20, "vb", 15},
    {shape::indicator, 391, 100,  60, 20, "vh", 16},
    {shape::indicator, 763,  10,  60, 20, "pb", 17},
    {shape::indicator, 763,  40,  60, 20, "ph", 18},
    {shape::caption,    82, 130, 113, 20, "presence piece"},
    {shape::indicator, 391, 130,  60, 20, "vide", 19},
    {shape::button,     10,  70,  70, 20, "DEPOSE", 20},
    {shape::caption,    82,  70, 113, 20, "depose colle"},
    {shape::indicator, 936, 100,  60, 20, "b2s", 21},
    {shape::indicator, 763, 100,  60, 20, "b2e", 22},
    {shape::indicator, 936, 130,  60, 20, "b3s", 23},
    {shape::indicator, 763, 130,  60, 20, "b3e", 24},
    {shape::indicator, 210, 160,  60, 20, "dc", 25},
    {shape::caption,   270, 160,  80, 20, "depart cycle"},
    {shape::indicator, 391, 160,  60, 20, "ac", 26},
    {shape::caption,   451, 160,  80, 20, "arret cycle"},
    {shape::button,    567, 100,  60, 20, "BZ2", 27},
    {shape::button,    567, 130,  60, 20, "BZ3", 28},
    {shape::caption,   627,  70,  80, 20, "Bloquer zone 1"},
    {shape::caption,   627, 130,  80, 20, "Bloquer zone 3"},
    {shape::caption,   627, 100,  80, 20, "Bloquer zone 2"},
    {shape::indicator,  10, 130,  70, 20, "pp", 29},
    {shape::indicator,  10, 160,  70, 20, "init", 30},
    {shape::caption,    82, 160,  80, 20, "initialisation"},
    {shape::caption,   451, 130,  80, 20, "vide actif"},
    {shape::caption,   451, 100,  80, 20, "ventouse haute"},
    {shape::caption,   451,  70,  80, 20, "ventouse basse"},
    {shape::caption,   451,  40,  80, 20, "tiroir sorti"},
    {shape::caption,   451,  10,  80, 20, "tiroir entre"},
    {shape::caption,   823,  10,  80, 20, "presse basse"},
    {shape::caption,   823,  40,  80, 20, "presse haute"},
    {shape::caption,   823,  70,  80, 20, "b1 entre"},
    {shape::caption,   996,  70,  80, 20, "b1 sorti"},
    {shape::caption,   823, 100,  80, 20, "b2  entre"},
    {shape::caption,   996, 100,  80, 20, "b2  sorti"},
    {shape::caption,   823, 130,  80, 20, "b3  entre"},
    {shape::caption,   996, 130,  80, 20, "b3  sorti"},
    {shape::indicator, 567, 160,  60, 20, "p1ok", 31},
    {shape::indicator, 763, 160,  60, 20, "p2ok", 32},
    {shape::caption,   627, 160, 108, 20, "presence 1 OK"},
    {shape::caption,   823, 160, 112, 20, "presence 2 OK"},
    {shape::caption,   996, 160, 109, 20, "presence 3 OK"},
    {shape::indicator, 936, 160,  60, 20, "p3ok", 33},
    {shape::indicator, 936,  10,  60, 20, "ATU", 34, "atu"},
    {shape::caption,   996,  10, 104, 20, "arret urgence"},
    {shape::indicator,  10, 100,  70, 20, "colle", 35},
    {shape::caption,    82, 100, 113, 20, "colle d\xC3\xA9pos\xC3\xA9" "e"},
};
// clang-format on

static_assert(std::size(children) == 71);
static_assert(std::ranges::count(children, shape::button, &child::kind) == 13);
static_assert(std::ranges::count(children, shape::indicator, &child::kind) == 22);
static_assert(std::ranges::count_if(children, [](const child& each) { return each.member != 0; }) ==
              quorin_members);

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
    if (each.kind == shape::button) {
        widget = make_button(each);
    } else {
        widget = make_box(each);
    }
    widget->labelfont(FL_TIMES);
    return widget;
}

}  // namespace

quorin_class::quorin_class() : window(new Fl_Double_Window(1120, 190, "quorin")) {
    window->box(FL_NO_BOX);
    window->user_data(this);
    for (const child& each : children) {
        Fl_Widget* const widget = make_widget(each);
        if (each.member) kept[each.member - 1] = widget;
    }
    window->end();
}

int quorin_place(std::string_view name) {
    const child* const found = std::ranges::find_if(
        children, [name](const child& each) { return each.member && each.name == name; });
    return found == std::end(children) ? -1 : found->member - 1;
}
