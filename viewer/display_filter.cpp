#include "viewer/display_filter.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace {

// FLTK's browser: fixed-pitch font, size 14. The space ends the format and is shown.
constexpr std::string_view fixed_pitch = "@f@S14 ";

// Any text file may hold a definition of ten digits. It must not use up the memory.
constexpr std::int64_t longest_filled_line = 1'000'000;

/// Appends `filler` `length` times, as far as a line may be filled; never for a negative length.
void fill(std::string& line, std::int64_t length, char filler) {
    const std::int64_t room = longest_filled_line - static_cast<std::int64_t>(line.size());
    length = std::min(length, room);
    if (length > 0) line.append(static_cast<std::size_t>(length), filler);
}

std::string rule(const line_markup::column_layout& columns) {
    std::string line(fixed_pitch);
    fill(line, columns.total_width(), '-');
    return line;
}

std::string text(const line_markup::column_layout& columns, std::string_view source) {
    std::string line(fixed_pitch);
    line_markup::for_each_cell(source, [&](int column, std::string_view cell, bool more) {
        const std::int32_t width = std::max(columns.width(column), 0);
        const std::string_view shown = cell.substr(0, static_cast<std::size_t>(width));
        line += shown;
        if (more) fill(line, width - static_cast<std::int64_t>(shown.size()), ' ');
    });
    return line;
}

}  // namespace

OFD_afficheur_filtre_affichage::OFD_afficheur_filtre_affichage(std::string* lines, int count)
    : count(count), lines(lines) {}

int OFD_afficheur_filtre_affichage::typeligne(const std::string& line) {
    return line_markup::type_of(line);
}

int OFD_afficheur_filtre_affichage::nb_pages() { return line_markup::last_page(lines, count); }

std::string OFD_afficheur_filtre_affichage::visu_page(int page) {
    page_text.clear();
    if (page < 0) return page_text;
    int first = 0;
    for (; page > 0 && first < count; --page) first = line_markup::page_end(lines, count, first);
    const int end = line_markup::page_end(lines, count, first);
    for (; first < end; ++first) page_text += visu_ligne(lines[first]) + '\n';
    return page_text;
}

std::string OFD_afficheur_filtre_affichage::visu_ligne(const std::string& line) {
    switch (line_markup::type_of(line)) {
        case line_markup::columns_line:
        case line_markup::top_columns_line:
            columns.define(line);
            return "";
        case line_markup::rule_line:
            return rule(columns);
        default:
            return text(columns, line);
    }
}
