// The screen filter of the paged viewer: the lines of one page, laid out for an FLTK browser.
//
// The markup of the lines is described in line_markup.h. The filter keeps a pointer to the caller's
// lines and copies none of them: they must outlive it.
#pragma once
#include <string>

#include "viewer/line_markup.h"

/// Lays lines out in columns of characters. The columns are those of the last definition line that
/// the filter was shown, by whatever call: a page that no definition opens has the columns of the
/// page shown before it.
///
///     std::string lines[] = {"#C 10 5 ", "ab#cdefgh"};
///     OFD_afficheur_filtre_affichage filter(lines, 2);
///     filter.visu_page(0);  // "\n@f@S14 ab        cdefg\n"
class OFD_afficheur_filtre_affichage {
public:
    std::string page_text;               ///< The last page built.
    line_markup::column_layout columns;  ///< Its rule flags are not shown on screen.
    int count;                           ///< Below 1: no line.
    std::string* lines;                  ///< The caller's array of `count` lines.

    /// Keeps `lines`, which may be null when `count` is below 1. There are no columns yet.
    OFD_afficheur_filtre_affichage(std::string* lines, int count);

    /// 0 for text, 1 for a #C line, 2 for #P, 3 for #T: see line_markup::type_of.
    int typeligne(const std::string& line);

    /// The index of the last page, not the number of pages: 0 for no line and for up to 77 counted
    /// lines, 1 for 78.
    int nb_pages();

    /// The screen lines of a page (0 is the first), one for each of its lines, each followed by a
    /// newline. "" for a page that does not exist.
    std::string visu_page(int page);

    /// One screen line, without a newline: "" for a definition of columns, which it takes over; a
    /// row of dashes as wide as the columns for a rule; the cells for text. Each cell is cut to the
    /// width of its column, and padded to it with spaces when a "#" ends it. Before any definition
    /// the columns have no width. Rules and texts start with "@f@S14 ", which sets a browser to its
    /// fixed-pitch font at size 14.
    ///
    /// A line that dashes or spaces have brought to a million characters gets no more of them,
    /// however wide its columns.
    std::string visu_ligne(const std::string& line);
};
