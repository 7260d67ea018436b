// What the viewer's user sees and does.
#include "tests/viewer/viewer_on_display.h"

using namespace viewer_tests;

namespace {

TEST_F(ViewerOnDisplay, PagesWithItsTwoButtonsAndStopsAtBothEnds) {
    strings lines = numbered(78);
    robot user;
    sees_page(user, "page 1 / 2    ", 1, 77);
    user.click("page precedente");
    after_a_while(user, "still the first", [&] { return viewer->page == 0; });
    user.click("page suivante");
    sees_page(user, "page 2 / 2    ", 78, 78);
    user.click("page suivante");
    after_a_while(user, "still the second", [&] { return viewer->page == 1; });
    user.click("page precedente");
    sees_page(user, "page 1 / 2    ", 1, 77);
    user.click("ANNULER");
    show(lines);
}

TEST_F(ViewerOnDisplay, JumpsToATypedPageAndIgnoresThoseThatDoNotExist) {
    strings lines = numbered(77 * 3);
    robot user;
    type_page(user, "3");
    sees_page(user, "page 3 / 3    ", 155, 231);
    for (const char* const nowhere :
         {"0", "4", "-1", "4294967297", "-9223372036854775808", "abc", "", "1.5"}) {
        type_page(user, nowhere);
        after_a_while(user, std::string("not ") + nowhere, [&] { return viewer->page == 2; });
    }
    type_page(user, "2");
    sees_page(user, "page 2 / 3    ", 78, 154);
    user.until_value("2");
    user.click("page suivante").until_value("3");
    user.click("ANNULER");
    show(lines);
}

TEST_F(ViewerOnDisplay, JumpsByTheKeyboard) {
    strings lines = numbered(78);
    robot user;
    empty_page_input(user);
    user.type("2").until_value("2").press(XK_Tab).press(XK_space);
    sees_page(user, "page 2 / 2    ", 78, 78);
    user.click("ANNULER");
    show(lines);
}

TEST_F(ViewerOnDisplay, ItsParentRestsAndItsTitleShows) {
    strings lines = numbered(1);
    robot user;
    user.until("the window", [&](Fl_Window& window) {
        EXPECT_EQ(&window, viewer->window);
        EXPECT_FALSE(parent.active());
        EXPECT_EQ(label_of(viewer->title), "Titre");
        const screen::place at = display.area(fl_xid(&window));
        EXPECT_EQ(at.w, 920);
        EXPECT_EQ(at.h, 700);
        return true;
    });
    user.click("ANNULER");
    show(lines);
}

TEST_F(ViewerOnDisplay, ItComesUpAroundTheMouse) {
    const screen::place at = display.area(fl_xid(&parent));
    display.click(fl_xid(&parent), 650 - at.x, 480 - at.y);  // on the screen's own ground
    strings lines = numbered(1);
    robot user;
    user.until("the window", [&](Fl_Window& window) {
        const screen::place shown_at = display.area(fl_xid(&window));
        EXPECT_NEAR(shown_at.x + 920 / 2, 650, 30);  // the manager's frame shifts it
        EXPECT_NEAR(shown_at.y + 700 / 2, 480, 30);
        return true;
    });
    user.click("ANNULER");
    show(lines);
}

TEST_F(ViewerOnDisplay, EachActivationStartsAtTheFirstPageOfItsOwnLines) {
    strings lines = numbered(78), others = {"#C 600 ", "other"};
    {
        robot user;
        user.click("page suivante");
        sees_page(user, "page 2 / 2    ", 78, 78);
        user.click("ANNULER");
        show(lines);
    }
    OFD_afficheur_filtre_affichage* const earlier = viewer->display_filter;
    OFD_afficheur_filtre_impression* const earlier_print = viewer->print_filter;
    OFD_afficheur_filtre_texte* const earlier_text = viewer->text_filter;
    {
        robot user;
        user.until("the others", [&](Fl_Window&) {
            return viewer->page == 0 && shown(*viewer) == strings{"", "@f@S14 other"};
        });
        user.click("ANNULER");
        show(others);
    }
    EXPECT_NE(viewer->display_filter, earlier);
    EXPECT_NE(viewer->print_filter, earlier_print);
    EXPECT_NE(viewer->text_filter, earlier_text);
    EXPECT_EQ(earlier->nb_pages(), 1) << "not released";
    EXPECT_EQ(earlier_print->lines, lines.data());
    EXPECT_EQ(earlier_text->lines, lines.data());
}

TEST_F(ViewerOnDisplay, ALineThatLooksLikeABrowsersFormatIsShownAsItStands) {
    strings lines = {"#C 600 ", "@C88", "@.@-@@"};
    robot user;
    user.until("ink where the line stands", [&](Fl_Window& window) {
        EXPECT_EQ(shown(*viewer), (strings{"", "@f@S14 @C88", "@f@S14 @.@-@@"}));
        const std::uint32_t paper = display.pixel(fl_xid(&window), 600, 400);
        const Fl_Widget* const browser = viewer->browser;
        int ink = 0;
        for (int x = 0; x < 40; ++x) {
            // The second of its lines, of which none is lower than 12 pixels or higher than 20.
            for (int y = 22; y < 26; ++y)
                ink +=
                    display.pixel(fl_xid(&window), browser->x() + 8 + x, browser->y() + y) != paper;
        }
        return ink > 10;
    });
    user.click("ANNULER");
    show(lines);
}

}  // namespace
