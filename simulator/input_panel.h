// The simulator's input panel: a user sets the input signals by hand.
//
// Two columns of check boxes list the inputs: "Signal", the values to send, and "Sticky", the
// signals that keep their value once sent. "GO" sends, "INIT" clears every signal, "QUIT" asks to
// stop. The panel has no callback: its caller polls it with `check` or `eval`, on the GUI thread.
// Each pass takes one widget from the forms layer's queue: a program that also reads the queue
// elsewhere competes with it.
//
// All sizes are pixels. A height of 120 or more leaves room for a box; a smaller or negative one is
// accepted and looks odd.
#pragma once

#include <cstdint>
#include <list>
#include <string>

#include <FL/Fl.H>
#include <FL/Fl_Window.H>

class Fl_Button;
class Fl_Check_Browser;

class OFD_simulator_input {
public:
    Fl_Window* window;  ///< The panel's own window, or the caller's parent.
    /// They belong to `window`, as the browsers do.
    Fl_Button* quit_button;
    Fl_Button* go_button;
    Fl_Button* init_button;
    Fl_Check_Browser* signal_browser;  ///< Item i, from 1: the value to send for input i.
    Fl_Check_Browser* sticky_browser;  ///< Item i, from 1: whether that signal stays set.
    void* reserved_1 = nullptr;        ///< Unused.
    void* reserved_2 = nullptr;        ///< Unused.
    std::list<std::string> names;      ///< The inputs, in the order added.
    std::int32_t count = 0;            ///< How many inputs there are.

    /// Builds the panel in a window of its own, 400 by `height`, and shows it
    /// under the mouse with the title "Inputs Pannel". No group is being
    /// filled afterwards. The window is transient, hence modal: a program that
    /// shows two panels at once puts them in one parent. Needs a display.
    explicit OFD_simulator_input(int height);

    /// Builds the same widgets `x` pixels further right in `parent`, which must be the group being
    /// filled and still is afterwards. Shows nothing; the caller ends and shows `parent`.
    ///
    ///     auto* desk = new Fl_Window(640, 240, "desk");
    ///     OFD_simulator_input inputs(desk, 0, 240);
    ///     OFD_simulator_output outputs(desk, 400, 240, "Outputs");
    ///     desk->end();
    ///     desk->show();
    OFD_simulator_input(Fl_Window* parent, int x, int height);

    OFD_simulator_input(const OFD_simulator_input&) = delete;
    OFD_simulator_input& operator=(const OFD_simulator_input&) = delete;

    /// Hides `window`, even if it is the caller's parent, unless it is already deleted. Deletes no
    /// widget: they belong to the window, which belongs to the caller.
    ~OFD_simulator_input();

    /// Appends an input, neither set nor sticky. A panel on the screen shows it from the next pass.
    void add(const std::string& name);

    /// Waits, letting the toolkit work, until "GO", "INIT" or "QUIT" is pressed. `values` holds at
    /// least `count` entries; it may be null when there is no input. A pass lasts a millisecond.
    ///
    /// | Pressed | `*init` | `*quit` | `values` | Signal boxes |
    /// |---|---|---|---|---|
    /// | GO | 0 | 0 | 1 for each box checked, else 0 | cleared, but for the sticky ones |
    /// | INIT | 1 | 0 | untouched | all cleared, the sticky ones too |
    /// | QUIT | see below | 1 | untouched | untouched |
    ///
    /// "QUIT" does not write `*init`, but every earlier pass of the same call
    /// wrote 0 there. Other widgets taken from the queue are dropped. Closing
    /// the window presses nothing: a caller who lets the user close it should
    /// give the window a callback that runs `quit_button->do_callback()`.
    ///
    ///     OFD_simulator_input panel(220);
    ///     panel.add("te");
    ///     int init = 0, quit = 0, values[1] = {};
    ///     panel.check(&init, &quit, values);
    ///     if (!quit && !init) std::cout << "te=" << values[0] << '\n';
    void check(int* init, int* quit, int* values);

    /// One pass, which takes a millisecond. When the widget that it takes is "QUIT", sets `*quit`
    /// to 1 and shows nothing; otherwise sets `*quit` to 0 and checks signal box i when
    /// `values[i - 1]` is not 0, unchecks it when it is. `values` holds at least `count` entries.
    void eval(int* quit, int* values);

    /// Tells the destructor whether the window still lives.
    Fl_Widget_Tracker living_window{window};
};
