// The paged viewer: a modal window that shows lines page by page and exports them.
//
// The markup of the lines is described in line_markup.h, the window in docs/viewer.md.
#pragma once
#include <cstdint>
#include <list>
#include <string>

#include "viewer/display_filter.h"
#include "viewer/print_filter.h"
#include "viewer/text_filter.h"

class Fl_Browser;
class Fl_FormsText;
class Fl_Input;
class Fl_Widget;
class Fl_Window;

/// Made once, hidden, and shown as often as its caller likes. Its window lives until the program
/// ends. Of one viewer, only one `activation` runs at a time.
///
/// Nothing is ever reported: a page that does not exist is not shown, a file that cannot be opened
/// is not written, and a command's status is ignored. The exports go to the current directory, and
/// replace what is there.
///
///     OFD_afficheur viewer(nullptr, 0);
///     std::list<std::string> lines = {"#C T20 T8 T", "vis#144", "colle#3 kg"};
///     viewer.activation(lines, "Stock", "xpdf");  // returns when the user has pressed ANNULER
class OFD_afficheur {
public:
    std::int32_t english;  ///< 0: labels and messages in French.
    std::int32_t page;     ///< The page shown, 0 for the first.
    /// Each activation makes these three, and they are never released. Before the first activation
    /// they have no line.
    OFD_afficheur_filtre_affichage* display_filter;
    OFD_afficheur_filtre_impression* print_filter;
    OFD_afficheur_filtre_texte* text_filter;
    std::string viewer_command;  ///< Opens the PDF file.
    /// Owns the widgets below; deleted by nobody.
    Fl_Window* window;
    Fl_Window* parent;  ///< The caller's.
    /// Shows the title of the activation.
    Fl_FormsText* title;
    Fl_FormsText* page_indicator;  ///< "page 2 / 14    "
    /// Shows the lines of the page.
    Fl_Browser* browser;
    /// Call page_precedente, page_suivante, fichier_pdf and fichier_texte; the cancel button ends
    /// the activation.
    Fl_Widget* previous_button;
    Fl_Widget* next_button;
    Fl_Widget* cancel_button;
    Fl_Widget* pdf_button;
    Fl_Widget* text_button;
    /// Takes a page's number, from 1, for the button beside it.
    Fl_Input* page_input;
    Fl_Widget* go_button;  ///< The small one beside the input.
    /// Kept for the layout of the class.
    void* unused_first;
    void* unused_second;

    /// Builds the window and leaves it hidden. `parent` (null for none) cannot be used while the
    /// viewer runs. `english`: 0 for French, anything else for English.
    OFD_afficheur(Fl_Window* parent, int english);

    /// Shows the first page of `count` lines, under `title`, and serves the window until the user
    /// cancels or closes it; Escape closes it too. (A window that the program hides is served until
    /// the next event of one of its widgets.) The parent is active again on return, even if it was
    /// not before. Returns at once when `lines` is null. A `count` below 1 shows an empty page.
    ///
    /// The lines are not copied. A caller who uses the functions below after this one has returned
    /// must keep them until the next activation.
    ///
    /// `viewer_command` is the program that opens the PDF file. Blanks in it belong to its path; it
    /// takes no arguments. The file is removed when it ends, so it must not return before its user
    /// has seen the document.
    void activation(std::string* lines, int count, const std::string& title,
                    const std::string& viewer_command);

    /// The same on a copy of a list, which is released on return: the viewer then has no line. With
    /// an empty list it returns at once. Only the cancel button ends this one: when the window is
    /// closed by the window manager or by Escape, the call goes on without it, and the program must
    /// show it again (`window->show()`, from a timeout) for its user to cancel.
    void activation(std::list<std::string>& lines, const std::string& title,
                    const std::string& viewer_command);

    /// Shows the current page again: its lines in the browser, cut into pieces of 161 bytes (the
    /// byte after a full piece is lost), and its number in the indicator and in the input.
    void visu_page();

    void page_precedente();       ///< Shows the page before; on the first one, does nothing.
    void page_suivante();         ///< Shows the page after; on the last one, does nothing.
    void page_numero(int index);  ///< Shows a page, 0 for the first; nothing if it does not exist.

    /// Writes "tmp.txt" (see text_filter.h), and says so in a message that the user must close. The
    /// message is the same when the file cannot be opened.
    void fichier_texte();

    /// The same with "tmp.pdf" (see print_filter.h); then imprime_tmp_pdf().
    void fichier_pdf();

    /// Runs `"viewer_command" tmp.pdf` in the shell, waits for its end, and removes tmp.pdf.
    void imprime_tmp_pdf();

    /// For callers who have written "tmp.ps": turns it into tmp.pdf with ps2pdf, shows that in
    /// acroread, and removes both. No button leads here.
    void imprime_tmp_ps();
};
