// Before the toolkit's headers, which bring the X server's macros.
#include <gtest/gtest.h>

#include "forms/wait_form.h"

#include <FL/Fl.H>
#include <FL/Fl_Double_Window.H>

#include <algorithm>
#include <cstddef>
#include <functional>

#include "tests/forms/screen_picture.h"
#include "tests/forms/texts.h"

namespace {

/// Processes events until `done`.
bool eventually(const std::function<bool()>& done) {
    return wait_until([&] {
        Fl::check();
        return done();
    });
}

TEST(WaitForm, IsASmallModalWindowWithItsMessage) {
    const OFD_wait_form form("Impression en cours ...");
    EXPECT_EQ(form.window->w(), 600);
    EXPECT_EQ(form.window->h(), 60);
    EXPECT_EQ(form.window->box(), FL_NO_BOX);
    EXPECT_STREQ(form.window->label(), "travail en cours ...");
    EXPECT_TRUE(form.window->modal());
    EXPECT_TRUE(form.window->shown());
    EXPECT_EQ(form.unused_first, 0);
    EXPECT_EQ(form.unused_second, 0);

    ASSERT_EQ(form.window->children(), 2);
    const Fl_Widget* box = form.window->child(0);
    EXPECT_EQ(box->box(), FL_UP_BOX);
    EXPECT_STREQ(box->label(), "");
    EXPECT_EQ(box->x(), 0);
    EXPECT_EQ(box->y(), 0);
    EXPECT_EQ(box->w(), 600);
    EXPECT_EQ(box->h(), 60);

    ASSERT_EQ(form.window->child(1), form.text);
    EXPECT_EQ(form.text->box(), FL_NO_BOX);
    EXPECT_STREQ(form.text->label(), "Impression en cours ...");
    EXPECT_EQ(form.text->align(), FL_ALIGN_INSIDE);
    EXPECT_EQ(form.text->labelsize(), FL_NORMAL_SIZE);
    EXPECT_EQ(form.text->x(), 10);
    EXPECT_EQ(form.text->y(), 10);
    EXPECT_EQ(form.text->w(), 580);
    EXPECT_EQ(form.text->h(), 40);
}

TEST(WaitForm, HoldsItsFieldsInOrder) {
    static_assert(offsetof(OFD_wait_form, window) == 0);
    static_assert(offsetof(OFD_wait_form, text) == sizeof(void*));
    static_assert(offsetof(OFD_wait_form, unused_first) == 2 * sizeof(void*));
    static_assert(offsetof(OFD_wait_form, unused_second) == 3 * sizeof(void*));
    static_assert(sizeof(OFD_wait_form) == 4 * sizeof(void*));
}

TEST(WaitForm, IsOnTheScreenOnceConstructed) {
    screen display;
    for (int i = 0; i < 10; ++i) {
        const OFD_wait_form form("Impression en cours ...");
        const screen_picture picture(area(display, *form.window));
        EXPECT_EQ(picture.at(20, 15), screen_colour(FL_GRAY)) << "the box, show " << i;
        EXPECT_GT(picture.count(0, 0, 600, 60, screen_colour(FL_GRAY)), 600 * 60 * 8 / 10);
        EXPECT_GT(picture.count_other(200, 15, 200, 30, screen_colour(FL_GRAY)), 300)
            << "the message, show " << i;
        EXPECT_EQ(picture.count_other(12, 12, 150, 36, screen_colour(FL_GRAY)), 0) << "centred";
        EXPECT_EQ(picture.count_other(440, 12, 148, 36, screen_colour(FL_GRAY)), 0) << "centred";
    }
}

TEST(WaitForm, LeavesTheScreenWithTheObject) {
    screen display;
    screen::place place{};
    {
        const OFD_wait_form form("Impression en cours ...");
        place = area(display, *form.window);
        ASSERT_EQ(screen_picture(place).at(20, 15), screen_colour(FL_GRAY));
    }
    EXPECT_EQ(Fl::first_window(), nullptr);
    EXPECT_EQ(Fl::modal(), nullptr);
    EXPECT_TRUE(
        eventually([&] { return screen_picture(place).at(20, 15) != screen_colour(FL_GRAY); }));
}

// What the queue held of a deleted window would be handed to the caller's own loop.
TEST(WaitForm, LeavesNothingInTheToolkitsQueueWhenClosed) {
    while (Fl::readqueue()) continue;
    {
        const OFD_wait_form form("Impression en cours ...");
        form.window->do_callback();  // as its window manager's button and Escape do
        EXPECT_FALSE(form.window->shown());
    }
    EXPECT_EQ(Fl::readqueue(), nullptr);
}

TEST(WaitForm, ComesUpAtTheMouse) {
    screen display;
    const struct { int x, y; } places[] = {{500, 400}, {800, 600}};
    for (const auto& mouse : places) {
        fl_open_display();
        XWarpPointer(fl_display, None, RootWindow(fl_display, fl_screen), 0, 0, 0, 0, mouse.x,
                     mouse.y);
        XSync(fl_display, False);
        const OFD_wait_form form("ici");
        EXPECT_TRUE(eventually([&] {
            const screen::place at = area(display, *form.window);
            return at.x <= mouse.x && mouse.x < at.x + at.w && at.y <= mouse.y &&
                   mouse.y < at.y + at.h;
        }));
    }
}

int passes = 0;
void count_pass(void*) { ++passes; }

TEST(WaitForm, ProcessesThePendingEventsOnce) {
    passes = 0;
    Fl::add_check(count_pass);
    {
        const OFD_wait_form form("une fois");
        EXPECT_EQ(passes, 1);
    }
    Fl::remove_check(count_pass);
}

TEST(WaitForm, TakesTheMessageAsItStandsAndKeepsItForGood) {
    for (const std::string& text : awkward_texts) {
        const char* kept;
        {
            std::string passing = text;
            const OFD_wait_form form(passing);
            std::ranges::fill(passing, '#');
            kept = form.text->label();
            EXPECT_EQ(kept, text);
        }
        EXPECT_EQ(kept, text) << "after the form";
    }
}

// The forms layer mirrors every y of a form, depending on what the program did before.
TEST(WaitForm, HasTheSameGeometryWhateverTheMirrorSwitch) {
    const char before = fl_flip;
    for (const char flip : {0, 1, 2}) {
        fl_flip = flip;
        const OFD_wait_form form("te");
        EXPECT_EQ(form.text->y(), 10);
        EXPECT_EQ(form.window->child(0)->y(), 0);
        EXPECT_EQ(fl_flip, flip) << "left as it was found";
    }
    fl_flip = before;
}

TEST(WaitForm, IsAWindowOfItsOwnInsideAnotherGroup) {
    Fl_Double_Window outer(100, 100);
    const OFD_wait_form form("te");
    EXPECT_EQ(form.window->parent(), nullptr);
    EXPECT_EQ(outer.children(), 0);
}

}  // namespace
