// Texts replaced in, folded, searched and cut into
// words, by the toolkit and by the standard library.
#include "bench/strings_families.h"

#include <algorithm>
#include <cctype>
#include <string>

#include "bench/comparison.h"
#include "strings/case_folding.h"
#include "strings/document_filters.h"
#include "strings/record_scanning.h"
#include "strings/substring_editing.h"
#include "strings/text_search.h"

namespace {

std::string replaced_by_find(const std::string& text, const std::string& pattern,
                             const std::string& replacement) {
    std::string result;
    std::size_t from = 0;
    for (std::size_t at; (at = text.find(pattern, from)) != std::string::npos;
         from = at + pattern.size())
        result.append(text, from, at - from).append(replacement);
    return result.append(text, from);
}

std::string replaced_in_place(std::string text, const std::string& pattern,
                              const std::string& replacement) {
    for (std::size_t at = 0; (at = text.find(pattern, at)) != std::string::npos;
         at += replacement.size())
        text.replace(at, pattern.size(), replacement);
    return text;
}

void add_filtering() {
    static const std::string text = substitute_char(sample_text(10'000), 'e', "\xC3\xA9");
    // clang-format off
    static const std::string patterns[] = {
        "'", "\xE2\x80\x99", "\xC2\xAB", "\xC2\xBB", "\xE2\x80\x93", "\xC3\x89", "\xC3\x88", "\xC3\x8A",
        "\xC3\x8B", "\xC3\x87", "\xC3\xA9", "\xC3\xA8", "\xC3\xAA", "\xC3\xAB", "\xC3\xA7", "\xC3\xA0",
        "\xC3\xB6", "\xC3\xB4", "\xC3\xAE", "\xC3\xAF", "\xC3\x97", "#", "$"};
    // clang-format on
    add_way("10000 bytes of RTF", "rtf_String_filter", [] { return rtf_String_filter(text); });
    add_way("10000 bytes of RTF", "23 std::string::find loops", [] {
        std::string filtered = text;
        for (const std::string& pattern : patterns)
            filtered = replaced_by_find(filtered, pattern, "\\'e9");
        return filtered;
    });
}

void add_editing() {
    for (const std::size_t length : {100UL, 10'000UL, 1'000'000UL}) {
        const std::string text = sample_text(length);
        const std::string task = "\" x \" replaced in " + std::to_string(length) + " bytes";
        add_way(task, "substitute_string",
                [text] { return substitute_string(text, " x ", " yy "); });
        add_way(task, "std::string::find loop",
                [text] { return replaced_by_find(text, " x ", " yy "); });
        if (length <= 10'000)
            add_way(task, "std::string::replace in place",
                    [text] { return replaced_in_place(text, " x ", " yy "); });
    }
    static const std::string text = sample_text(10'000);
    add_way("word replaced in 10000 bytes", "substitute_token",
            [] { return substitute_token(text, "x", "yy"); });
    add_way("word replaced in 10000 bytes", "std::string::find loop, any x",
            [] { return replaced_by_find(text, "x", "yy"); });
}

void add_case_folding() {
    static const std::string text = sample_text(10'000);
    add_way("10000 bytes lowered", "downcase", [] { return downcase(text); });
    add_way("10000 bytes lowered", "std::transform with std::tolower", [] {
        std::string lower = text;
        std::ranges::transform(lower, lower.begin(), [](unsigned char byte) {
            return static_cast<char>(std::tolower(byte));
        });
        return lower;
    });
    add_way("10000 bytes raised", "upcase", [] { return upcase(text); });
    add_way("10000 bytes raised", "std::transform with std::toupper", [] {
        std::string upper = text;
        std::ranges::transform(upper, upper.begin(), [](unsigned char byte) {
            return static_cast<char>(std::toupper(byte));
        });
        return upper;
    });
}

void add_searching() {
    static const std::string text = sample_text(10'000);
    static const std::string absent = "needle after the last word";
    add_way("absent words in 10000 bytes", "find", [] { return find(text, absent); });
    add_way("absent words in 10000 bytes", "std::string::find", [] { return text.find(absent); });

    static const std::string same(10'000, 'a'), nearly = std::string(1'000, 'a') + "b";
    add_way("near miss in 10000 bytes", "find", [] { return find(same, nearly); });
    add_way("near miss in 10000 bytes", "std::string::find", [] { return same.find(nearly); });
}

std::vector<std::string> getline_records(const std::string& line) {
    std::istringstream in(line);
    std::vector<std::string> records;
    for (std::string record; std::getline(in, record, ';');) records.push_back(record);
    return records;
}

std::vector<std::string> next_records(std::string line) {
    std::vector<std::string> records;
    while (!line.empty()) records.push_back(next_record(line, ';', line));
    return records;
}

std::vector<std::string> next_tokens(std::string line) {
    std::vector<std::string> tokens;
    while (!line.empty()) tokens.push_back(next_Stringtoken(line, ' ', &line));
    return tokens;
}

/// Separators that no sample text holds.
std::string absent_separators(std::size_t count) {
    std::string set;
    for (int byte = 255; set.size() < count; --byte) set += static_cast<char>(byte);
    return set;
}

void add_separator_sets() {
    static const std::string text = sample_text(10'000);
    for (const std::size_t count : {1UL, 2UL, 10UL, 100UL}) {
        const std::string set = absent_separators(count);
        const std::string task = std::to_string(count) + " separators, none in 10000 bytes";
        add_way(task, "next_record", [set] {
            std::string rest;
            char found;
            return next_record(text, set.c_str(), rest, found);
        });
        add_way(task, "std::string::find_first_of",
                [set] { return text.substr(0, text.find_first_of(set)); });
    }
}

void add_scanning() {
    add_separator_sets();
    for (const std::size_t length : {80UL, 1'000UL, 100'000UL}) {
        const std::string words = sample_text(length), line = substitute_char(words, ' ', ';');
        const std::string records = "records of a " + std::to_string(length) + " byte line";
        add_way(records, "next_record", [line] { return next_records(line); });
        add_way(records, "std::getline", [line] { return getline_records(line); });
        const std::string tokens = "words of a " + std::to_string(length) + " byte line";
        add_way(tokens, "next_Stringtoken", [words] { return next_tokens(words); });
        add_way(tokens, "std::istringstream", [words] { return stream_words(words); });
    }
}

}  // namespace

void add_text_families() {
    add_editing();
    add_case_folding();
    add_filtering();
    add_searching();
    add_scanning();
}
