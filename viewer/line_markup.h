// The markup of the viewer's lines: what kind of line each one is, where the pages break, and how
// the columns are laid out. The filters of the screen, of PDF, PostScript and plain text all read
// their lines through it.
//
//  | #C T20 T5 T   opens a block of two columns, 20 and 5 characters wide, with three rules
//  | #P T20 T5 T   the same; in print, the line after it also goes to the top of the page
//  | #T            a horizontal rule as wide as the columns
//  | bolts#144     any other line is text: cells, cut at each "#"
//
// A line is bytes: nothing is decoded. No function throws (memory exhaustion aside), keeps state
// between calls or reads the locale.
#pragma once
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace line_markup {

/// What a filter's `typeligne` answers.
enum line_type : int { text_line = 0, columns_line = 1, top_columns_line = 2, rule_line = 3 };

/// The type of `line`, which its first two bytes alone decide. A shorter line is text, and so is
/// "#" before any other byte than C, P and T.
///
///     line_markup::type_of("#T");  // line_markup::rule_line
///     line_markup::type_of("#t");  // line_markup::text_line
[[nodiscard]] line_type type_of(std::string_view line);

/// How many lines a page holds. Column definitions are not counted: they take no room, and stay on
/// the page where they fall.
inline constexpr int lines_per_page = 77;

/// The index just after the last line of the page that starts at line `first`:
/// where the next page starts, or `count` on the last page. A page ends with its
/// 77th counted line, so a definition that follows that line goes to the next
/// page. Gives `count` when there is no line, or when `first` is at the end or
/// beyond. `lines` is an array of `count` lines, not looked at when there is none.
///
///     const std::string lines[] = {"#C 10 ", "a", "b"};
///     line_markup::page_end(lines, 3, 0);  // 3: one page holds them all
[[nodiscard]] int page_end(const std::string* lines, int count, int first);

/// The index of the last page: the number of pages minus one, 0 when there is no line.
[[nodiscard]] int last_page(const std::string* lines, int count);

/// How many columns a definition can lay out; the others are ignored.
inline constexpr int max_columns = 15;

/// The columns that the last definition line laid out: none to begin with.
struct column_layout {
    std::int32_t widths[max_columns] = {};  ///< In characters. 0 after the last column.
    char flags[max_columns] = {};  ///< 1: a vertical rule at this column's left edge. Else 0.

    /// Replaces the layout with that of a definition line. Each number that a space
    /// ends is the width of the next column, unless it is 0; "T" flags the next
    /// column, which after the last width is the right edge of the table; every
    /// other byte is skipped, the "#C" or "#P" included. A number that no space
    /// ends is dropped. What passes 15 columns is ignored. Numbers wrap at 32 bits.
    ///
    ///     line_markup::column_layout columns;
    ///     columns.define("#C T10 T20 T ");
    ///     columns.width(1);         // 20
    ///     int{columns.flags[2]};    // 1: the right edge of the table
    ///     columns.total_width();    // 30
    void define(std::string_view line);

    /// The width of a column, in characters; 0 beyond the 15th.
    std::int32_t width(int column) const { return column < max_columns ? widths[column] : 0; }

    /// The width of them all, in characters, wrapped to 32 bits.
    std::int32_t total_width() const;
};

/// Calls `visit(column, cell, more)` for each cell of a text line, from column 0 on: the bytes
/// between its "#"s, empty cells included. `more` is true when a "#" ends the cell, and false for
/// the last one, which is the whole line when it has no "#".
template <class Visit>
void for_each_cell(std::string_view line, Visit visit) {
    std::size_t start = 0;
    for (int column = 0;; ++column) {
        const std::size_t end = line.find('#', start);
        const bool more = end != std::string_view::npos;
        visit(column, line.substr(start, more ? end - start : end), more);
        if (!more) return;
        start = end + 1;
    }
}

}  // namespace line_markup
