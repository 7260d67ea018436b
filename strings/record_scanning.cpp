#include "strings/record_scanning.h"

#include <algorithm>
#include <array>
#include <string_view>

#include "strings/byte_search.h"
#include "strings/text_search.h"

namespace {

/// Returns the part of `text` before the separator at `position`, and leaves in `after` the part
/// that follows it. `npos` gives the whole text, and leaves nothing. `after` may be `text` itself.
std::string cut(const std::string& text, std::size_t position, std::string& after) {
    std::string before = text.substr(0, position);
    if (position == std::string::npos)
        after.clear();
    else
        after.assign(text, position + 1);
    return before;
}

/// The bytes of a NUL-terminated set, looked up one by one: as quick however large the set is.
class byte_set {
public:
    explicit byte_set(const char* bytes) {
        for (; bytes && *bytes; ++bytes) holds_[static_cast<unsigned char>(*bytes)] = true;
    }
    bool holds(char byte) const { return holds_[static_cast<unsigned char>(byte)]; }

private:
    std::array<bool, 256> holds_{};
};

bool is_digit(char byte) { return byte >= '0' && byte <= '9'; }

bool is_number_byte(char byte) { return is_digit(byte) || byte == '.'; }

bool is_word_byte(char byte) { return est_lc(byte) != 0; }

/// The bytes that continue a word for contains_token: not quite those of est_lc.
bool continues_word(char byte) {
    constexpr std::string_view accented = "\xE0\xE2\xE7\xE8\xE9\xEA\xF4\x8C";
    return is_digit(byte) || (byte >= 'A' && byte <= 'Z') || (byte >= 'a' && byte <= 'z') ||
           accented.find(byte) != std::string_view::npos;
}

/// Where the token that starts at `start` ends; it has one byte at least.
std::size_t token_end(std::string_view text, std::size_t start, char separator) {
    bool (*belongs)(char) = nullptr;
    if (is_word_byte(text[start])) belongs = is_word_byte;
    if (text[start] == '-') belongs = is_number_byte;
    std::size_t end = start + 1;
    if (!belongs) return end;
    while (end < text.size() && text[end] != separator && belongs(text[end])) ++end;
    return end;
}

/// Whether the occurrence from `start` to `end` stands
/// alone. The text before `scanned` plays no part in it.
bool is_whole_token(std::string_view text, std::size_t scanned, std::size_t start,
                    std::size_t end) {
    if (start > scanned && is_word_byte(text[start - 1])) return false;
    return end == text.size() || !is_word_byte(text[end]);
}

}  // namespace

std::string next_record(const std::string& text, char separator, std::string& rest) {
    return cut(text, text.find(separator), rest);
}

std::string next_record(const std::string& text, const char* separators, std::string& rest,
                        char& found) {
    const byte_set set(separators);
    const auto first = std::ranges::find_if(text, [&](char byte) { return set.holds(byte); });
    const bool any = first != text.end();
    const char separator = any ? *first : ' ';
    const std::size_t position =
        any ? static_cast<std::size_t>(first - text.begin()) : std::string::npos;
    std::string record = cut(text, position, rest);
    found = separator;
    return record;
}

std::string last_record(const std::string& text, char separator, std::string& last) {
    return cut(text, text.rfind(separator), last);
}

std::string next_Stringtoken(const std::string& text, char separator, std::string* rest) {
    std::size_t start = text.find_first_not_of(separator);
    if (start == std::string::npos) start = text.empty() ? 0 : text.size() - 1;
    const std::size_t end = text.empty() ? 0 : token_end(text, start, separator);
    std::string token = text.substr(start, end - start);
    rest->assign(text, end);
    return token;
}

int contains_token(const std::string& text, const std::string& token) {
    const std::size_t position = byte_search::first_occurrence(text, token);
    if (position == std::string::npos) return 0;
    const std::size_t end = position + token.size();
    return end >= text.size() || !continues_word(text[end]);
}

std::string substitute_token(const std::string& text, const std::string& token,
                             const std::string& replacement) {
    if (token.empty()) return text;
    std::string result;
    result.reserve(text.size());
    std::size_t scanned = 0;
    for (;;) {
        const std::size_t start = byte_search::first_occurrence(text, token, scanned);
        if (start == std::string::npos) return result.append(text, scanned);
        const std::size_t end = start + token.size();
        result.append(text, scanned, start - scanned);
        result.append(is_whole_token(text, scanned, start, end) ? replacement : token);
        scanned = end;
    }
}
