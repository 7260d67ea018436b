// What the tests of the viewer's window share: its
// lines, what its browser shows, and a user before it.
#pragma once
#include "tests/support/robot.h"

// After the robot's, as the toolkit's headers bring the X server's macros.
#include <FL/Fl.H>
#include <FL/Fl_Browser.H>
#include <FL/Fl_Input.H>
#include <FL/forms.H>
#include <FL/x.H>

#include <filesystem>
#include <functional>
#include <list>
#include <memory>
#include <string>
#include <vector>

#include "viewer/viewer_window.h"

namespace viewer_tests {

namespace files = std::filesystem;
using strings = std::vector<std::string>;

inline std::string label_of(const Fl_Widget* widget) {
    return widget->label() ? widget->label() : "(none)";
}

/// A column for whole lines, then `count` lines "l1", "l2" ...
strings numbered(int count);

/// What the browser of the window shows.
strings shown(const OFD_afficheur& viewer);

/// What it shows of numbered() from `first` to `last`.
strings page_of(int first, int last);

/// Shows lines without an activation.
void give(OFD_afficheur& viewer, strings& lines);

/// Looks at a viewer from timeouts, until it has seen what it wanted.
class watcher {
public:
    explicit watcher(std::function<bool()> look) : look_(std::move(look)) {
        Fl::add_timeout(0.01, poll, this);
    }
    ~watcher() { Fl::remove_timeout(poll, this); }

private:
    static void poll(void* self) {
        if (!static_cast<watcher*>(self)->look_()) Fl::repeat_timeout(0.01, poll, self);
    }
    std::function<bool()> look_;
};

/// A folder to write into, a parent window on the screen, a viewer on it, and its user.
class ViewerOnDisplay : public testing::Test {
protected:
    void SetUp() override {
        speak(0);
        parent.end();
        parent.show();
        ASSERT_TRUE(wait_until([&] {
            Fl::check();
            return display.windows() == std::vector<x_window>{fl_xid(&parent)};
        }));
    }
    void TearDown() override {
        EXPECT_TRUE(parent.active());
        EXPECT_FALSE(viewer->window->shown());
        parent.hide();
        Fl::check();
        while (Fl::readqueue()) continue;
    }

    void speak(int english) { viewer = std::make_unique<OFD_afficheur>(&parent, english); }

    void show(strings& lines, const std::string& command = "true") {
        viewer->activation(lines.data(), static_cast<int>(lines.size()), "Titre", command);
    }

    /// Clicks in the middle of a widget, whatever its label.
    void click(robot& user, const Fl_Widget* widget) {
        user.until("click", [=, this](Fl_Window& window) {
            display.click(fl_xid(&window), widget->x() + widget->w() / 2,
                          widget->y() + widget->h() / 2);
            return true;
        });
    }

    void empty_page_input(robot& user) {
        click(user, viewer->page_input);
        user.until("an empty field", [this](Fl_Window&) {
            if (!viewer->page_input->size()) return true;
            display.key(XK_End);
            display.key(XK_BackSpace);
            return false;
        });
    }

    void type_page(robot& user, const std::string& number) {
        empty_page_input(user);
        user.type(number).until_value(number);
        click(user, viewer->go_button);
    }

    void sees_page(robot& user, const std::string& indicator, int first, int last) {
        user.until(indicator, [=, this](Fl_Window&) {
            return label_of(viewer->page_indicator) == indicator &&
                   shown(*viewer) == page_of(first, last);
        });
    }

    /// Lets the loop go round for a while, then checks.
    void after_a_while(robot& user, const std::string& what, std::function<bool()> holds) {
        const auto rounds = std::make_shared<int>(0);
        user.until(what, [=](Fl_Window&) {
            if (++*rounds < 30) return false;
            EXPECT_TRUE(holds()) << what;
            return true;
        });
    }

    /// A command that notes its arguments, keeps a copy of the file, and blocks for a moment.
    std::string recording_command(const std::string& name) {
        write_script(name, "printf '%s|' \"$#\" \"$@\" >>said\ncp \"$1\" seen.pdf\nsleep 0.1\n");
        return folder.path() / name;
    }

    current_folder folder{"viewer window "};
    Fl_Window parent{200, 100, "parent"};
    screen display;
    std::unique_ptr<OFD_afficheur> viewer;
    /// A user who has given up hides the window, which alone ends no activation.
    watcher ends_what_failed{[this] {
        if (HasFailure() && viewer && !viewer->window->shown())
            viewer->cancel_button->do_callback();
        return false;
    }};
};

}  // namespace viewer_tests
