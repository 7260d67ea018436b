#include "strings/substring_editing.h"

#include <algorithm>

#include "strings/byte_search.h"

namespace {

/// Offset `n` of a text of `length` bytes: 0 when it is negative, the end when it is past it.
std::size_t clamp_position(int n, std::size_t length) {
    return n < 0 ? 0 : std::min(static_cast<std::size_t>(n), length);
}

}  // namespace

std::string my_after(const std::string& text, int n) {
    return text.substr(clamp_position(n, text.size()));
}

std::string my_before(std::string text, int n) {
    text.resize(clamp_position(n, text.size()));
    return text;
}

std::string my_at(const std::string& text, int from, int to) {
    const std::size_t begin = clamp_position(from, text.size());
    const std::size_t end = clamp_position(to, text.size());
    return begin < end ? text.substr(begin, end - begin) : std::string();
}

std::string bdelete(const std::string& text) {
    return text.size() < 3 ? std::string() : text.substr(1, text.size() - 2);
}

std::string substitute_char(const std::string& text, char character,
                            const std::string& replacement) {
    std::string result;
    result.reserve(text.size());
    for (const char byte : text)
        if (byte == character)
            result.append(replacement);
        else
            result.push_back(byte);
    return result;
}

std::string substitute_char(const std::string& text, char character, char replacement) {
    std::string result = text;
    std::ranges::replace(result, character, replacement);
    return result;
}

std::string substitute_string(const std::string& text, const std::string& pattern,
                              const std::string& replacement) {
    if (pattern.empty()) return text;
    std::string result;
    result.reserve(text.size());
    std::size_t scanned = 0;
    for (;;) {
        const std::size_t start = byte_search::first_occurrence(text, pattern, scanned);
        if (start == std::string::npos) return result.append(text, scanned);
        result.append(text, scanned, start - scanned).append(replacement);
        scanned = start + pattern.size();
    }
}

std::string cancel_begin_end_spaces(const std::string& text) {
    const std::size_t first = text.find_first_not_of(' ');
    if (first == std::string::npos) return {};
    return text.substr(first, text.find_last_not_of(' ') - first + 1);
}

std::string clever_substitute_space(const std::string& text, char character) {
    return substitute_char(cancel_begin_end_spaces(text), ' ', character);
}
