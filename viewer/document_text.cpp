#include "viewer/document_text.h"

#include <cstdint>

namespace document_text {

namespace {

struct character {
    char32_t code;
    std::size_t bytes;
};

constexpr char32_t malformed = 0x110000;
constexpr char32_t least[] = {0, 0, 0x80, 0x800, 0x10000};  // of a character of so many bytes

bool continues(char byte) { return (byte & 0xC0) == 0x80; }

/// How many bytes the character has that `lead` begins; 0 when it begins none.
std::size_t announced_bytes(unsigned char lead) {
    if (lead < 0x80) return 1;
    if (lead < 0xC0 || lead >= 0xF8) return 0;
    return lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4;
}

/// The character that `text`, which is not empty, begins with. A wrong byte counts alone.
character first_character(std::string_view text) {
    constexpr character wrong = {malformed, 1};
    const auto lead = static_cast<unsigned char>(text[0]);
    const std::size_t bytes = announced_bytes(lead);
    if (bytes == 1) return {lead, 1};
    if (bytes == 0 || bytes > text.size()) return wrong;
    char32_t code = lead & (0x7Fu >> bytes);
    for (const char byte : text.substr(1, bytes - 1)) {
        if (!continues(byte)) return wrong;
        code = code << 6 | (byte & 0x3Fu);
    }
    const bool half_of_pair = code >= 0xD800 && code < 0xE000;
    if (code < least[bytes] || code >= malformed || half_of_pair) return wrong;
    return {code, bytes};
}

bool is_control(char32_t code) { return code < 0x20 || (code >= 0x7F && code < 0xA0); }

char latin(char32_t code) {
    if (is_control(code)) return ' ';
    return code < 0x100 ? static_cast<char>(code) : '?';
}

// The standard encoding's bytes for U+00A0 to U+00FF: the same character, the same shape (a ring
// for the degree), or the letter without its accent.
constexpr std::string_view standard_bytes =
    " \xA1\xA2\xA3\xA8\xA5|\xA7\xC8?\xE3\xAB?-?\xC5"
    "\xCA?23\xC2?\xB6\xB4\xCB"
    "1\xEB\xBB???\xBF"
    "AAAAAA\xE1"
    "CEEEEIIII?NOOOOO?\xE9UUUUY?\xFB"
    "aaaaaa\xF1"
    "ceeeeiiii?nooooo?\xF9uuuuy?y";
static_assert(standard_bytes.size() == 0x60);

/// In the standard encoding the quotes of ASCII are the typographic ones.
char standard(char32_t code) {
    if (code == '\'') return '\xA9';
    if (code == '`') return '\xC1';
    return code >= 0xA0 && code < 0x100 ? standard_bytes[code - 0xA0] : latin(code);
}

template <class Encode>
std::string encoded(std::string_view text, Encode encode) {
    std::string bytes;
    for (character next; !text.empty(); text.remove_prefix(next.bytes)) {
        next = first_character(text);
        bytes += encode(next.code);
    }
    return bytes;
}

/// Whether `text` begins with `word` once the filters have dropped its parentheses.
bool reads_as(std::string_view text, std::string_view word) {
    for (const char byte : text) {
        if (byte == '(' || byte == ')') continue;
        if (byte != word.front()) return false;
        word.remove_prefix(1);
        if (word.empty()) return true;
    }
    return false;
}

/// How the first byte of `text` is written. Readers that rebuild a document look for these words.
std::string_view written(std::string_view text) {
    if (text[0] == '\\') return "\\\\";
    const bool ends = text[0] == 'e' && (reads_as(text, "endstream") || reads_as(text, "endobj"));
    return ends ? "\\145" : text.substr(0, 1);
}

/// A half of an escape would take the document's next bytes into the text.
std::string escaped(std::string_view cell, std::int64_t width) {
    std::string safe;
    for (; !cell.empty(); cell.remove_prefix(1)) {
        const std::string_view next = written(cell);
        const std::int64_t left = width - static_cast<std::int64_t>(safe.size());
        if (left > 0 && left < static_cast<std::int64_t>(next.size()))
            safe.append(static_cast<std::size_t>(left), ' ');
        safe += next;
    }
    return safe;
}

template <class Encode>
std::string printable(const std::string& line, line_markup::column_layout& columns, Encode encode) {
    const line_markup::line_type type = line_markup::type_of(line);
    if (type == line_markup::columns_line || type == line_markup::top_columns_line)
        columns.define(line);
    if (type != line_markup::text_line) return line;
    std::string safe;
    line_markup::for_each_cell(line, [&](int column, std::string_view cell, bool more) {
        safe += escaped(encoded(cell, encode), columns.width(column));
        if (more) safe += '#';
    });
    // A "C" that has lost its cedilla must not make a definition of the line.
    if (line_markup::type_of(safe) != line_markup::text_line) safe[1] = 'c';
    return safe;
}

}  // namespace

bool is_utf8(std::string_view text) {
    for (character next; !text.empty(); text.remove_prefix(next.bytes)) {
        next = first_character(text);
        if (next.code == malformed) return false;
    }
    return true;
}

std::string for_text(const std::string& line) {
    if (line_markup::type_of(line) != line_markup::text_line) return line;
    return encoded(line, latin);
}

std::string for_pdf(const std::string& line, line_markup::column_layout& columns) {
    return printable(line, columns, latin);
}

std::string for_postscript(const std::string& line, line_markup::column_layout& columns) {
    return printable(line, columns, standard);
}

}  // namespace document_text
