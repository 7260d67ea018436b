// Names for people's eyes: a segment's names are any bytes, a terminal obeys some of them.
#pragma once
#include <string>
#include <string_view>

/// Whether a terminal may obey this byte: below 32, or 127.
///
///     io_is_control('\t')  // true
[[nodiscard]] constexpr bool io_is_control(char each) {
    const auto byte = static_cast<unsigned char>(each);
    return byte < 32 || byte == 127;
}

/// `name` with each of its control bytes as `\x` and two hexadecimal digits, upper case. All other
/// bytes stand as they are, those of UTF-8 and the backslash too.
///
///     io_printable("te")  // "te"
///     io_printable("a\tb\x1B[2J")  // "a\\x09b\\x1B[2J"
[[nodiscard]] inline std::string io_printable(std::string_view name) {
    constexpr char digits[] = "0123456789ABCDEF";
    std::string shown;
    for (const char each : name) {
        if (io_is_control(each))
            shown.append("\\x").append({digits[each / 16], digits[each % 16]});
        else
            shown += each;
    }
    return shown;
}
