// The print filter of the paged viewer: the lines as a PDF or a PostScript document.
//
// The markup of the lines is described in line_markup.h, and the documents in
// docs/markup_and_exports.md. The filter keeps a pointer to the caller's lines and copies none of
// them: they must outlive it.
#pragma once
#include <cstdint>
#include <fstream>
#include <string>

#include "viewer/line_markup.h"

/// Writes lines as Times-Roman text of 7 points in columns, with the rules that the markup asks
/// for. Pages break as on screen. Each line of the output is flushed as it is written; a failing
/// stream is not reported.
///
/// The columns are those of the last definition line that the filter was shown, by whatever call:
/// a second document starts with the columns that the first one ended with. The numbers may be set
/// to anything: counters and coordinates wrap at 32 bits.
///
///     std::string lines[] = {"#C 10 5 ", "ab#cdefgh"};
///     std::fstream out("tmp.pdf", std::ios::out);
///     OFD_afficheur_filtre_impression(lines, 2).imprime_pdf(out);
class OFD_afficheur_filtre_impression {
public:
    std::string* lines;                  ///< The caller's array of `count` lines.
    std::int32_t count;                  ///< Below 1: no line.
    std::int32_t page_height = 800;      ///< The y of row 0 in PostScript, in points.
    std::int32_t top = 780;              ///< The y of row 0 in PDF, in points.
    std::int32_t page_index = 0;         ///< Page breaks written so far in this PDF document.
    std::int32_t left = 40;              ///< The x of the table's left edge, in points.
    line_markup::column_layout columns;  ///< A character of width is 5 points.
    char scratch[100000];                ///< Room kept in the object. Nothing uses it.
    std::int32_t line_counter = 1;       ///< The current line's row on the page, 10 points each.
    std::int32_t column_start_line = 1;  ///< The row where the current block of columns began.

    /// Keeps `lines`, which may be null when `count` is below 1. There are no columns yet.
    OFD_afficheur_filtre_impression(std::string* lines, int count);

    /// 0 for text, 1 for a #C line, 2 for #P, 3 for #T: see line_markup::type_of.
    int typeligne(const std::string& line);

    /// Writes the whole PDF document: begin_pdf, pdf for each line, next_page_pdf between pages,
    /// end_pdf. No line gives one page, empty but for the rules of columns left by an earlier
    /// document. The lengths of its objects and its cross-reference table are constants that do not
    /// describe it: its readers rebuild them.
    void imprime_pdf(std::fstream& out);

    /// Goes back to row 1 of the first page and writes what stands before the first line: the
    /// catalogue, the list of all pages (counted from the lines), the font, the first page's head.
    void begin_pdf(std::fstream& out);

    /// Writes one line at the current row, and goes to the next row unless it is a definition. Text
    /// loses its parentheses, after it was cut to its column; a cell that is then one space is not
    /// written. A #C line writes the vertical rules of the block that it closes; a #P line writes
    /// nothing and goes to row 0.
    void pdf(std::fstream& out, const std::string& line);

    /// Writes the vertical rules of the open block, closes the page, opens the next and goes to its
    /// row 1. `page` is not used.
    void next_page_pdf(std::fstream& out, int page);

    /// Writes the vertical rules of the open block and closes the document.
    void end_pdf(std::fstream& out);

    /// Writes the whole PostScript document, page for page and line for line as imprime_pdf does.
    void imprime_postscript(std::fstream& out);

    /// Goes back to row 1 and writes the head, which says "%%Pages: 1" however many there are.
    void begin_postscript(std::fstream& out);

    /// As pdf.
    void postscript(std::fstream& out, const std::string& line);

    /// As next_page_pdf. `page`, 1 for the first break, is written in the page's comment.
    void next_page_postscript(std::fstream& out, int page);

    /// As end_pdf.
    void end_postscript(std::fstream& out);
};
