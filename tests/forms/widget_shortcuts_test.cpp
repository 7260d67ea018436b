// Before the toolkit's headers, which bring the X server's macros.
#include <gtest/gtest.h>

#include "forms/widget_shortcuts.h"

#include <FL/Fl_Box.H>
#include <FL/Fl_Check_Button.H>
#include <FL/Fl_Multi_Browser.H>
#include <FL/Fl_Multiline_Input.H>
#include <FL/Fl_Window.H>

#include <algorithm>
#include <climits>
#include <cstring>
#include <random>
#include <set>

#include "tests/forms/recording_surface.h"
#include "tests/forms/texts.h"

namespace {

/// The text in memory of its own, which is filled with other bytes and released right after the
/// call: a widget that kept a pointer into it would show that.
template <typename action>
void with_passing_text(const std::string& text, action act) {
    std::string passing = text;
    act(static_cast<const std::string&>(passing));
    std::ranges::fill(passing, '#');
}

TEST(SetSinput, SetsTheValueOfAnyInputField) {
    Fl_Input line(0, 0, 100, 20);
    Fl_Multiline_Input lines(0, 0, 100, 60);
    for (Fl_Input* input : {&line, static_cast<Fl_Input*>(&lines)}) {
        for (const std::string& text : awkward_texts) {
            with_passing_text(text, [&](auto& passing) { fl_set_Sinput(input, passing); });
            EXPECT_EQ(std::string(input->value(), input->size()), text);
        }
        fl_set_Sinput(input, "");
        EXPECT_EQ(input->size(), 0);
    }
}

TEST(SetSinput, StopsAtANulByte) {
    Fl_Input input(0, 0, 100, 20);
    fl_set_Sinput(&input, std::string("te\0rs", 5));
    EXPECT_STREQ(input.value(), "te");
}

TEST(AddStext, ReturnsANewTextWidgetWithALeftLabel) {
    Fl_Window window(300, 200);
    Fl_FormsText* text = fl_add_Stext(FL_UP_BOX, 10, 20, 200, 30, "Etat du poste");
    window.end();
    EXPECT_EQ(text->box(), FL_UP_BOX);
    EXPECT_EQ(text->x(), 10);
    EXPECT_EQ(text->y(), 20);
    EXPECT_EQ(text->w(), 200);
    EXPECT_EQ(text->h(), 30);
    EXPECT_EQ(text->align(), FL_ALIGN_LEFT);
    EXPECT_EQ(text->parent(), &window);
    EXPECT_STREQ(text->label(), "Etat du poste");
}

TEST(AddStext, KeepsACopyOfTheLabelForGood) {
    for (const std::string& label : awkward_texts) {
        Fl_FormsText* text = nullptr;
        with_passing_text(
            label, [&](auto& passing) { text = fl_add_Stext(FL_NO_BOX, 0, 0, 100, 30, passing); });
        const char* kept = text->label();
        EXPECT_EQ(kept, label);
        text->label("other");
        EXPECT_EQ(kept, label) << "after another label";
        text->copy_label("another");
        EXPECT_EQ(kept, label) << "after another copied label";
        delete text;
        EXPECT_EQ(kept, label) << "after the widget";
    }
}

TEST(AddStext, GivesEachWidgetItsOwnCopy) {
    Fl_Window window(300, 200);
    const Fl_FormsText* first = fl_add_Stext(FL_NO_BOX, 0, 0, 100, 30, "te");
    const Fl_FormsText* second = fl_add_Stext(FL_NO_BOX, 0, 30, 100, 30, "te");
    window.end();
    EXPECT_NE(first->label(), second->label());
}

TEST(AddBrowserSline, AppendsOneLine) {
    Fl_Browser browser(0, 0, 100, 100);
    Fl_Multi_Browser other(0, 0, 100, 100);
    for (Fl_Browser* each : {&browser, static_cast<Fl_Browser*>(&other)}) {
        for (const std::string& text : awkward_texts) {
            const int before = each->size();
            with_passing_text(text, [&](auto& passing) { fl_add_browser_Sline(each, passing); });
            ASSERT_EQ(each->size(), before + 1);
            EXPECT_EQ(each->text(each->size()), text);
        }
    }
}

TEST(ReplaceBrowserSline, ReplacesThatLineOnly) {
    Fl_Browser browser(0, 0, 100, 100);
    for (const char* line : {"un", "deux", "trois"}) fl_add_browser_Sline(&browser, line);
    for (const std::string& text : awkward_texts) {
        with_passing_text(text,
                          [&](auto& passing) { fl_replace_browser_Sline(&browser, 2, passing); });
        ASSERT_EQ(browser.size(), 3);
        EXPECT_STREQ(browser.text(1), "un");
        EXPECT_EQ(browser.text(2), text);
        EXPECT_STREQ(browser.text(3), "trois");
    }
    fl_replace_browser_Sline(&browser, 1, "premier");
    fl_replace_browser_Sline(&browser, 3, "dernier");
    EXPECT_STREQ(browser.text(1), "premier");
    EXPECT_STREQ(browser.text(3), "dernier");
}

TEST(ReplaceBrowserSline, ChangesNothingBeyondTheLines) {
    Fl_Browser browser(0, 0, 100, 100);
    fl_add_browser_Sline(&browser, "un");
    for (const int line : {INT_MIN, -1, 0, 2, INT_MAX}) {
        fl_replace_browser_Sline(&browser, line, "x");
        ASSERT_EQ(browser.size(), 1) << line;
        EXPECT_STREQ(browser.text(1), "un") << line;
    }
}

TEST(AddBrowserSlineIfNew, AddsALineOnce) {
    Fl_Browser browser(0, 0, 100, 100);
    const struct {
        const char* line;
        int added, size;
    } cases[] = {{"te", 1, 1},  {"te", 0, 1},  {"TE", 1, 2},   {"te ", 1, 3},
                 {" te", 1, 4}, {"t", 1, 5},   {"", 1, 6},     {"", 0, 6},
                 {"t", 0, 6},   {"@te", 1, 7}, {"\xE9", 1, 8}, {"\xE9", 0, 8}};
    for (const auto& [line, added, size] : cases) {
        EXPECT_EQ(fl_add_browser_Sline_if_new(&browser, line), added) << line;
        ASSERT_EQ(browser.size(), size) << line;
        if (added) {
            EXPECT_STREQ(browser.text(size), line);
        }
    }
}

TEST(AddBrowserSlineIfNew, ComparesLengthsToo) {
    Fl_Browser browser(0, 0, 100, 100);
    EXPECT_EQ(fl_add_browser_Sline_if_new(&browser, "te"), 1);
    EXPECT_EQ(fl_add_browser_Sline_if_new(&browser, std::string("te\0rs", 5)), 1);
    EXPECT_EQ(fl_add_browser_Sline_if_new(&browser, std::string("te\0", 3)), 1);
}

TEST(AddBrowserSlineIfNew, MakesASetOfAnyLines) {
    std::mt19937 random(61);
    std::set<std::string> seen;
    Fl_Browser browser(0, 0, 100, 100);
    for (int i = 0; i < 600; ++i) {
        std::string line;
        for (unsigned n = random() % 4; n > 0; --n) line += "ab@%"[random() % 4];
        EXPECT_EQ(fl_add_browser_Sline_if_new(&browser, line), seen.insert(line).second ? 1 : 0);
        ASSERT_EQ(browser.size(), static_cast<int>(seen.size()));
    }
    std::set<std::string> shown;
    for (int i = 1; i <= browser.size(); ++i) shown.insert(browser.text(i));
    EXPECT_EQ(shown, seen);
}

TEST(SetObjectSlabel, CutsOnlyWithinTheLength) {
    const struct {
        const char* label;
        int n;
        const char* shown;
    } cases[] = {{"tiroir", -1, "tiroir"},
                 {"tiroir", 0, ""},
                 {"tiroir", 1, "t"},
                 {"tiroir", 3, "tir"},
                 {"tiroir", 5, "tiroi"},
                 {"tiroir", 6, "tiroir"},
                 {"tiroir", 7, "tiroir"},
                 {"tiroir", INT_MAX, "tiroir"},
                 {"tiroir", INT_MIN, "tiroir"},
                 {"", 0, ""},
                 {"", -1, ""},
                 {"", 1, ""},
                 {"100 %s", 5, "100 %"}};
    Fl_Box box(0, 0, 100, 20);
    for (const auto& [label, n, shown] : cases) {
        fl_set_object_Slabel(&box, label, n);
        EXPECT_STREQ(box.label(), shown) << label << ", " << n;
    }
}

TEST(SetObjectSlabel, GivesAnyWidgetACopyOfItsOwn) {
    Fl_Window window(300, 200);
    Fl_Box box(0, 0, 100, 20, "literal");
    Fl_Check_Button button(0, 20, 100, 20);
    Fl_FormsText* text = fl_add_Stext(FL_NO_BOX, 0, 40, 100, 20, "kept");
    window.end();
    const char* kept = text->label();
    for (Fl_Widget* widget : {static_cast<Fl_Widget*>(&box), static_cast<Fl_Widget*>(&button),
                              static_cast<Fl_Widget*>(text), static_cast<Fl_Widget*>(&window)}) {
        for (const std::string& label : awkward_texts) {
            with_passing_text(label, [&](auto& passing) { fl_set_object_Slabel(widget, passing); });
            EXPECT_EQ(widget->label(), label);
        }
    }
    EXPECT_STREQ(kept, "kept");
}

TEST(DrwString, SetsFontAndColourThenDrawsAsTheToolkitDoes) {
    for (const std::string& text : awkward_texts) {
        for (const unsigned align : {0u, 4u, 20u, 21u, 0x80u | 20u}) {
            EXPECT_EQ(calls_of([&] { fl_drw_String(align, 10, 20, 100, 30, 88, 14, 4, text); }),
                      calls_of([&] {
                          fl_font(4, 14);
                          fl_color(88);
                          fl_draw(text.c_str(), 10, 20, 100, 30, align, nullptr, 1);
                      }));
        }
    }
}

TEST(DrwString, TakesTheSizeBeforeTheFont) {
    EXPECT_EQ(calls_of([] { fl_drw_String(FL_ALIGN_CENTER, 10, 20, 100, 30, 88, 14, 4, "RENT"); }),
              (call_list{"font 4 14", "color 88", "draw 46 38 RENT"}));
}

TEST(DrwString, DrawsSymbols) {
    const call_list calls = calls_of([] { fl_drw_String(0, 0, 0, 50, 50, 88, 14, 4, "@->"); });
    EXPECT_NE(std::ranges::find(calls, "begin_polygon"), calls.end());
}

}  // namespace
