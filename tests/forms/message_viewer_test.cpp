#include "robot.h"
// First, as the toolkit's headers bring the X server's macros.
#include "forms/dialogs.h"

#include <FL/Fl.H>
#include <FL/Fl_Button.H>
#include <FL/Fl_Multi_Browser.H>
#include <unistd.h>

#include <climits>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <random>
#include <sstream>

namespace {

namespace files = std::filesystem;

/// The toolkit's file selector keeps preferences in the user's home: here, a folder of the test.
class MessageViewer : public testing::Test {
protected:
    static void SetUpTestSuite() {
        home = files::temp_directory_path() / ("forms-" + std::to_string(getpid()));
        files::create_directories(home);
        setenv("HOME", home.c_str(), 1);
    }
    static void TearDownTestSuite() { files::remove_all(home); }

    static files::path home;
};
files::path MessageViewer::home;

Fl_Browser* lines_of(Fl_Window& window) {
    return static_cast<Fl_Browser*>(find_widget(
        window, [](Fl_Widget& each) { return dynamic_cast<Fl_Multi_Browser*>(&each) != nullptr; }));
}

std::vector<std::string> texts_of(Fl_Window& window) {
    std::vector<std::string> texts;
    const Fl_Browser* browser = lines_of(window);
    for (int i = 1; i <= browser->size(); ++i) texts.push_back(browser->text(i));
    return texts;
}

std::string bytes_of(const files::path& file) {
    std::ifstream in(file, std::ios::binary);
    std::ostringstream bytes;
    bytes << in.rdbuf();
    return bytes.str();
}

TEST_F(MessageViewer, HasItsWidgetsInTheirPlaces) {
    robot user;
    user.at("Messages")
        .until("geometry",
               [](Fl_Window& window) {
                   EXPECT_EQ(window.w(), 490);
                   EXPECT_EQ(window.h(), 570);
                   EXPECT_TRUE(window.modal());
                   EXPECT_EQ(window.children(), 3);
                   const struct {
                       const char* label;
                       int x, y, w, h;
                   } widgets[] = {{"", 5, 10, 480, 500},
                                  {"Quit", 250, 530, 50, 30},
                                  {"save", 80, 530, 50, 30}};
                   for (int i = 0; i < 3; ++i) {
                       const Fl_Widget* child = window.child(i);
                       const auto& [label, x, y, w, h] = widgets[i];
                       EXPECT_STREQ(child->label() ? child->label() : "", label);
                       EXPECT_EQ(child->x(), x) << label;
                       EXPECT_EQ(child->y(), y) << label;
                       EXPECT_EQ(child->w(), w) << label;
                       EXPECT_EQ(child->h(), h) << label;
                   }
                   EXPECT_NE(lines_of(window), nullptr);
                   return true;
               })
        .click("Quit");
    fl_show_Sbigmessages("un\ndeux", 80);
    EXPECT_EQ(Fl::first_window(), nullptr) << "deleted";
}

TEST_F(MessageViewer, ShowsALineForEachPiece) {
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

TEST_F(MessageViewer, ShowsThousandsOfLines) {
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

TEST_F(MessageViewer, ReturnsOnQuitOnEscapeAndOnTheWindowsButton) {
    for (int way = 0; way < 3; ++way) {
        robot user;
        user.at("Messages");
        if (way == 0) user.click("Quit");
        if (way == 1) user.press(XK_Escape);
        if (way == 2) user.close();
        fl_show_Sbigmessages("un\ndeux", 80);
        EXPECT_EQ(Fl::first_window(), nullptr) << way;
    }
}

TEST_F(MessageViewer, StaysOpenWhenALineIsClicked) {
    robot user;
    user.at("Messages")
        .until("click a line",
               [](Fl_Window& window) {
                   lines_of(window)->select(1);
                   lines_of(window)->do_callback();
                   return true;
               })
        .until("still there", [](Fl_Window& window) { return lines_of(window)->selected(1) != 0; })
        .click("Quit");
    fl_show_Sbigmessages("un\ndeux", 80);
}

TEST_F(MessageViewer, TakesAnyWidth) {
    const struct {
        int width, window_px;
    } cases[] = {{INT_MIN, 10}, {-1, 10},      {0, 10},       {1, 16},         {10, 70},
                 {200, 1210},   {5459, 32764}, {5460, 32764}, {INT_MAX, 32764}};
    for (const auto& [width, window_px] : cases) {
        robot user;
        user.at("Messages")
            .until("width",
                   [&, window_px = window_px, width = width](Fl_Window& window) {
                       EXPECT_EQ(lines_of(window)->w(), window_px - 10) << width;
                       return true;
                   })
            .press(XK_Escape);
        fl_show_Sbigmessages("un", width);
    }
}

TEST_F(MessageViewer, SavesTheWholeTextUnchanged) {
    std::mt19937 random(64);
    std::string any(70000, ' ');
    for (char& each : any) each = static_cast<char>(random());
    const std::string texts[] = {"un\ndeux\n",
                                 "sans fin de ligne",
                                 "a\r\nb\0c\xE7 100 %s%n" + std::string("\0\n", 2),
                                 any,
                                 "x",
                                 ""};
    const files::path file = home / "saved.txt";
    for (const std::string& text : texts) {
        robot user;
        user.at("Messages").click("save");
        user.at("save message").type(file.string()).until_value(file.string()).press(XK_Return);
        user.at("Messages")
            .until("saved", [&](Fl_Window&) { return files::exists(file); })
            .click("Quit");
        fl_show_Sbigmessages(text, 80);
        // Each text is written over the one before, longer or not.
        EXPECT_EQ(bytes_of(file), text);
    }
}

TEST_F(MessageViewer, SavesNothingWhenTheSelectorIsCancelled) {
    for (const bool by_key : {true, false}) {
        robot user;
        user.at("Messages").click("save").at("save message");
        if (by_key) {
            user.press(XK_Escape);
        } else {
            user.type((home / "never.txt").string()).click("Cancel");
        }
        user.at("Messages").click("Quit");
        fl_show_Sbigmessages("un", 80);
        EXPECT_FALSE(files::exists(home / "never.txt"));
    }
}

TEST_F(MessageViewer, SkipsAFileThatCannotBeOpenedInSilence) {
    const files::path file = home / "nowhere" / "out.txt";
    robot user;
    user.at("Messages").click("save");
    user.at("save message").type(file.string()).until_value(file.string()).press(XK_Return);
    user.at("Messages").click("Quit");
    testing::internal::CaptureStderr();
    testing::internal::CaptureStdout();
    fl_show_Sbigmessages("un", 80);
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
    EXPECT_FALSE(files::exists(file));
}

TEST_F(MessageViewer, SavesTwiceInOneShow) {
    robot user;
    for (const char* name : {"one.txt", "two.txt"}) {
        user.at("Messages").click("save").at("save message");
        user.press(XK_a, XK_Control_L).press(XK_BackSpace).type((home / name).string());
        user.until_value((home / name).string()).press(XK_Return);
    }
    user.at("Messages").click("Quit");
    fl_show_Sbigmessages("deux fois", 80);
    EXPECT_EQ(bytes_of(home / "one.txt"), "deux fois");
    EXPECT_EQ(bytes_of(home / "two.txt"), "deux fois");
}

}  // namespace
