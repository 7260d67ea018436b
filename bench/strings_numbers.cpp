// Numbers read and written, by the toolkit and by the standard library.
#include "bench/strings_families.h"

#include <charconv>
#include <iomanip>
#include <iterator>
#include <random>
#include <sstream>
#include <string>
#include <vector>

#include "bench/comparison.h"
#include "strings/lexical_validation.h"
#include "strings/number_formatting.h"
#include "strings/number_parsing.h"

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

void add_integer_parsing() {
    static const std::vector<std::string> integers = texts_of(sample_numbers(), long2S);
    add_way("64 integers read", "Stol", [] { return sum(integers, Stol); });
    add_way("64 integers read", "std::stol",
            [] { return sum(integers, [](const std::string& text) { return std::stol(text); }); });
    add_way("64 integers read", "std::from_chars", [] {
        return sum(integers, [](const std::string& text) { return parsed_by_chars<long>(text); });
    });
    add_way("64 integers read", "std::istringstream",
            [] { return sum(integers, parsed_by_stream<long>); });
}

const std::vector<std::string>& double_texts() {
    static const std::vector<std::string> texts =
        texts_of(sample_doubles(), [](double value) { return dtoS(value, 3); });
    return texts;
}

void add_double_parsing() {
    static const std::vector<std::string>& doubles = double_texts();
    const auto Stod_point = [](const std::string& text) { return Stod(text, '.'); };
    add_way("64 doubles read", "Stod", [=] { return sum(doubles, Stod_point); });
    add_way("64 doubles read", "std::stod",
            [] { return sum(doubles, [](const std::string& text) { return std::stod(text); }); });
    add_way("64 doubles read", "std::from_chars", [] {
        return sum(doubles, [](const std::string& text) { return parsed_by_chars<double>(text); });
    });
    add_way("64 doubles read", "std::istringstream",
            [] { return sum(doubles, parsed_by_stream<double>); });
}

void add_double_checking() {
    static const std::vector<std::string>& doubles = double_texts();
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
}

void add_hexadecimal_parsing() {
    static const std::vector<std::string> hexadecimals =
        texts_of(sample_numbers(), [](long value) { return hex8toS(value & 0x7fffffff); });
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

void add_integer_formatting() {
    static const std::vector<long> integers = sample_numbers();
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
}

void add_double_formatting() {
    static const std::vector<double> doubles = sample_doubles();
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
}

void add_hexadecimal_formatting() {
    static const std::vector<long> integers = sample_numbers();
    add_way("64 hexadecimals written", "hex8toS", [] { return total_length(integers, hex8toS); });
    add_way("64 hexadecimals written", "std::ostringstream", [] {
        return total_length(integers, [](long value) {
            std::ostringstream out;
            out << std::hex << std::setfill('0') << std::setw(8) << (value & 0x7fffffff);
            return out.str();
        });
    });
}

}  // namespace

void add_number_families() {
    add_integer_parsing();
    add_double_parsing();
    add_double_checking();
    add_hexadecimal_parsing();
    add_integer_formatting();
    add_double_formatting();
    add_hexadecimal_formatting();
}
