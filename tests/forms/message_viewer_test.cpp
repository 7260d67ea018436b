#include "tests/support/robot.h"
// First, as the toolkit's headers bring the X server's macros.
#include "forms/dialogs.h"

#include <FL/Fl.H>
#include <FL/Fl_Button.H>
#include <FL/forms.H>
#include <unistd.h>

#include <climits>
#include <cstdlib>
#include <filesystem>
#include <memory>
#include <random>

#include "tests/forms/message_lines.h"

namespace {

namespace files = std::filesystem;

/// The toolkit's file selector keeps preferences in the user's home, and starts in the current
/// folder: here, a folder of the test. The name that it offers at first is selected, so that a
/// typed one replaces it.
class MessageViewer : public testing::Test {
protected:
    static void SetUpTestSuite() {
        home = files::temp_directory_path() / ("forms-" + std::to_string(getpid()));
        files::create_directories(home);
        setenv("HOME", home.c_str(), 1);
        files::current_path(home);
    }
    /// The selector remembers the last name chosen: each test starts without, in the test's folder.
    void SetUp() override {
        home.string().copy(fl_get_directory(), home.string().size());
        fl_get_directory()[home.string().size()] = '\0';
        *fl_get_filename() = '\0';
    }
    static void TearDownTestSuite() {
        files::current_path("/");
        files::remove_all(home);
    }

    /// Adds `more` to the name that the selector offers (its folder at first, the last name chosen
    /// later) and notes the whole in `name`, before it is chosen.
    static void name_file(robot& user, const std::string& more, files::path& name) {
        const auto offered = std::make_shared<std::string>();
        user.at("save message").go_to_end();
        user.until("a name offered", [=](Fl_Window& window) {
            *offered = field_value(window);
            return offered->starts_with(home.string());
        });
        user.type(more).until("the name typed", [=, &name](Fl_Window& window) {
            name = field_value(window);
            return name == *offered + more;
        });
    }

    static files::path home;
};
files::path MessageViewer::home;

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

// What the queue held of a deleted window would be handed to the caller's own loop.
TEST_F(MessageViewer, LeavesNothingInTheToolkitsQueueWhenClosed) {
    while (Fl::readqueue()) continue;
    robot user;
    user.at("Messages").until("used and closed in one pass", [](Fl_Window& window) {
        for (int i = 0; i < 3; ++i) lines_of(window)->do_callback();
        window.do_callback();
        return true;
    });
    fl_show_Sbigmessages("un\ndeux", 80);
    EXPECT_EQ(Fl::readqueue(), nullptr);
}

TEST_F(MessageViewer, StaysOpenWhenALineIsClicked) {
    std::string text;
    for (int i = 0; i < 60; ++i) text += "ligne\n";
    robot user;
    user.at("Messages")
        .click("")  // the browser, the only widget without a label
        .until("a line selected",
               [](Fl_Window& window) {
                   const Fl_Browser* browser = lines_of(window);
                   int selected = 0;
                   for (int i = 1; i <= browser->size(); ++i) selected += browser->selected(i);
                   return selected == 1;
               })
        .click("Quit");
    fl_show_Sbigmessages(text, 80);
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
                                 "a\r\nb\xE7 100 %s%n" + std::string("\0\n", 2),
                                 any,
                                 "x",
                                 ""};
    files::path file;
    for (const std::string& text : texts) {
        robot user;
        user.at("Messages").click("save");
        // Named once: from then on the same file is offered,
        // and overwritten by longer and shorter texts.
        name_file(user, file.empty() ? "saved.txt" : "", file);
        user.press(XK_Return).at("Messages").click("Quit");
        fl_show_Sbigmessages(text, 80);
        EXPECT_TRUE(files::exists(file)) << file;
        EXPECT_TRUE(bytes_of(file) == text) << text.size() << " bytes";
    }
}

TEST_F(MessageViewer, SavesNothingWhenTheSelectorIsCancelled) {
    files::path file;
    robot user;
    user.at("Messages").click("save");
    name_file(user, "never.txt", file);
    user.press(XK_Escape);
    user.at("Messages").click("save").at("save message").click("Cancel");
    user.at("Messages").click("Quit");
    fl_show_Sbigmessages("un", 80);
    EXPECT_FALSE(file.empty());
    EXPECT_FALSE(files::exists(file));
}

TEST_F(MessageViewer, SkipsAFileThatCannotBeOpenedInSilence) {
    const files::path target = home / "nowhere" / "out.txt";
    files::path file;
    robot user;
    user.at("Messages").click("save");
    name_file(user, "dangling.txt", file);
    user.until("a link to nowhere",
               [&](Fl_Window&) {
                   files::create_symlink(target, file);
                   return true;
               })
        .press(XK_Return);
    user.at("Messages")
        .until("still open", [](Fl_Window& window) { return window.children() == 3; })
        .click("Quit");
    testing::internal::CaptureStderr();
    testing::internal::CaptureStdout();
    fl_show_Sbigmessages("un", 80);
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
    EXPECT_TRUE(files::is_symlink(file));
    EXPECT_FALSE(files::exists(target));
}

TEST_F(MessageViewer, SavesTwiceInOneShow) {
    files::path names[2];
    robot user;
    for (files::path& name : names) {
        user.at("Messages").click("save");
        name_file(user, "again", name);
        user.press(XK_Return);
    }
    user.at("Messages").click("Quit");
    fl_show_Sbigmessages("deux fois", 80);
    EXPECT_NE(names[0], names[1]);
    EXPECT_EQ(bytes_of(names[0]), "deux fois");
    EXPECT_EQ(bytes_of(names[1]), "deux fois");
}

}  // namespace
