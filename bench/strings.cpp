// Each family of the string toolkit against the standard library's nearest way of doing the same.
#include <algorithm>
#include <cctype>
#include <charconv>
#include <filesystem>
#include <iomanip>
#include <iostream>
#include <iterator>
#include <list>
#include <memory>
#include <numeric>
#include <random>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

#include "bench/comparison.h"
#include "strings/case_folding.h"
#include "strings/document_filters.h"
#include "strings/edit_distance.h"
#include "strings/file_paths.h"
#include "strings/lexical_validation.h"
#include "strings/number_formatting.h"
#include "strings/number_parsing.h"
#include "strings/record_scanning.h"
#include "strings/string_lists.h"
#include "strings/substring_editing.h"
#include "strings/text_search.h"

namespace {

constexpr std::size_t batch = 64;

/// Calls `work` with every item of `items`; returns what the results add up to.
template <class Items, class Work>
auto sum(const Items& items, Work work) {
    auto total = work(items.front());
    for (auto item = std::next(items.begin()); item != items.end(); ++item) total += work(*item);
    return total;
}

/// The same, for work that gives strings: adds up their lengths.
template <class Items, class Work>
std::size_t total_length(const Items& items, Work work) {
    return sum(items, [&work](const auto& item) { return work(item).size(); });
}

std::vector<long> sample_numbers() {
    std::mt19937 engine(1);
    std::vector<long> numbers;
    for (std::size_t at = 0; at < batch; ++at)
        numbers.push_back(static_cast<int>(engine()) >> at % 32);
    return numbers;
}

std::vector<double> sample_doubles() {
    std::vector<double> doubles;
    for (const long number : sample_numbers())
        doubles.push_back(static_cast<double>(number % 1'000'000) / 1000.0);
    return doubles;
}

template <class Number, class Write>
std::vector<std::string> texts_of(const std::vector<Number>& numbers, Write write) {
    std::vector<std::string> texts;
    for (const Number number : numbers) texts.push_back(write(number));
    return texts;
}

template <class Number, class... Format>
Number parsed_by_chars(const std::string& text, Format... format) {
    Number value{};
    std::from_chars(text.data(), text.data() + text.size(), value, format...);
    return value;
}

template <class Number>
Number parsed_by_stream(const std::string& text) {
    std::istringstream in(text);
    Number value{};
    in >> value;
    return value;
}

void add_parsing() {
    static const std::vector<std::string> integers = texts_of(sample_numbers(), long2S);
    static const std::vector<std::string> doubles =
        texts_of(sample_doubles(), [](double value) { return dtoS(value, 3); });
    static const std::vector<std::string> hexadecimals =
        texts_of(sample_numbers(), [](long value) { return hex8toS(value & 0x7fffffff); });

    add_way("64 integers read", "Stol", [] { return sum(integers, Stol); });
    add_way("64 integers read", "std::stol",
            [] { return sum(integers, [](const std::string& text) { return std::stol(text); }); });
    add_way("64 integers read", "std::from_chars", [] {
        return sum(integers, [](const std::string& text) { return parsed_by_chars<long>(text); });
    });
    add_way("64 integers read", "std::istringstream",
            [] { return sum(integers, parsed_by_stream<long>); });

    const auto Stod_point = [](const std::string& text) { return Stod(text, '.'); };
    add_way("64 doubles read", "Stod", [=] { return sum(doubles, Stod_point); });
    add_way("64 doubles read", "std::stod",
            [] { return sum(doubles, [](const std::string& text) { return std::stod(text); }); });
    add_way("64 doubles read", "std::from_chars", [] {
        return sum(doubles, [](const std::string& text) { return parsed_by_chars<double>(text); });
    });
    add_way("64 doubles read", "std::istringstream",
            [] { return sum(doubles, parsed_by_stream<double>); });

    add_way("64 doubles checked", "checkdouble", [] {
        return sum(doubles, [](const std::string& text) { return checkdouble(text, '.'); });
    });
    add_way("64 doubles checked", "std::from_chars to the end", [] {
        return sum(doubles, [](const std::string& text) {
            double value = 0;
            const char* const end = text.data() + text.size();
            return static_cast<int>(std::from_chars(text.data(), end, value).ptr == end);
        });
    });

    add_way("64 hexadecimals read", "Stouhex", [] { return sum(hexadecimals, Stouhex); });
    add_way("64 hexadecimals read", "std::stoul", [] {
        return sum(hexadecimals,
                   [](const std::string& text) { return std::stoul(text, nullptr, 16); });
    });
    add_way("64 hexadecimals read", "std::from_chars", [] {
        return sum(hexadecimals, [](const std::string& text) {
            return parsed_by_chars<unsigned long>(text, 16);
        });
    });
}

template <class Number, class... Format>
std::string written_by_chars(Number value, Format... format) {
    char text[64];
    return {text, std::to_chars(text, std::end(text), value, format...).ptr};
}

void add_formatting() {
    static const std::vector<long> integers = sample_numbers();
    static const std::vector<double> doubles = sample_doubles();

    add_way("64 integers written", "long2S", [] { return total_length(integers, long2S); });
    add_way("64 integers written", "std::to_string", [] {
        return total_length(integers, [](long value) { return std::to_string(value); });
    });
    add_way("64 integers written", "std::to_chars", [] {
        return total_length(integers, [](long value) { return written_by_chars(value); });
    });
    add_way("64 integers written", "std::ostringstream", [] {
        return total_length(integers, [](long value) {
            std::ostringstream out;
            out << value;
            return out.str();
        });
    });

    add_way("64 doubles written", "dtoS",
            [] { return total_length(doubles, [](double value) { return dtoS(value, 3); }); });
    add_way("64 doubles written", "std::to_chars", [] {
        return total_length(doubles, [](double value) {
            return written_by_chars(value, std::chars_format::fixed, 3);
        });
    });
    add_way("64 doubles written", "std::ostringstream", [] {
        return total_length(doubles, [](double value) {
            std::ostringstream out;
            out << std::fixed << std::setprecision(3) << value;
            return out.str();
        });
    });

    add_way("64 hexadecimals written", "hex8toS", [] { return total_length(integers, hex8toS); });
    add_way("64 hexadecimals written", "std::ostringstream", [] {
        return total_length(integers, [](long value) {
            std::ostringstream out;
            out << std::hex << std::setfill('0') << std::setw(8) << (value & 0x7fffffff);
            return out.str();
        });
    });
}

/// Words of one to nine letters, "x" now and then, up to `length` bytes.
std::string sample_text(std::size_t length) {
    std::mt19937 engine(2);
    std::string text;
    while (text.size() < length) {
        for (auto left = engine() % 9; left > 0; --left)
            text += static_cast<char>('a' + engine() % 23);
        text += engine() % 4 ? " " : " x ";
    }
    return text.substr(0, length);
}

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
    static const std::string patterns[] = {"'",
                                           "\xE2\x80\x99",
                                           "\xC2\xAB",
                                           "\xC2\xBB",
                                           "\xE2\x80\x93",
                                           "\xC3\x89",
                                           "\xC3\x88",
                                           "\xC3\x8A",
                                           "\xC3\x8B",
                                           "\xC3\x87",
                                           "\xC3\xA9",
                                           "\xC3\xA8",
                                           "\xC3\xAA",
                                           "\xC3\xAB",
                                           "\xC3\xA7",
                                           "\xC3\xA0",
                                           "\xC3\xB6",
                                           "\xC3\xB4",
                                           "\xC3\xAE",
                                           "\xC3\xAF",
                                           "\xC3\x97",
                                           "#",
                                           "$"};
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
    add_filtering();
}

void add_searching() {
    static const std::string text = sample_text(10'000);
    static const std::string absent = "needle behind the last word";
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

std::vector<std::string> stream_words(const std::string& line) {
    std::istringstream in(line);
    return {std::istream_iterator<std::string>(in), {}};
}

std::vector<std::string> next_tokens(std::string line) {
    std::vector<std::string> tokens;
    while (!line.empty()) tokens.push_back(next_Stringtoken(line, ' ', &line));
    return tokens;
}

void add_scanning() {
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

int two_row_distance(const std::string& a, const std::string& b) {
    std::vector<int> above(b.size() + 1), row(b.size() + 1);
    std::iota(above.begin(), above.end(), 0);
    for (std::size_t i = 0; i < a.size(); ++i) {
        row[0] = static_cast<int>(i) + 1;
        for (std::size_t j = 0; j < b.size(); ++j)
            row[j + 1] = std::min({row[j] + 1, above[j + 1] + 1, above[j] + (a[i] != b[j])});
        std::swap(above, row);
    }
    return above[b.size()];
}

void add_distance() {
    for (const std::size_t length : {10UL, 100UL, 998UL}) {
        const std::string a = sample_text(length), b = sample_text(2 * length).substr(length);
        const std::string task = "distance of " + std::to_string(length) + " byte texts";
        add_way(task, "levenshtein", [=] { return levenshtein(a, b); });
        add_way(task, "two rows", [=] { return two_row_distance(a, b); });
    }
}

void add_paths() {
    static const std::string path = "/home/user/cell/station.tar.gz";
    static const std::string base = "/home/user/documents/notes/2024";
    add_way("file name", "extract_filename_name", [] { return extract_filename_name(path); });
    add_way("file name", "std::filesystem::path",
            [] { return std::filesystem::path(path).filename().string(); });
    add_way("without extension", "supress_filename_extension",
            [] { return supress_filename_extension(path); });
    add_way("without extension", "std::filesystem::path",
            [] { return std::filesystem::path(path).replace_extension().string(); });
    // The trace goes nowhere here, as the other way has none.
    add_way("way to a path", "relative_directory_path", [] {
        std::streambuf* const trace = std::cerr.rdbuf(nullptr);
        const std::string way = relative_directory_path(path, base);
        std::cerr.rdbuf(trace);
        return way;
    });
    add_way("way to a path", "std::filesystem::path",
            [] { return std::filesystem::path(path).lexically_relative(base).string(); });
}

void add_lists() {
    static const std::list<std::string> list = [] {
        std::list<std::string> words;
        for (const std::string& word : stream_words(sample_text(5'000))) words.push_back(word);
        return words;
    }();
    add_way("list to array", "array_convert",
            [] { return std::unique_ptr<std::string[]>(array_convert(list)); });
    add_way("list to array", "std::vector",
            [] { return std::vector<std::string>(list.begin(), list.end()); });
    add_way("list printed", "operator<<", [] {
        std::ostringstream out;
        out << list;
        return out.str();
    });
    add_way("list printed", "a loop without flushes", [] {
        std::ostringstream out;
        for (const std::string& word : list) out << word << ", ";
        return out.str();
    });
}

}  // namespace

int main(int argc, char** argv) {
    add_parsing();
    add_formatting();
    add_editing();
    add_searching();
    add_scanning();
    add_distance();
    add_paths();
    add_lists();
    return run_comparisons(argc, argv);
}
