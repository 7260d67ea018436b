// The wait form: a small window that says what goes on while a long task runs.
#pragma once
#include <FL/Fl_Window.H>
#include <FL/forms.H>

#include <string>

/// The window is on the screen once the constructor has returned, and leaves it with the object.
///
///     {
///         OFD_wait_form wait("Impression en cours ...");
///         sleep(2);  // the task
///     }
class OFD_wait_form {
public:
    Fl_Window* window;   ///< 600 x 60 pixels, "travail en cours ..."; deleted with the form.
    Fl_FormsText* text;  ///< Shows the message, centred; a child of the window.
    long unused_first;   ///< 0; kept for the layout of the class.
    long unused_second;  ///< 0; kept for the layout of the class.

    /// Shows `message` in a modal window at the mouse, and processes the pending events once. First
    /// waits for the server to show the window, for half a second at most: it may stay hidden (on
    /// another desktop, say). A user who closes the window only hides it.
    ///
    /// The message is copied, and the copy is never released, as with
    /// fl_add_Stext. The window is a top-level one whatever group is being
    /// filled; that group is closed, as it is by any new window. Needs a display.
    explicit OFD_wait_form(const std::string& message);
    OFD_wait_form(const OFD_wait_form&) = delete;
    OFD_wait_form& operator=(const OFD_wait_form&) = delete;

    /// Deletes the window and its children. Must not run if somebody else has deleted the window.
    ~OFD_wait_form();
};
