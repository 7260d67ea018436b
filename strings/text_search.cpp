#include "strings/text_search.h"

#include <algorithm>
#include <array>
#include <string_view>

#include "strings/byte_search.h"

namespace {

constexpr std::array<bool, 256> word_bytes = [] {
    std::array<bool, 256> table{};
    for (const char byte : std::string_view("ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz"
                                            "0123456789._,@"))
        table[static_cast<unsigned char>(byte)] = true;
    return table;
}();

}  // namespace

int est_lc(char character) { return word_bytes[static_cast<unsigned char>(character)]; }

int contains(const std::string& text, const std::string& pattern) {
    return byte_search::first_occurrence(text, pattern) != std::string::npos;
}

int find(const std::string& text, const std::string& pattern) {
    const std::size_t position = byte_search::first_occurrence(text, pattern);
    return position == std::string::npos ? -1 : static_cast<int>(position);
}

int char_occurences(const std::string& text, char character) {
    return static_cast<int>(std::ranges::count(text, character));
}
