#include "examples/lecteur/document.h"

#include <algorithm>
#include <cstdio>
#include <fstream>
#include <string_view>

#include "viewer/document_text.h"

namespace {

constexpr std::size_t line_characters = 105;  // as many as the window shows side by side
constexpr std::size_t screen_bytes = 154;     // what the window shows of a line without loss
constexpr std::size_t print_bytes = 4 * line_characters;
constexpr std::size_t tab_characters = 8;

/// "#C T20 T8 T", but not "#Chapter".
bool defines_columns(const std::string& line) {
    const line_markup::line_type type = line_markup::type_of(line);
    return (type == line_markup::columns_line || type == line_markup::top_columns_line) &&
           line.find_first_not_of("0123456789 T", 2) == std::string::npos &&
           line.find_first_of("0123456789", 2) != std::string::npos;
}

/// How a character is written while lines are laid out.
using writer = std::string (*)(std::string_view character);

std::string screen_writing(std::string_view character) {
    return character == "#" ? "\xE2\x99\xAF" : std::string(character);
}

std::string unchanged(std::string_view character) { return std::string(character); }

std::string octal(char byte) {
    char digits[8];
    std::snprintf(digits, sizeof digits, "\\%03o", static_cast<unsigned>(byte));
    return digits;
}

/// A line of plain text, in which nothing is markup.
std::string without_markup(std::string_view line, safe_line safe) {
    line_markup::column_layout wide_enough;
    std::string printed;
    for (;;) {
        const std::size_t end = line.find_first_of("#()");
        printed += safe(std::string(line.substr(0, end)), wide_enough);
        if (end == std::string_view::npos) return printed;
        printed += octal(line[end]);
        line.remove_prefix(end + 1);
    }
}

/// ISO-8859-1 as UTF-8.
std::string recoded(const std::string& line) {
    std::string utf8;
    for (const unsigned char byte : line) {
        if (byte >= 0x80) utf8 += static_cast<char>(0xC0 | byte >> 6);
        utf8 += static_cast<char>(byte < 0x80 ? byte : 0x80 | (byte & 0x3F));
    }
    return utf8;
}

/// The text in UTF-8, without the mark that some editors put before it.
lines as_utf8(const lines& text) {
    constexpr std::string_view byte_order_mark = "\xEF\xBB\xBF";
    lines utf8 = text;
    if (!std::ranges::all_of(text, document_text::is_utf8))
        std::ranges::transform(text, utf8.begin(), recoded);
    else if (!utf8.empty() && utf8[0].starts_with(byte_order_mark))
        utf8[0].erase(0, byte_order_mark.size());
    return utf8;
}

bool continues_character(char byte) { return (byte & 0xC0) == 0x80; }
bool is_control(char byte) { return (byte >= 0 && byte < ' ') || byte == 0x7F; }

/// The length of the UTF-8 character at `start`.
std::size_t character_bytes(std::string_view line, std::size_t start) {
    std::size_t end = start + 1;
    while (end < line.size() && continues_character(line[end])) ++end;
    return end - start;
}

/// Lays out one line of plain text, in as many lines as it needs.
class folder {
public:
    folder(lines& out, writer write, std::size_t most_bytes)
        : out_(out), write_(write), most_bytes_(most_bytes) {}

    void add(std::string_view line) {
        for (std::size_t start = 0; start < line.size();) {
            const std::string_view character = line.substr(start, character_bytes(line, start));
            if (character == "\t") {
                do put(" ");
                while (characters_ % tab_characters);
            } else {
                put(is_control(line[start]) ? " " : write_(character));
            }
            start += character.size();
        }
        end_line();
    }

private:
    void put(const std::string& written) {
        if (characters_ == line_characters || current_.size() + written.size() > most_bytes_)
            end_line();
        current_ += written;
        ++characters_;
    }
    void end_line() {
        out_.push_back(std::move(current_));
        current_.clear();
        characters_ = 0;
    }

    lines& out_;
    writer write_;
    std::size_t most_bytes_;
    std::string current_;
    std::size_t characters_ = 0;
};

lines lay_out(const lines& text, writer write, std::size_t most_bytes) {
    lines out = {"#C " + std::to_string(most_bytes) + " "};
    folder fold(out, write, most_bytes);
    for (const std::string& line : as_utf8(text)) fold.add(line);
    return out;
}

}  // namespace

std::optional<lines> read_lines(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    if (!in) return std::nullopt;
    lines text;
    for (std::string line; std::getline(in, line);) {
        if (line.ends_with('\r')) line.pop_back();
        text.push_back(line);
    }
    if (in.bad()) return std::nullopt;  // a folder, say
    return text;
}

bool has_markup(const lines& text) { return std::ranges::any_of(text, defines_columns); }

lines for_screen(const lines& text) { return lay_out(text, screen_writing, screen_bytes); }

lines for_print(const lines& text, safe_line safe) {
    line_markup::column_layout columns;
    lines printed;
    if (has_markup(text)) {
        for (const std::string& line : as_utf8(text)) printed.push_back(safe(line, columns));
    } else {
        printed = lay_out(text, unchanged, print_bytes);
        for (std::size_t index = 1; index < printed.size(); ++index)
            printed[index] = without_markup(printed[index], safe);
    }
    return printed;
}
