// The families of the string toolkit that bench_strings
// compares, and the texts that it compares them on.
#pragma once
#include <cstddef>
#include <iterator>
#include <random>
#include <sstream>
#include <string>
#include <vector>

/// Each adds the ways of one source file to the comparison.
void add_number_families();
void add_text_families();

/// Words of one to nine letters, "x" now and then, up to `length` bytes.
inline std::string sample_text(std::size_t length) {
    std::mt19937 engine(2);
    std::string text;
    while (text.size() < length) {
        for (auto left = engine() % 9; left > 0; --left)
            text += static_cast<char>('a' + engine() % 23);
        text += engine() % 4 ? " " : " x ";
    }
    return text.substr(0, length);
}

/// What blanks separate in `line`, by the standard library.
inline std::vector<std::string> stream_words(const std::string& line) {
    std::istringstream in(line);
    return {std::istream_iterator<std::string>(in), {}};
}
