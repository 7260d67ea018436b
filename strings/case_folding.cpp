#include "strings/case_folding.h"

#include <algorithm>
#include <array>
#include <utility>

namespace {

struct accent {
    unsigned char byte;
    unsigned char letter;
};

constexpr accent iso_8859_1_accents[] = {
    {233, 'E'}, {232, 'E'}, {234, 'E'},  // e acute, grave, circumflex
    {224, 'A'}, {226, 'A'},              // a grave, circumflex
    {244, 'O'},                          // o circumflex
    {231, 'C'},                          // c cedilla
    {140, 'I'},                          // i circumflex, in code page 850
};

constexpr unsigned char utf8_lead = 0xC3;
constexpr accent utf8_accents[] = {
    // The byte is the one after the lead C3.
    {0xB6, 'O'}, {0xB4, 'O'},               // o diaeresis, circumflex
    {0xAE, 'I'}, {0xAD, 'I'},               // i circumflex, acute
    {0xAB, 'E'}, {0xA9, 'E'}, {0xA8, 'E'},  // e diaeresis, acute, grave
    {0xA7, 'C'},                            // c cedilla
    {0xA4, 'A'}, {0xA1, 'A'},               // a diaeresis, acute
};

constexpr unsigned char dotless_i_lead = 0xC4, dotless_i_second = 0xB1;

/// What a byte becomes: a character, or `dropped`.
using fold_table = std::array<short, 256>;
constexpr short dropped = -1;

constexpr fold_table ascii_capitals = [] {
    fold_table table{};
    for (short byte = 0; byte < 256; ++byte)
        table[static_cast<std::size_t>(byte)] = byte < 128 ? byte : dropped;
    for (std::size_t byte = 'a'; byte <= 'z'; ++byte) table[byte] = static_cast<short>(byte - 32);
    return table;
}();

constexpr fold_table iso_8859_1_capitals = [] {
    fold_table table = ascii_capitals;
    for (const accent& each : iso_8859_1_accents) table[each.byte] = each.letter;
    return table;
}();

constexpr fold_table after_utf8_lead = [] {
    fold_table table{};
    table.fill(dropped);
    for (const accent& each : utf8_accents) table[each.byte] = each.letter;
    return table;
}();

short lookup(const fold_table& table, char byte) { return table[static_cast<unsigned char>(byte)]; }

/// Folds each byte by itself, in place.
std::string fold(std::string text, const fold_table& table) {
    auto end = text.begin();
    for (const char byte : text) {
        const short folded = lookup(table, byte);
        if (folded != dropped) *end++ = static_cast<char>(folded);
    }
    text.erase(end, text.end());
    return text;
}

}  // namespace

std::string downcase(std::string text) {
    for (char& byte : text)
        if (byte >= 'A' && byte <= 'Z') byte = static_cast<char>(byte + 32);
    return text;
}

std::string upcase(std::string text) { return fold(std::move(text), ascii_capitals); }

std::string upcase_accent(std::string text) { return fold(std::move(text), iso_8859_1_capitals); }

std::string upcase_accent2(std::string text) {
    const auto byte_at = [&text](std::size_t at) {
        return at < text.size() ? static_cast<unsigned char>(text[at]) : 0U;
    };
    std::size_t length = 0;
    const auto keep = [&text, &length](short folded) {
        if (folded != dropped) text[length++] = static_cast<char>(folded);
    };
    for (std::size_t at = 0; at < text.size(); ++at) {
        if (byte_at(at) == utf8_lead) {
            keep(after_utf8_lead[byte_at(++at)]);
        } else if (byte_at(at) == dotless_i_lead) {
            if (byte_at(at + 1) == utf8_lead) continue;  // the C3 leads a pair of its own
            if (byte_at(++at) == dotless_i_second) keep('I');
        } else {
            keep(ascii_capitals[byte_at(at)]);
        }
    }
    text.resize(length);
    return text;
}
