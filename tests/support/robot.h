// The user of the dialogs that this program opens: real keys and clicks, sent to the display from
// the program's own event loop while a dialog runs.
#pragma once
#include <gtest/gtest.h>

#include <FL/Fl_Input_.H>
#include <FL/Fl_Window.H>

#include <chrono>
#include <deque>
#include <functional>
#include <string>

#include "tests/support/screen.h"

/// Steps are queued before the dialog is called, and each is taken once the modal window of its
/// title is on the screen, drawn, at rest and with the keyboard's focus. A step that cannot be
/// taken for long fails the test and hides the dialogs, so that it ends.
///
///     robot user;
///     user.type("12").press(XK_Return);
///     EXPECT_EQ(fl_show_int("Nombre", 5), 12);
class robot {
public:
    robot();
    ~robot();
    robot(const robot&) = delete;
    robot& operator=(const robot&) = delete;

    /// The steps from here on are for the window of this title; at first, for one without a title.
    robot& at(const std::string& title);
    /// Puts the cursor at the end of the window's first input field, and waits until it stays
    /// there: a window that comes up selects its field's text at some moment of its own.
    robot& go_to_end();
    robot& press(x_key key, x_key modifier = 0);
    /// Types ASCII letters in lower case, digits and "./-", nothing that needs the shift key.
    robot& type(const std::string& text);
    /// Clicks in the middle of the visible widget of this label.
    robot& click(const std::string& label);
    /// Closes the window as the window manager's button does.
    robot& close();
    /// Waits until `true_of` the window.
    robot& until(const std::string& what, std::function<bool(Fl_Window&)> true_of);
    /// Waits until a widget of the window has exactly this label.
    robot& until_label(const std::string& label);
    /// Waits until an input field of the window has exactly this value.
    robot& until_value(const std::string& value);

private:
    struct step {
        std::string title, what;
        std::function<bool(Fl_Window&)> take;
    };
    static void poll(void* self);
    void look();
    bool ready(Fl_Window* window);
    void give_up();
    robot& add(const std::string& what, std::function<bool(Fl_Window&)> take);

    screen display_;
    std::string title_;
    std::deque<step> steps_;
    std::chrono::steady_clock::time_point progress_;
    screen::place place_{};
};

/// A window's first visible input field; null without one.
Fl_Input_* first_field(Fl_Group& group);

/// The value of a window's first visible input field; "" without one.
std::string field_value(Fl_Group& group);

/// The first visible widget of a window, at any depth, that is as asked; null without one.
Fl_Widget* find_widget(Fl_Group& group, const std::function<bool(Fl_Widget&)>& wanted);
