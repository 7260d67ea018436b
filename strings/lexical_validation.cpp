#include "strings/lexical_validation.h"

#include <algorithm>
#include <string_view>

#include "strings/double_machine.h"

namespace {

bool is_digit(char byte) { return byte >= '0' && byte <= '9'; }

/// One digit at least, and nothing else.
bool is_digits(std::string_view text) {
    return !text.empty() && std::ranges::all_of(text, is_digit);
}

bool is_hexadecimal_digit(char byte) {
    return is_digit(byte) || (byte >= 'A' && byte <= 'F') || (byte >= 'a' && byte <= 'f');
}

bool is_binary_digit(char byte) { return byte == '0' || byte == '1'; }

bool is_ascii_letter(char byte) {
    return (byte >= 'A' && byte <= 'Z') || (byte >= 'a' && byte <= 'z');
}

bool is_letter_or_digit(char byte) { return is_ascii_letter(byte) || is_digit(byte); }

bool is_name_byte(char byte) { return is_letter_or_digit(byte) || byte == '_'; }

struct byte_range {
    unsigned char first, last;
};

constexpr byte_range iso_8859_1_letters[] = {{0x41, 0x5A}, {0x61, 0x7A}, {0xB5, 0xB5}, {0xC0, 0xD6},
                                             {0xD9, 0xF6}, {0xF9, 0xFD}, {0xFF, 0xFF}};

/// Whether the rest of `text`, after a first byte that the caller has checked, is that of a name.
bool ends_as_name(std::string_view text) {
    return is_letter_or_digit(text.back()) && std::ranges::all_of(text.substr(1), is_name_byte);
}

}  // namespace

int checkuint(const std::string& text) { return is_digits(text); }

int checkint(const std::string& text) {
    return is_digits(std::string_view(text).substr(text.starts_with('-') ? 1 : 0));
}

int checkdouble(const std::string& text, char separator) {
    return double_machine::read(text, separator).accepted;
}

int checkhex(const std::string& text) { return std::ranges::all_of(text, is_hexadecimal_digit); }

int checkhexintel(const std::string& text) {
    if (!text.ends_with('h')) return 0;
    return std::ranges::all_of(std::string_view(text).substr(0, text.size() - 1),
                               is_hexadecimal_digit);
}

int checkbin(const std::string& text) { return std::ranges::all_of(text, is_binary_digit); }

int check_ISO_8859_1_alphabetical_letter(char character) {
    const auto byte = static_cast<unsigned char>(character);
    return std::ranges::any_of(iso_8859_1_letters, [byte](const byte_range& range) {
        return byte >= range.first && byte <= range.last;
    });
}

int checkvarname(const std::string& text) {
    return !text.empty() && is_ascii_letter(text.front()) && ends_as_name(text);
}

int checkvarname_with_pre_underscore(const std::string& text) {
    if (text.empty()) return 0;
    return (is_ascii_letter(text.front()) || text.front() == '_') && ends_as_name(text);
}

int beginbynumber(const std::string& text) { return !text.empty() && is_digit(text.front()); }
