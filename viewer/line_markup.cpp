#include "viewer/line_markup.h"

#include <numeric>

namespace line_markup {

namespace {

constexpr struct {
    char letter;
    line_type type;
} markers[] = {{'C', columns_line}, {'P', top_columns_line}, {'T', rule_line}};

bool takes_room(line_type type) { return type == text_line || type == rule_line; }

}  // namespace

line_type type_of(std::string_view line) {
    if (line.size() < 2 || line[0] != '#') return text_line;
    for (const auto& [letter, type] : markers)
        if (line[1] == letter) return type;
    return text_line;
}

int page_end(const std::string* lines, int count, int first) {
    // Counted from the index of the first line, as the limit is.
    int counted = first;
    for (int index = first; index < count; ++index) {
        if (takes_room(type_of(lines[index]))) ++counted;
        if (counted - first == lines_per_page) return index + 1;
    }
    return count;
}

int last_page(const std::string* lines, int count) {
    int page = 0;
    for (int next = page_end(lines, count, 0); next < count; ++page)
        next = page_end(lines, count, next);
    return page;
}

void column_layout::define(std::string_view line) {
    *this = {};
    std::uint32_t number = 0;
    int next = 0;  // the column that the next width is for
    for (const char byte : line) {
        if (byte >= '0' && byte <= '9')
            number = number * 10 + static_cast<std::uint32_t>(byte - '0');
        if (next == max_columns) continue;
        if (byte == 'T') flags[next] = 1;
        if (byte == ' ' && number != 0) {
            widths[next++] = static_cast<std::int32_t>(number);
            number = 0;
        }
    }
}

std::int32_t column_layout::total_width() const {
    const std::int64_t sum = std::accumulate(widths, widths + max_columns, std::int64_t{0});
    return static_cast<std::int32_t>(sum);
}

}  // namespace line_markup
