// The form's children one by one, as a user's drawing of the panel lists them.
#include "panel/quorin_form.h"

#include <type_traits>

// The header alone lets a caller use the form's window as any other.
static_assert(std::is_convertible_v<decltype(quorin_class::window), Fl_Window*>);

#include <FL/Fl.H>
#include <FL/Fl_Box.H>
#include <FL/Fl_Button.H>
#include <FL/Fl_Double_Window.H>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <memory>
#include <set>
#include <string>
#include <string_view>

#include "panel/run_loop.h"

namespace {

struct row {
    std::string_view kind;
    int x, y, w, h;
    const char* label;
    int member;
    std::string_view name;
};

// clang-format off
constexpr row rows[] = {
    {"frame", 0, -1, 1162, 191, nullptr, 0, ""},
    {"button", 210, 10, 60, 20, "RENT", 1, "RENT"},
    {"button", 210, 40, 60, 20, "SORT", 2, "SORT"},
    {"caption", 270, 10, 80, 20, "Rentrer tiroir", 0, ""},
    {"caption", 270, 40, 80, 20, "Sortir tiroir", 0, ""},
    {"button", 567, 10, 60, 20, "DESP", 3, "DESP"},
    {"button", 567, 40, 60, 20, "MONP", 4, "MONP"},
    {"caption", 627, 10, 110, 20, "Descendre presse", 0, ""},
    {"caption", 627, 40, 80, 20, "Monter presse", 0, ""},
    {"button", 210, 70, 60, 20, "DESV", 5, "DESV"},
    {"button", 210, 100, 60, 20, "MONV", 6, "MONV"},
    {"caption", 270, 70, 90, 20, "Descendre vent.", 0, ""},
    {"caption", 270, 100, 80, 20, "Monter vent.", 0, ""},
    {"button", 567, 70, 60, 20, "BZ1", 7, "BZ1"},
    {"button", 210, 130, 60, 20, "ASPI", 8, "ASPI"},
    {"caption", 270, 130, 80, 20, "Aspiration", 0, ""},
    {"button", 10, 10, 70, 20, "MTA", 9, "MTA"},
    {"button", 10, 40, 70, 20, "MT", 10, "MT"},
    {"caption", 82, 10, 123, 20, "Marche tapis att", 0, ""},
    {"caption", 82, 40, 113, 20, "Marche tapis", 0, ""},
    {"indicator", 391, 10, 60, 20, "te", 11, "te"},
    {"indicator", 391, 40, 60, 20, "ts", 12, "ts"},
    {"indicator", 936, 70, 60, 20, "b1s", 13, "b1s"},
    {"indicator", 763, 70, 60, 20, "b1e", 14, "b1e"},
    {"indicator", 391, 70, 60, 20, "vb", 15, "vb"},
    {"indicator", 391, 100, 60, 20, "vh", 16, "vh"},
    {"indicator", 763, 10, 60, 20, "pb", 17, "pb"},
    {"indicator", 763, 40, 60, 20, "ph", 18, "ph"},
    {"caption", 82, 130, 113, 20, "presence piece", 0, ""},
    {"indicator", 391, 130, 60, 20, "vide", 19, "vide"},
    {"button", 10, 70, 70, 20, "DEPOSE", 20, "DEPOSE"},
    {"caption", 82, 70, 113, 20, "depose colle", 0, ""},
    {"indicator", 936, 100, 60, 20, "b2s", 21, "b2s"},
    {"indicator", 763, 100, 60, 20, "b2e", 22, "b2e"},
    {"indicator", 936, 130, 60, 20, "b3s", 23, "b3s"},
    {"indicator", 763, 130, 60, 20, "b3e", 24, "b3e"},
    {"indicator", 210, 160, 60, 20, "dc", 25, "dc"},
    {"caption", 270, 160, 80, 20, "depart cycle", 0, ""},
    {"indicator", 391, 160, 60, 20, "ac", 26, "ac"},
    {"caption", 451, 160, 80, 20, "arret cycle", 0, ""},
    {"button", 567, 100, 60, 20, "BZ2", 27, "BZ2"},
    {"button", 567, 130, 60, 20, "BZ3", 28, "BZ3"},
    {"caption", 627, 70, 80, 20, "Bloquer zone 1", 0, ""},
    {"caption", 627, 130, 80, 20, "Bloquer zone 3", 0, ""},
    {"caption", 627, 100, 80, 20, "Bloquer zone 2", 0, ""},
    {"indicator", 10, 130, 70, 20, "pp", 29, "pp"},
    {"indicator", 10, 160, 70, 20, "init", 30, "init"},
    {"caption", 82, 160, 80, 20, "initialisation", 0, ""},
    {"caption", 451, 130, 80, 20, "vide actif", 0, ""},
    {"caption", 451, 100, 80, 20, "ventouse haute", 0, ""},
    {"caption", 451, 70, 80, 20, "ventouse basse", 0, ""},
    {"caption", 451, 40, 80, 20, "tiroir sorti", 0, ""},
    {"caption", 451, 10, 80, 20, "tiroir entre", 0, ""},
    {"caption", 823, 10, 80, 20, "presse basse", 0, ""},
    {"caption", 823, 40, 80, 20, "presse haute", 0, ""},
    {"caption", 823, 70, 80, 20, "b1 entre", 0, ""},
    {"caption", 996, 70, 80, 20, "b1 sorti", 0, ""},
    {"caption", 823, 100, 80, 20, "b2  entre", 0, ""},
    {"caption", 996, 100, 80, 20, "b2  sorti", 0, ""},
    {"caption", 823, 130, 80, 20, "b3  entre", 0, ""},
    {"caption", 996, 130, 80, 20, "b3  sorti", 0, ""},
    {"indicator", 567, 160, 60, 20, "p1ok", 31, "p1ok"},
    {"indicator", 763, 160, 60, 20, "p2ok", 32, "p2ok"},
    {"caption", 627, 160, 108, 20, "presence 1 OK", 0, ""},
    {"caption", 823, 160, 112, 20, "presence 2 OK", 0, ""},
    {"caption", 996, 160, 109, 20, "presence 3 OK", 0, ""},
    {"indicator", 936, 160, 60, 20, "p3ok", 33, "p3ok"},
    {"indicator", 936, 10, 60, 20, "ATU", 34, "atu"},
    {"caption", 996, 10, 104, 20, "arret urgence", 0, ""},
    {"indicator", 10, 100, 70, 20, "colle", 35, "colle"},
    {"caption", 82, 100, 113, 20, "colle d\xC3\xA9pos\xC3\xA9" "e", 0, ""},
};
// clang-format on

constexpr int child_count = static_cast<int>(std::size(rows));

/// A form whose window and object go when the test ends.
struct one_form {
    std::unique_ptr<quorin_class> form = std::make_unique<quorin_class>();
    ~one_form() { delete form->window; }
    quorin_class* operator->() const { return form.get(); }
};

TEST(PanelForm, ItsWindowIsTitledSizedAndNotShown) {
    const one_form form;
    EXPECT_STREQ(form->window->label(), "quorin");
    EXPECT_EQ(form->window->w(), 1120);
    EXPECT_EQ(form->window->h(), 190);
    EXPECT_EQ(form->window->box(), FL_NO_BOX);
    EXPECT_EQ(form->window->user_data(), form.form.get());
    EXPECT_FALSE(form->window->shown());
    EXPECT_EQ(Fl_Group::current(), nullptr) << "the window's group is ended";
    EXPECT_EQ(form->window->resizable(), nullptr)
        << "none is declared: free resizing is asked for when it is shown";
}

TEST(PanelForm, HasTheseChildrenInThisOrder) {
    const one_form form;
    ASSERT_EQ(form->window->children(), child_count);
    for (int i = 0; i < child_count; ++i) {
        const row& expected = rows[i];
        SCOPED_TRACE(std::to_string(i + 1) + " " + (expected.label ? expected.label : "frame"));
        const Fl_Widget* const child = form->window->child(i);
        EXPECT_EQ(child->x(), expected.x);
        EXPECT_EQ(child->y(), expected.y);
        EXPECT_EQ(child->w(), expected.w);
        EXPECT_EQ(child->h(), expected.h);
        EXPECT_STREQ(child->label(), expected.label);
        EXPECT_EQ(child->labelfont(), FL_TIMES);
        EXPECT_EQ(child->callback(), Fl_Widget::default_callback)
            << "it must land in the queue of used widgets";
    }
}

TEST(PanelForm, EachKindHasItsBoxTypeAndColours) {
    const one_form form;
    const Fl_Box plain_box(0, 0, 1, 1);
    const Fl_Button plain_button(0, 0, 1, 1);
    for (int i = 0; i < child_count; ++i) {
        const std::string kind(rows[i].kind);
        SCOPED_TRACE(std::to_string(i + 1) + " " + kind);
        Fl_Widget* const child = form->window->child(i);
        auto* const button = dynamic_cast<Fl_Button*>(child);
        EXPECT_EQ(button != nullptr, kind == "button");
        EXPECT_EQ(dynamic_cast<Fl_Box*>(child) != nullptr, kind != "button");
        EXPECT_EQ(child->color(), FL_BACKGROUND_COLOR)
            << "the toolkit's default until the first publication";
        if (button) {
            EXPECT_EQ(child->type(), 1);
            EXPECT_EQ(button->value(), 0) << "released";
            EXPECT_EQ(child->box(), plain_button.box());
            EXPECT_EQ(child->selection_color(), plain_button.selection_color());
            EXPECT_EQ(child->align(), plain_button.align());
        } else {
            EXPECT_EQ(child->box(), kind == "frame" ? 2 : 1);
            EXPECT_EQ(child->selection_color(),
                      kind == "caption" ? 50u : plain_box.selection_color());
            EXPECT_EQ(child->align(), kind == "caption" ? 20u : plain_box.align());
        }
    }
}

TEST(PanelForm, KeepsItsButtonsAndIndicatorsByTheirNumbers) {
    const one_form form;
    std::set<int> seen;
    for (int i = 0; i < child_count; ++i) {
        const int member = rows[i].member;
        EXPECT_EQ(member != 0, rows[i].kind == "button" || rows[i].kind == "indicator");
        if (!member) continue;
        EXPECT_EQ(form->kept[member - 1], form->window->child(i)) << member;
        seen.insert(member);
    }
    EXPECT_EQ(seen.size(), static_cast<std::size_t>(quorin_form::members));
    EXPECT_EQ(offsetof(quorin_class, window), 0u);
    EXPECT_EQ(offsetof(quorin_class, kept), sizeof(void*));
    EXPECT_EQ(sizeof(quorin_class), (1 + seen.size()) * sizeof(void*));
}

using enum quorin_form::shape;

consteval bool names_lead_to_their_members() {
    for (const row& each : rows) {
        if (!each.member) continue;
        const quorin_form::shape kind = each.kind == "button" ? button : indicator;
        if (quorin_form::place_of(kind, each.name) != each.member - 1) return false;
    }
    return true;
}
static_assert(names_lead_to_their_members());

/// A text that may be a template's argument.
template <std::size_t size>
struct fixed_text {
    char bytes[size]{};
    consteval fixed_text(const char (&text)[size]) { std::ranges::copy(text, bytes); }
};

/// Whether a name's place compiles.
template <quorin_form::shape kind, fixed_text name>
concept has_a_place = requires {
    typename std::integral_constant<int, quorin_form::place_of(kind, name.bytes)>;
};

static_assert(has_a_place<button, "RENT"> && has_a_place<indicator, "te">);
static_assert(!has_a_place<indicator, "RENT"> && !has_a_place<button, "te">);
static_assert(!has_a_place<indicator, "ATU">, "its name is that of the input");
static_assert(!has_a_place<indicator, "timer10_term">);
static_assert(!has_a_place<caption, "Rentrer tiroir"> && !has_a_place<button, "Rentrer tiroir">);
static_assert(!has_a_place<button, ""> && !has_a_place<button, "rent">);
static_assert(!has_a_place<indicator, "te "> && !has_a_place<indicator, "t">);

/// Whether a table of buttons with these names compiles.
template <fixed_text... names>
concept joins_the_buttons = requires {
    typename std::integral_constant<std::size_t,
                                    quorin_form::join(button, {names.bytes...}).size()>;
};

static_assert(joins_the_buttons<"DEPOSE", "MTA", "MT", "ASPI", "RENT", "SORT", "DESV", "MONV",
                                "DESP", "MONP", "BZ1", "BZ2", "BZ3">);
static_assert(!joins_the_buttons<"DEPOSE", "MTA", "MT", "ASPI", "RENT", "SORT", "DESV", "MONV",
                                 "DESP", "MONP", "BZ1", "BZ2">,
              "one is left out");
static_assert(!joins_the_buttons<"DEPOSE", "MTA", "MT", "ASPI", "RENT", "SORT", "DESV", "MONV",
                                 "DESP", "MONP", "BZ1", "BZ2", "BZ2">,
              "one is there twice");
static_assert(!joins_the_buttons<"DEPOSE", "MTA", "MT", "ASPI", "RENT", "SORT", "DESV", "MONV",
                                 "DESP", "MONP", "BZ1", "BZ2", "te">,
              "one is an input");
static_assert(!joins_the_buttons<"DEPOSE", "MTA", "MT", "ASPI", "RENT", "SORT", "DESV", "MONV",
                                 "DESP", "MONP", "BZ1", "BZ2", "BZ4">,
              "one is nothing");

TEST(PanelForm, ItsFrameReachesBeyondTheWindowAndWidgetsElsewhereStayInside) {
    const one_form form;
    const Fl_Widget* const frame = form->window->child(0);
    EXPECT_GT(frame->x() + frame->w(), form->window->w());
    EXPECT_LT(frame->y(), 0);
    for (int i = 1; i < child_count; ++i) {
        EXPECT_LE(form->window->child(i)->x() + form->window->child(i)->w(), 1120);
        EXPECT_LE(form->window->child(i)->y() + form->window->child(i)->h(), 190);
    }
}

TEST(PanelOutputs, TheTableOfStatesStartsAtZeroAndIsReset) {
    ASSERT_EQ(std::size(etat_sorties), quorin_form::count_of(button));
    for (const std::int32_t state : etat_sorties) EXPECT_EQ(state, 0);
    for (std::int32_t& state : etat_sorties) state = -1;
    reset_outputs();
    for (const std::int32_t state : etat_sorties) EXPECT_EQ(state, 0);
}

TEST(PanelRun, AClientThatCouldNotBeAttachedIsRefusedWithoutADisplay) {
    char program[] = "quorin";
    char* words[] = {program, nullptr};
    testing::internal::CaptureStdout();
    testing::internal::CaptureStderr();
    activation(1, words, reinterpret_cast<IOsharemem_client*>(-1));
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "probleme sur shmat() en mode client\n\n");
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
    EXPECT_EQ(Fl::first_window(), nullptr);
}

}  // namespace
