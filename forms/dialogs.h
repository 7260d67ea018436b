// Dialogs: a question, a message, a value to type, a long message to read and save.
//
// Each function shows its window and returns when the user has answered. A text is never a printf
// format: "%" is shown as it stands, whatever the length. The toolkit reads "@" in a shown text as
// one of its symbols, and "@@" as "@"; a NUL byte ends the shown text. A text is copied for the
// call, and the copy released when the call returns: nothing of the toolkit points to it then.
//
// The toolkit shows one short dialog at a time: one that is asked for while another is open (from a
// timeout, say) returns at once, as if cancelled. fl_show_Sbigmessages is not one of these.
#pragma once
#include <string>

/// Asks a yes or no question. Returns 1 for the second button (the toolkit's `fl_yes` text, the
/// default: Enter), 0 for the first (its `fl_no` text), for Escape and for a closed window. The
/// second argument is ignored.
///
///     fl_no = "Non";
///     fl_yes = "Oui";
///     const bool empties = fl_show_Squestion("Vider le tiroir ?") == 1;
int fl_show_Squestion(const std::string& text, int ignored = 0);

/// Shows a message with one button to close it.
///
///     fl_show_Smessages("Cycle termin\xC3\xA9 \xC3\xA0 100 %.");
void fl_show_Smessages(const std::string& text);

/// Shows an alert: a message with the toolkit's "!" icon, and its beep.
void fl_show_Salert(const std::string& text);

/// Asks for a number. The field holds `value` as "%lf" prints it (six decimals, at most 80 bytes),
/// the reply is read with "%lf": what follows the number is ignored, and the decimal mark is that
/// of the program's C locale. Returns `value` itself, every bit of it, when the dialog is cancelled
/// or when no number starts the reply.
///
///     const double speed = fl_show_double("Vitesse (m/s) :", 1.5);
double fl_show_double(const char* label, double value);
double fl_show_double(const std::string& label, double value);

/// The same for an integer, with "%d". A number outside
/// the range of int is read as the C library reads it.
int fl_show_int(const char* label, int value);

/// Asks for a line of text; the field holds `value` at first. Returns the reply, and "" when
/// cancelled, whatever `value` was.
std::string fl_show_Sinput(const std::string& label, const std::string& value);

/// Shows who wrote this program, in a message box.
void fl_show_ms();

/// Shows a long text, one browser line for each of its lines, in a modal window `width` characters
/// of 6 pixels wide (taken as 0 below that, and as 5459, the widest that a window can be, above). A
/// newline at the very end adds no empty line; an empty text shows none. "@" at the start of a line
/// is a format of the browser's; a font that is none of the toolkit's own ("@F16" and above) and a
/// size above 2000, which would end the program, are taken out. Takes time in proportion to the
/// text. The toolkit draws nothing of a line wider than 32767 pixels.
///
/// "save" asks for a file name and writes the whole text there unchanged, NUL bytes and all; a file
/// that cannot be opened is skipped in silence. "Quit" returns, as do Escape and the window's close
/// button. Below 49 characters the window is too narrow to show all of "Quit".
void fl_show_Sbigmessages(const std::string& text, int width);
