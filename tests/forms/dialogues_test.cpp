// The example program, from outside: each dialog answered by the keyboard of the display.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/support/programs.h"
#include "tests/support/screen.h"

namespace {

const std::string program_path = DIALOGUES;  // given by the build

// In the order in which they open: the window, its height (0: any), the key that answers it, and
// what is then printed.
const struct {
    const char* title;
    int h;
    x_key key;
    const char* printed;
} dialogs[] = {
    {"dialogues", 0, XK_Return, "question : 1\n"}, {"dialogues", 0, XK_Return, "message : \n"},
    {"dialogues", 0, XK_Escape, "alerte : \n"},    {"dialogues", 0, XK_Return, "reel : 1.5\n"},
    {"dialogues", 0, XK_Escape, "entier : 12\n"},  {"dialogues", 0, XK_Return, "texte : ZK4\n"},
    {"Messages", 570, XK_Escape, "long : \n"},     {"travail en cours ...", 60, 0, "attente : \n"},
    {"dialogues", 0, XK_Return, "auteurs : \n"},   {"Dessin", 260, XK_Escape, "dessin : \n"},
};

/// The program on the display, and the windows that it has opened.
class Dialogues : public testing::Test {
    leaves_nothing nothing_;

protected:
    /// The next window that the program opens: a dialog goes before another comes.
    x_window next_window() {
        x_window found = 0;
        wait_until([&] {
            const auto windows = display.windows();
            if (windows.size() == 1 && windows[0] != last_seen) found = windows[0];
            return found != 0;
        });
        return last_seen = found;
    }

    /// Waits until the program has printed `printed`. The key is sent once, when the dialog has the
    /// keyboard: another one might answer the next dialog.
    bool answers(const program& dialogues, x_window window, x_key key, const std::string& printed) {
        if (key) {
            wait_until([&] { return display.has_focus(window); });
            display.key(key);
        }
        return wait_until([&] { return dialogues.out().starts_with(printed); });
    }

    screen display;
    x_window last_seen = 0;
};

TEST_F(Dialogues, OpensEachDialogInTurn) {
    program dialogues({program_path});
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
        EXPECT_TRUE(answers(dialogues, window, key, printed)) << dialogues.out();
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
