// The example program, from outside: each dialog answered by the keyboard of the display.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/support/programs.h"
#include "tests/support/screen.h"

namespace {

const std::string program_path = DIALOGUES;  // given by the build

class Dialogues : public testing::Test {
    leaves_nothing nothing_;
};

TEST_F(Dialogues, OpensEachDialogInTurn) {
    screen display;
    program dialogues({program_path});
    std::vector<x_window> seen;
    /// The next window that the program opens: a dialog goes before another comes.
    const auto next_window = [&] {
        x_window found = 0;
        wait_until([&] {
            const auto windows = display.windows();
            if (windows.size() == 1 && (seen.empty() || windows[0] != seen.back()))
                found = windows[0];
            return found != 0;
        });
        seen.push_back(found);
        return found;
    };
    const struct {
        const char* title;
        int h;
        x_key key;
        const char* printed;
    } dialogs[] = {
        {"dialogues", 0, XK_Return, "question : 1\n"},
        {"dialogues", 0, XK_Return, "message : \n"},
        {"dialogues", 0, XK_Escape, "alerte : \n"},
        {"dialogues", 0, XK_Return, "reel : 1.5\n"},
        {"dialogues", 0, XK_Escape, "entier : 12\n"},
        {"dialogues", 0, XK_Return, "texte : ZK4\n"},
        {"Messages", 570, XK_Escape, "long : \n"},
        {"travail en cours ...", 60, 0, "attente : \n"},
        {"dialogues", 0, XK_Return, "auteurs : \n"},
        {"Dessin", 260, XK_Escape, "dessin : \n"},
    };
    std::string printed;
    for (const auto& [title, h, key, line] : dialogs) {
        SCOPED_TRACE(line);
        const x_window window = next_window();
        ASSERT_NE(window, 0u);
        EXPECT_TRUE(wait_until([&, title = title] { return display.title(window) == title; }))
            << display.title(window);
        if (h) {
            EXPECT_EQ(display.area(window).h, h);
        }
        printed += line;
        // A window may be managed a little before it has the keyboard: keys are sent until the
        // dialog has answered.
        EXPECT_TRUE(wait_until([&, key = key] {
            if (key && display.windows() == std::vector<x_window>{window}) display.key(key);
            return dialogues.out().starts_with(printed);
        })) << dialogues.out();
    }
    EXPECT_EQ(dialogues.wait(), 0);
    EXPECT_EQ(dialogues.out(), printed);
    EXPECT_EQ(dialogues.err(), "");
}

TEST_F(Dialogues, NamesItsDialogsAndRefusesOthers) {
    EXPECT_EQ(run_program({program_path, "-h"}).out,
              "question\nmessage\nalerte\nreel\nentier\ntexte\nlong\nattente\nauteurs\ndessin\n");
    const outcome refused = run_program({program_path, "rien"});
    EXPECT_EQ(refused.status, 2);
    EXPECT_EQ(refused.out, "");
    EXPECT_EQ(refused.err, "dialogues: no dialog is called rien; dialogues -h lists them\n");
}

}  // namespace
