// Widgets that take strings: the toolkit's own calls, without NUL-terminated arrays.
//
// Each function hands the toolkit a copy of its text, cut at the first NUL byte if there is one,
// and leaves the string alone. The copy is released before the function returns, except that of
// fl_add_Stext. A text is never a printf format: "%" is shown as it stands. The toolkit's own "@"
// codes (symbols in labels and drawn texts, formats in browser lines) keep their meaning where a
// widget shows a text, and "@@" shows one "@"; what a widget stores is unchanged.
//
// A widget passed as Fl_Widget* must be of the kind that the function names. The caller keeps it.
#pragma once
#include <FL/Fl_Browser.H>
#include <FL/forms.H>

#include <string>

/// Sets the value of an input field (an Fl_Input, or a class derived from it). The field keeps a
/// copy of its own.
void fl_set_Sinput(Fl_Widget* input, const std::string& value);

/// Returns a new text widget with that box type and its label aligned on the left, inside. Pixels
/// from the top left of the window. The widget belongs to the group that is open, as every new
/// widget does; without one, to the caller.
///
/// The copy of the label is never released, not even when the widget is
/// deleted or gets another label, so a pointer read from label() always
/// stays valid. Use fl_set_object_Slabel for a label that changes often.
///
///     Fl_FormsText* title = fl_add_Stext(FL_UP_BOX, 10, 10, 200, 30, "Etat du poste");
Fl_FormsText* fl_add_Stext(Fl_Boxtype box, int x, int y, int w, int h, const std::string& label);

/// Appends one line to a browser (an Fl_Browser, or a class derived from it). The browser keeps a
/// copy of its own. The line is not looked at, and the toolkit's format "@F1000" ends the program:
/// one from a stranger goes after "@.", which ends the formats.
void fl_add_browser_Sline(Fl_Widget* browser, const std::string& line);

/// Replaces the text of line `line` of a browser, lines being counted from 1. A line that does not
/// exist changes nothing. The browser keeps a copy of its own.
void fl_replace_browser_Sline(Fl_Widget* browser, int line, const std::string& text);

/// Appends the line unless the browser already has one of the same
/// bytes. Returns 1 when appended, 0 when already there. Case and blanks
/// count. Looks at every line: meant for lists of tens or hundreds.
///
///     Fl_Browser names(0, 0, 100, 100);
///     fl_add_browser_Sline_if_new(&names, "te");  // 1
///     fl_add_browser_Sline_if_new(&names, "te");  // 0: it is there once
int fl_add_browser_Sline_if_new(Fl_Browser* browser, const std::string& line);

/// Sets the label of any widget to `label`, or to its first `n` bytes when 0 <= n < its length. The
/// widget owns the copy, and releases it with its next label or with itself.
///
///     Fl_Browser names(0, 0, 100, 100);
///     fl_set_object_Slabel(&names, "tiroir", 3);
///     names.label();  // "tir"
void fl_set_object_Slabel(Fl_Widget* widget, const std::string& label, int n = -1);

/// Draws a text in a box, in pixels of the window being drawn: sets the font `font` at `size`, then
/// the colour index `colour`, then draws with the alignment `align` (a mask of Fl_Align) and with
/// "@" symbols. Note the order, size before font. Only within a widget's draw().
void fl_drw_String(unsigned align, int x, int y, int w, int h, unsigned colour, int size, int font,
                   const std::string& text);
