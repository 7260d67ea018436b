// What the viewer's window is made of.
#include "tests/viewer/viewer_on_display.h"

#include <FL/Fl_Box.H>
#include <FL/Fl_Button.H>
#include <FL/forms.H>

#include <algorithm>
#include <functional>
#include <type_traits>

using namespace viewer_tests;

namespace {

struct row {
    const char* kind;
    int x, y, w, h;
    const char *french, *english;
    int box, type, label_font, label_size;
};

constexpr int any = -1;

// clang-format off
const row rows[] = {
    {"box",      0,   0, 930, 700, "", "",                               FL_UP_BOX,   any, any, any},
    {"browser", 10,  50, 910, 570, "(none)", "(none)",                   FL_DOWN_BOX, FL_HOLD_BROWSER, FL_TIMES, any},
    {"text",   280,  20, 310,  20, "", "",                               FL_NO_BOX,   any, FL_HELVETICA_BOLD, 12},
    {"text",    80,  20, 120,  20, "", "",                               FL_NO_BOX,   any, any, any},
    {"button", 300, 630, 120,  20, "page suivante", "next page",         FL_UP_BOX,   FL_NORMAL_BUTTON, FL_TIMES, 12},
    {"button", 300, 660, 120,  20, "page precedente", "previous page",   FL_UP_BOX,   FL_NORMAL_BUTTON, FL_TIMES, 12},
    {"button",  40, 630,  90,  50, "ANNULER", "CANCEL",                  FL_UP_BOX,   FL_NORMAL_BUTTON, FL_TIMES, 12},
    {"button", 500, 630, 100,  50, "fichier pdf", "pdf file",            FL_UP_BOX,   FL_NORMAL_BUTTON, FL_TIMES, 12},
    {"button", 750, 630, 100,  50, "fichier texte", "text file",         FL_UP_BOX,   FL_NORMAL_BUTTON, FL_TIMES, 12},
    {"input",  150, 645,  40,  20, "", "",                               any,         FL_NORMAL_INPUT, any, any},
    {"button", 190, 645,  20,  20, "", "",                               FL_UP_BOX,   FL_NORMAL_BUTTON, FL_HELVETICA, FL_NORMAL_SIZE},
};
// clang-format on

std::string kind_of(Fl_Widget* widget) {
    if (dynamic_cast<Fl_Box*>(widget)) return "box";
    if (dynamic_cast<Fl_Browser*>(widget)) return "browser";
    if (dynamic_cast<Fl_FormsText*>(widget)) return "text";
    if (dynamic_cast<Fl_Button*>(widget)) return "button";
    return dynamic_cast<Fl_Input*>(widget) ? "input" : "something else";
}

TEST(ViewerForm, HasElevenWidgetsInTheirOrderWhateverTheFormsLayersSwitchSays) {
    for (const int english : {0, 1, -7}) {
        for (const char mirrored : {0, 1, 2}) {
            SCOPED_TRACE(std::to_string(english) + ", " + std::to_string(mirrored));
            fl_flip = mirrored;
            OFD_afficheur viewer(nullptr, english);
            EXPECT_EQ(fl_flip, mirrored);
            ASSERT_EQ(viewer.window->children(), static_cast<int>(std::size(rows)));
            for (int i = 0; i < viewer.window->children(); ++i) {
                const row& wanted = rows[i];
                Fl_Widget* const made = viewer.window->child(i);
                SCOPED_TRACE(wanted.french);
                EXPECT_EQ(kind_of(made), wanted.kind);
                EXPECT_EQ(made->x(), wanted.x);
                EXPECT_EQ(made->y(), wanted.y);
                EXPECT_EQ(made->w(), wanted.w);
                EXPECT_EQ(made->h(), wanted.h);
                EXPECT_EQ(label_of(made), english ? wanted.english : wanted.french);
                EXPECT_TRUE(wanted.box == any || made->box() == wanted.box);
                EXPECT_TRUE(wanted.type == any || made->type() == wanted.type);
                EXPECT_TRUE(wanted.label_font == any || made->labelfont() == wanted.label_font);
                EXPECT_TRUE(wanted.label_size == any || made->labelsize() == wanted.label_size);
                EXPECT_EQ(made->labeltype(), FL_NORMAL_LABEL);
                EXPECT_EQ(made->callback(), &Fl_Widget::default_callback);
            }
        }
    }
}

TEST(ViewerForm, ItsWindowIsHiddenAndHasNoBox) {
    Fl_Window parent(10, 10);
    parent.end();
    OFD_afficheur viewer(&parent, 5);
    EXPECT_EQ(viewer.window->w(), 920);
    EXPECT_EQ(viewer.window->h(), 700);
    EXPECT_EQ(viewer.window->box(), FL_NO_BOX);
    EXPECT_FALSE(viewer.window->shown());
    EXPECT_EQ(Fl_Group::current(), nullptr) << "its form is ended";
    EXPECT_TRUE(parent.active());
    EXPECT_EQ(viewer.parent, &parent);
    EXPECT_EQ(viewer.english, 5);
    EXPECT_EQ(viewer.page, 0);
    EXPECT_EQ(viewer.unused_first, nullptr);
    EXPECT_EQ(viewer.unused_second, nullptr);
}

TEST(ViewerForm, ItsFieldsAreTheWidgetsOfTheirPlaces) {
    OFD_afficheur viewer(nullptr, 0);
    const Fl_Widget* const fields[] = {
        viewer.browser,         viewer.title,         viewer.page_indicator, viewer.next_button,
        viewer.previous_button, viewer.cancel_button, viewer.pdf_button,     viewer.text_button,
        viewer.page_input,      viewer.go_button};
    for (int i = 0; i < 10; ++i) EXPECT_EQ(viewer.window->child(i + 1), fields[i]) << i;
    EXPECT_EQ(viewer.browser->color(), static_cast<Fl_Color>(49));
    EXPECT_EQ(viewer.title->align(), static_cast<Fl_Align>(FL_ALIGN_INSIDE));
    EXPECT_EQ(viewer.page_indicator->align(), static_cast<Fl_Align>(FL_ALIGN_LEFT));
}

TEST(ViewerForm, ItsFieldsStandInTheirOrder) {
    OFD_afficheur viewer(nullptr, 0);
    const void* const fields[] = {
        &viewer.english,        &viewer.page,          &viewer.display_filter,
        &viewer.print_filter,   &viewer.text_filter,   &viewer.viewer_command,
        &viewer.window,         &viewer.parent,        &viewer.title,
        &viewer.page_indicator, &viewer.browser,       &viewer.previous_button,
        &viewer.next_button,    &viewer.cancel_button, &viewer.pdf_button,
        &viewer.text_button,    &viewer.page_input,    &viewer.go_button,
        &viewer.unused_first,   &viewer.unused_second};
    EXPECT_TRUE(std::ranges::is_sorted(fields, std::less<>()));
    static_assert(std::is_same_v<decltype(viewer.english), std::int32_t>);
    static_assert(std::is_same_v<decltype(viewer.page), std::int32_t>);
}

TEST(ViewerForm, BeforeItsFirstActivationItHasOneEmptyPage) {
    OFD_afficheur viewer(nullptr, 0);
    for (const auto step : {&OFD_afficheur::visu_page, &OFD_afficheur::page_suivante,
                            &OFD_afficheur::page_precedente}) {
        (viewer.*step)();
        EXPECT_EQ(shown(viewer), strings{});
        EXPECT_EQ(viewer.page, 0);
    }
    viewer.page_numero(0);
    EXPECT_EQ(label_of(viewer.page_indicator), "page 1 / 1    ");
    EXPECT_STREQ(viewer.page_input->value(), "1");
}

}  // namespace
