// The texts that the viewer of long messages shows.
#include "tests/support/robot.h"
// First, as the toolkit's headers bring the X server's macros.
#include "forms/dialogs.h"

#include <string>
#include <vector>

#include "tests/forms/message_lines.h"

namespace {

using strings = std::vector<std::string>;

TEST(MessageLines, ShowsALineForEachPiece) {
    const struct {
        std::string text;
        std::vector<std::string> lines;
    } cases[] = {
        {"un", {"un"}},
        {"un\ndeux", {"un", "deux"}},
        {"un\ndeux\n", {"un", "deux"}},
        {"un\n\n", {"un", ""}},
        {"\nun", {"", "un"}},
        {"a\n\n\nb", {"a", "", "", "b"}},
        {"\n", {""}},
        {"", {}},
        {"100 %s%n\n@b gras\r\nre\xE7ue", {"100 %s%n", "@b gras\r", "re\xE7ue"}},
        {std::string(20000, 'x'), {std::string(20000, 'x')}},
    };
    for (const auto& [text, lines] : cases) {
        robot user;
        user.at("Messages")
            .until("lines",
                   [&, lines = lines](Fl_Window& window) {
                       EXPECT_EQ(texts_of(window), lines);
                       return true;
                   })
            .press(XK_Escape);
        fl_show_Sbigmessages(text, 80);
    }
}

// Drawn: the toolkit looks a font up when it measures a line, and again when it draws it.
TEST(MessageLines, TakesOutFormatsThatWouldEndTheProgram) {
    const strings shown = {"x", "x", "x", "@bx", "@F15x", "x@F1000", "@@F1000", "@S14x"};
    robot user;
    user.at("Messages")
        .until("lines",
               [&](Fl_Window& window) {
                   EXPECT_EQ(texts_of(window), shown);
                   return true;
               })
        .click("Quit");
    fl_show_Sbigmessages("@F1000x\n@S99999999x\n@F-100x\n@b@F 16x\n@F15x\nx@F1000\n@@F1000\n@S14x",
                         80);
}

// A display takes so much at once, and no more: the line is whole in the browser, and not all of it
// is drawn. Tabs are drawn as eight blanks each, control characters as two letters.
TEST(MessageLines, ShowsALineOfAMegabyte) {
    for (const char each : {'x', '\t', '\x01', '\xE9'}) {
        const strings line = {std::string(1'000'000, each)};
        robot user;
        user.at("Messages")
            .until("one line",
                   [&](Fl_Window& window) {
                       EXPECT_TRUE(texts_of(window) == line) << int{each};
                       return true;
                   })
            .click("Quit");
        fl_show_Sbigmessages(line[0], 80);
    }
}

TEST(MessageLines, ShowsThousandsOfLines) {
    std::string text;
    std::vector<std::string> lines;
    for (int i = 0; i < 3000; ++i) {
        lines.push_back("ligne " + std::to_string(i) + " du journal du poste ZK4");
        text += lines.back() + "\n";
    }
    robot user;
    user.at("Messages")
        .until("lines",
               [&](Fl_Window& window) {
                   EXPECT_EQ(texts_of(window), lines);
                   return true;
               })
        .click("Quit");
    fl_show_Sbigmessages(text, 80);
}

}  // namespace
