// How an activation of the viewer ends.
#include "tests/viewer/viewer_on_display.h"

using namespace viewer_tests;

namespace {

TEST_F(ViewerOnDisplay, NothingToShowReturnsAtOnceWithTheParentActive) {
    viewer->activation(nullptr, 5, "", "");
    EXPECT_TRUE(parent.active());
    std::list<std::string> none;
    parent.deactivate();
    viewer->activation(none, "", "");
    EXPECT_TRUE(parent.active());
}

TEST_F(ViewerOnDisplay, NoLineAtAllShowsOneEmptyPage) {
    std::string line = "x";
    for (const int count : {0, -3}) {
        robot user;
        user.until("an empty page", [&](Fl_Window&) {
            return label_of(viewer->page_indicator) == "page 1 / 1    " && shown(*viewer).empty();
        });
        user.click("ANNULER");
        viewer->activation(&line, count, "", "");
    }
}

TEST_F(ViewerOnDisplay, ClosingTheWindowEndsTheArrayForm) {
    strings lines = numbered(3);
    const struct {
        const char* how;
        std::function<void(robot&)> close;
    } ways[] = {{"the window manager", [](robot& user) { user.close(); }},
                {"Escape", [](robot& user) { user.press(XK_Escape); }}};
    for (const auto& [how, close] : ways) {
        SCOPED_TRACE(how);
        robot user;
        close(user);
        show(lines);
        EXPECT_FALSE(viewer->window->shown());
        EXPECT_TRUE(parent.active());
    }
}

TEST_F(ViewerOnDisplay, AWindowHiddenWithoutAnEventEndsTheArrayFormAtTheNextEvent) {
    strings lines = numbered(3);
    int rounds = 0;
    robot user;
    user.until("hide", [&](Fl_Window& window) {
        window.hide();
        return true;
    });
    watcher look([&] {
        if (viewer->window->shown()) return false;
        if (++rounds < 30) return false;
        viewer->browser->do_callback();
        return true;
    });
    show(lines);
    EXPECT_EQ(rounds, 30) << "not before the event";
}

TEST_F(ViewerOnDisplay, OnlyCancelEndsTheListForm) {
    std::list<std::string> lines = {"#C 600 ", "l1", "l2"};
    const struct {
        const char* how;
        std::function<void(robot&)> close;
    } ways[] = {{"the window manager", [](robot& user) { user.close(); }},
                {"Escape", [](robot& user) { user.press(XK_Escape); }}};
    for (const auto& [how, close] : ways) {
        SCOPED_TRACE(how);
        int rounds = 0;
        robot user;
        sees_page(user, "page 1 / 1    ", 1, 2);
        close(user);
        watcher look([&] {
            if (viewer->window->shown()) return false;
            EXPECT_FALSE(parent.active());
            if (++rounds < 30) return false;
            viewer->next_button->do_callback();
            viewer->cancel_button->do_callback();
            return true;
        });
        viewer->activation(lines, "Liste", "true");
        EXPECT_EQ(rounds, 30) << "it goes on while closed";
        EXPECT_TRUE(parent.active());
    }
}

TEST_F(ViewerOnDisplay, TheListFormWorksOnACopyThatGoesWithIt) {
    const strings lines = numbered(78);
    std::list<std::string> given(lines.begin(), lines.end());
    robot user;
    user.click("page suivante");
    user.until("the second page of the copy", [&](Fl_Window&) {
        given.clear();
        return shown(*viewer) == page_of(78, 78);
    });
    user.click("page precedente");
    sees_page(user, "page 1 / 2    ", 1, 77);
    user.click("ANNULER");
    viewer->activation(given, "Liste", "true");
    viewer->visu_page();
    EXPECT_EQ(shown(*viewer), strings{}) << "no line is left to show";
    EXPECT_EQ(viewer->print_filter->count, 0);
    EXPECT_EQ(viewer->text_filter->count, 0);
}

}  // namespace
