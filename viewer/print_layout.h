// What the PDF and the PostScript documents share: the walk over the pages, and where each rule and
// each cell goes. A writer brings a pen, which knows its language:
//
//     void rule(point from, point to);
//     void text(point at, const std::string& shown);
#pragma once
#include <cstdint>
#include <fstream>
#include <string>
#include <string_view>

#include "strings/number_formatting.h"
#include "strings/substring_editing.h"
#include "viewer/print_filter.h"

namespace print_layout {

inline constexpr std::int64_t character_pt = 5, row_pt = 10, cell_margin_pt = 5;

/// In points from the bottom left of the page. Wrapped to 32 bits, however wide the columns are.
struct point {
    std::int32_t x, y;
};

/// The point `characters` right of x `left`, in row `row` of a page whose row 0 is at y `top`.
inline point place(std::int64_t left, std::int64_t characters, std::int64_t top, std::int64_t row) {
    return {static_cast<std::int32_t>(left + character_pt * characters),
            static_cast<std::int32_t>(top - row_pt * row)};
}

/// "x y", in decimal.
inline std::string coordinates(point at) { return long2S(at.x) + " " + long2S(at.y); }

/// One more than a counter that callers may set to anything: the largest one wraps, as coordinates
/// do.
inline std::int32_t after(std::int32_t counter) {
    return static_cast<std::int32_t>(std::int64_t{counter} + 1);
}

/// The vertical rules of the open block, from the row
/// above the current one up to the row above its first.
template <class Pen>
void draw_column_rules(const OFD_afficheur_filtre_impression& filter, std::int32_t top, Pen pen) {
    std::int64_t characters = 0;
    for (int column = 0; column < line_markup::max_columns; ++column) {
        const auto at = [&](std::int64_t row) { return place(filter.left, characters, top, row); };
        if (filter.columns.flags[column])
            pen.rule(at(std::int64_t{filter.line_counter} - 1),
                     at(std::int64_t{filter.column_start_line} - 1));
        characters += filter.columns.widths[column];
    }
}

/// What is printed of a cell. It is cut first: a parenthesis counts in its width.
inline std::string printed(std::string_view cell, std::int32_t width) {
    std::string text = my_before(std::string(cell), width);
    std::erase_if(text, [](char byte) { return byte == '(' || byte == ')'; });
    return text;
}

/// The cells of a text line, except those that are exactly one space.
template <class Pen>
void draw_cells(const OFD_afficheur_filtre_impression& filter, std::int32_t top, Pen pen,
                std::string_view line) {
    std::int64_t characters = 0;
    line_markup::for_each_cell(line, [&](int column, std::string_view cell, bool) {
        const std::int32_t width = filter.columns.width(column);
        const std::string shown = printed(cell, width);
        if (shown != " ")
            pen.text(place(filter.left + cell_margin_pt, characters, top, filter.line_counter),
                     shown);
        characters += width;
    });
}

/// A line of the document, on a page whose row 0 is at y `top`.
template <class Pen>
void draw_line(OFD_afficheur_filtre_impression& filter, std::int32_t top, Pen pen,
               const std::string& line) {
    const auto at = [&](std::int64_t characters) {
        return place(filter.left, characters, top, filter.line_counter);
    };
    switch (line_markup::type_of(line)) {
        case line_markup::columns_line:
            draw_column_rules(filter, top, pen);
            filter.column_start_line = filter.line_counter;
            filter.columns.define(line);
            break;
        case line_markup::top_columns_line:
            filter.line_counter = 0;  // one row above a page's first; the block's start stays
            filter.columns.define(line);
            break;
        case line_markup::rule_line:
            pen.rule(at(0), at(filter.columns.total_width()));
            filter.line_counter = after(filter.line_counter);
            break;
        case line_markup::text_line:
            draw_cells(filter, top, pen, line);
            filter.line_counter = after(filter.line_counter);
            break;
    }
}

/// Where the next line of a page that was just opened goes.
inline void start_page(OFD_afficheur_filtre_impression& filter) {
    filter.line_counter = 1;
    filter.column_start_line = 1;
}

/// The functions that write a document's pieces.
struct pieces {
    using piece = void (OFD_afficheur_filtre_impression::*)(std::fstream&);
    piece begin;
    void (OFD_afficheur_filtre_impression::*line)(std::fstream&, const std::string&);
    void (OFD_afficheur_filtre_impression::*next_page)(std::fstream&, int);
    piece end;
};

/// A whole document.
inline void print(OFD_afficheur_filtre_impression& filter, std::fstream& out, const pieces& write) {
    (filter.*write.begin)(out);
    int breaks = 0;
    for (int index = 0; index < filter.count;) {
        const int end = line_markup::page_end(filter.lines, filter.count, index);
        for (; index < end; ++index) (filter.*write.line)(out, filter.lines[index]);
        if (end < filter.count) (filter.*write.next_page)(out, ++breaks);
    }
    (filter.*write.end)(out);
}

}  // namespace print_layout
