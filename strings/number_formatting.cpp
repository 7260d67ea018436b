#include "strings/number_formatting.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <iterator>
#include <limits>

#include "strings/substring_editing.h"

namespace {

constexpr int max_exact_precision = 18;  // 10 to the 18 still fits 63 bits, 1 before it included
constexpr double two_to_the_63 = 9223372036854775808.0;

/// `value` truncated toward zero; the lowest integer when it does not fit, as the processor has it.
std::int64_t truncate(double value) {
    if (!(value > -two_to_the_63 && value < two_to_the_63))
        return std::numeric_limits<std::int64_t>::min();
    return static_cast<std::int64_t>(value);
}

/// 10 to the power `precision`, wrapped to 64 bits; 1 when `precision` is 0 or less.
std::int64_t power_of_ten(int precision) {
    std::uint64_t power = 1;
    for (; precision > 0 && power != 0; --precision) power *= 10;
    return static_cast<std::int64_t>(power);
}

/// The text of a magnitude that no 64-bit integer holds, and which so has no fraction.
std::string huge_text(double magnitude, int precision) {
    char digits[std::numeric_limits<double>::max_exponent10 + 2];
    const auto written =
        std::to_chars(digits, std::end(digits), magnitude, std::chars_format::fixed, 0);
    std::string text(digits, written.ptr);
    if (std::isfinite(magnitude))
        text.append(".").append(
            static_cast<std::size_t>(std::clamp(precision, 0, max_exact_precision)), '0');
    return text;
}

}  // namespace

// std::to_string writes integers alike in every locale, and the lowest one with its sign.
std::string unslong2S(unsigned long value) { return std::to_string(value); }

std::string unslonglong2S(unsigned long long value) { return std::to_string(value); }

std::string long2S(long value) { return std::to_string(value); }

std::string longlong2S(long long value) { return std::to_string(value); }

std::string unslongbyS(unsigned long value) {
    char text[(std::numeric_limits<unsigned long>::digits + 2) / 3];
    char* first = std::end(text);
    do {
        *--first = static_cast<char>('A' + (value & 7));
        value >>= 3;
    } while (value != 0);
    return {first, std::end(text)};
}

std::string bin8toS(int value) {
    std::string text(8, '0');
    for (int bit = 0; bit < 8; ++bit)
        if (value >> bit & 1) text[static_cast<std::size_t>(7 - bit)] = '1';
    return text;
}

std::string hex1toS(int value) {
    const int digit = value % 16;  // signed: -1 gives "/", the character before "0"
    return ctoS(static_cast<char>(digit < 10 ? '0' + digit : 'a' + digit - 10));
}

std::string hex2toS(int value) { return hex1toS(value >> 4) + hex1toS(value); }

std::string hex4toS(int value) { return hex2toS(value >> 8) + hex2toS(value); }

std::string hex8toS(long value) {
    return hex4toS(static_cast<int>(value >> 16)) + hex4toS(static_cast<int>(value));
}

std::string dtoS(double value, int precision) {
    const std::string sign = value < 0.0 ? "-" : "";
    const double magnitude = std::fabs(value);
    if (!(magnitude < two_to_the_63)) return sign + huge_text(magnitude, precision);

    const std::int64_t whole = truncate(magnitude);
    const double fraction = magnitude - static_cast<double>(whole);
    // The added 1 holds the place of the fraction's leading zeros. It is dropped, and a carry into
    // it with it.
    const double scaled = (fraction + 1.0) * static_cast<double>(power_of_ten(precision));
    std::int64_t rounded = truncate(scaled);
    if (scaled - static_cast<double>(rounded) > 0.5) ++rounded;
    const std::string digits = unslong2S(static_cast<unsigned long>(rounded));
    return sign + unslong2S(static_cast<unsigned long>(whole)) + "." + my_after(digits, 1);
}

std::string ctoS(char character) { return std::string(1, character); }
