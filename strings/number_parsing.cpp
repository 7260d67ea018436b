#include "strings/number_parsing.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <iostream>
#include <limits>
#include <string_view>

#include "strings/byte_search.h"
#include "strings/double_machine.h"
#include "strings/number_formatting.h"

namespace {

static_assert(sizeof(int) == 4 && sizeof(long) == 8);
static_assert(std::numeric_limits<double>::is_iec559,
              "Stod divides by a divisor that may wrap to 0");

/// The value of `byte` as a digit: 0 to 9 for "0" to "9", something odd for the rest. Unsigned, so
/// that arithmetic on it wraps.
template <class Unsigned>
Unsigned digit_value(char byte) {
    return static_cast<Unsigned>(static_cast<signed char>(byte) - '0');
}

template <class Unsigned>
Unsigned decimal(std::string_view text) {
    const bool negative = text.starts_with('-');
    if (negative) text.remove_prefix(1);
    // "+5" gives -45: the "+" counts as the digit -5. See checkint.
    Unsigned value = 0;
    for (const char byte : text) value = value * 10 + digit_value<Unsigned>(byte);
    return negative ? 0 - value : value;
}

constexpr std::array<std::uint8_t, 256> hexadecimal_digits = [] {
    std::array<std::uint8_t, 256> values{};
    for (unsigned char digit = 0; digit < 10; ++digit) values['0' + digit] = digit;
    for (unsigned char digit = 10; digit < 16; ++digit)
        values['A' + digit - 10] = values['a' + digit - 10] = digit;
    return values;
}();

unsigned long hexadecimal(std::string_view text) {
    unsigned long value = 0;
    for (const char byte : text)
        value = value * 16 + hexadecimal_digits[static_cast<unsigned char>(byte)];
    return value;
}

unsigned long binary(std::string_view text) {
    unsigned long value = 0;
    for (const char byte : text) value = value * 2 + digit_value<unsigned long>(byte);
    return value;
}

/// `value` times or divided by 10, once for each unit of `exponent`. Stops early where further
/// steps change nothing.
double scale(double value, std::int32_t exponent, std::int32_t exponent_sign) {
    for (; exponent >= 1; --exponent) {
        const double next = exponent_sign > 0 ? value * 10.0 : value / 10.0;
        if (next == value || next != next) return next;
        value = next;
    }
    return value;
}

}  // namespace

char* Stoa(const std::string& text) {
    char* const copy = new char[text.size() + 1];
    *std::copy(text.begin(), text.end(), copy) = '\0';
    return copy;
}

int Stoi(const std::string& text) { return static_cast<int>(decimal<std::uint32_t>(text)); }

long Stol(const std::string& text) { return static_cast<long>(decimal<std::uint64_t>(text)); }

long long Stoll(const std::string& text) {
    return static_cast<long long>(decimal<std::uint64_t>(text));
}

double Stod(const std::string& text, char separator) {
    const double_machine::reading read = double_machine::read(text, separator);
    if (!read.accepted) return 0.0;
    const double fraction = static_cast<double>(read.fraction) / static_cast<double>(read.divisor);
    return scale((fraction + read.whole) * read.sign, read.exponent, read.exponent_sign);
}

unsigned long Stouhex(const std::string& text) { return hexadecimal(text); }

long Stoshex(const std::string& text) {
    const unsigned long value = hexadecimal(text);
    if (text.empty() || static_cast<signed char>(text.front()) <= '7')
        return static_cast<long>(value);
    // The shift counts modulo 32, so that eight digits lose 1 and not 4294967296.
    const unsigned long sign_weight = 1UL << (4 * text.size() % 32);
    return static_cast<long>(value - sign_weight);
}

long Stoubin(const std::string& text) { return static_cast<long>(binary(text)); }

long Stosbin(const std::string& text) {
    if (text.empty()) return 0;
    const std::string_view digits = std::string_view(text).substr(1);
    if (text.front() == '0') return static_cast<long>(binary(digits));
    unsigned long complement = 0;
    for (const char byte : digits)
        complement = complement * 2 + 1 - digit_value<unsigned long>(byte);
    return static_cast<long>(~complement);
}

long Stoloruhex(const std::string& marker, const std::string& text) {
    const std::size_t position = byte_search::first_occurrence(text, marker);
    if (position == std::string::npos) return Stol(text);
    return static_cast<long>(hexadecimal(std::string_view(text).substr(position)));
}

long Stohex(const std::string& text, const std::string& marker) {
    const std::size_t position = byte_search::first_occurrence(text, marker);
    if (position != std::string::npos)
        return static_cast<long>(hexadecimal(std::string_view(text).substr(0, position)));
    const long value = Stol(text);
    std::cerr << "Decimal Conversion " << long2S(value) << std::endl;
    return value;
}
