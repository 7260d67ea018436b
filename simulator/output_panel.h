// The simulator's output panel: named outputs, each with a lamp, a page at a time.
//
// A lamp is yellow for 0, blue for 1 and red for any other value. The simulator adds the outputs by
// name and passes all their values from time to time; the panel's own callbacks only turn pages.
// Everything runs on the GUI thread.
//
// Output k, from 0, stands on page k / rows, in row k mod rows. A height of
// 101 gives one row and each further 16 pixels one more, up to the 32768 that
// the lamp table holds. A lower panel has no row: it keeps its outputs and
// their values, shows none of them and stays on page 0. All sizes are pixels.
//
// A name is shown as the toolkit's browser shows a
// line: one that begins with "@" is read as a format.
#pragma once

#include <cstdint>
#include <list>
#include <string>

#include <FL/Fl.H>
#include <FL/Fl_Window.H>

class Fl_Box;
class Fl_Browser;
class Fl_Button;

class OFD_simulator_output {
public:
    /// How many rows the lamp table has, whatever the height.
    static constexpr int lamp_room = 32768;

    Fl_Window* window;      ///< The panel's own window, or the caller's parent.
    std::int32_t x_offset;  ///< How far right all widgets stand; 0 in the panel's own window.
    std::string* name_array = nullptr;    ///< `count` names, in the order added.
    std::int32_t count = 0;               ///< How many outputs there are.
    std::int32_t page = 0;                ///< The page shown, from 0.
    std::int32_t rows;                    ///< Rows on a page; none when not positive.
    std::list<std::string> names;         ///< The same names again.
    Fl_Box* lamps[lamp_room] = {};        ///< Row r's lamp; the first `rows` are used.
    Fl_Browser* browser;                  ///< The names of the page.
    Fl_Button* plus_button;               ///< Pages forward.
    Fl_Button* minus_button;              ///< Pages back.
    std::int32_t* value_array = nullptr;  ///< `count` values; 2 where none was given yet.
    void* reserved_1 = nullptr;           ///< Unused.
    void* reserved_2 = nullptr;           ///< Unused.

    /// Builds the panel in a window of its own, 240 by `height`, and shows it under the mouse with
    /// `title` as the window manager's title. No group is being filled afterwards. The window is
    /// transient, hence modal: a program that shows two panels at once puts them in one parent.
    /// Needs a display.
    OFD_simulator_output(int height, const std::string& title);

    /// Builds the panel `x` pixels further right in `parent`, which must
    /// be the group being filled and still is afterwards, with `title`
    /// as a caption. Shows nothing; the caller ends and shows `parent`.
    OFD_simulator_output(Fl_Window* parent, int x, int height, const std::string& title);

    OFD_simulator_output(const OFD_simulator_output&) = delete;
    OFD_simulator_output& operator=(const OFD_simulator_output&) = delete;

    /// Releases the arrays and hides `window`, even if it is the caller's parent, unless it is
    /// already deleted. Deletes no widget: they belong to the window, which belongs to the caller.
    /// Paging buttons that remain in it do nothing from then on.
    ~OFD_simulator_output();

    /// Appends an output, whose value is 2 until the next `eval`, and turns a page as `next_page`
    /// does: while outputs are added one after another, the page of the newest is shown. `name` may
    /// be one of the panel's own.
    ///
    ///     Fl_Window desk(240, 133);
    ///     OFD_simulator_output panel(&desk, 0, 133, "Sorties");  // three rows
    ///     for (const char* name : {"MT", "MTA", "RENT", "SORT"}) panel.add(name);
    ///     panel.page;  // 1: the fourth addition turned a page
    void add(const std::string& name);

    /// Takes `count` values and recolours the lamps that can be seen; `values` may be null when
    /// there is no output. The lamps of a hidden window get their colours at the first `eval` or
    /// turn of a page after it is shown.
    void eval(int* values);

    /// Does nothing.
    void check();

    /// Turns a page, except on the last (or the first), and rewrites the rows in any case.
    void next_page();
    void previous_page();

    /// Gives lamp `row` the colour of its output, and redraws it if the colour changes. A row
    /// without an output is left alone.
    void internal_colorise(int row);

    /// The buttons, to recognise them in the forms layer's queue or to give them other callbacks.
    Fl_Widget* my_plus_button();
    Fl_Widget* my_moins_button();

    /// Tells the destructor whether the window still lives.
    Fl_Widget_Tracker living_window{window};
};

/// The paging buttons' callbacks: `panel` is the
/// OFD_simulator_output whose page they turn, or null for none.
void OFD_simulator_output_callback_plus(Fl_Widget* button, void* panel);
void OFD_simulator_output_callback_moins(Fl_Widget* button, void* panel);
