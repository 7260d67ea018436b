// Names for people's eyes: a segment's names are any bytes, a terminal obeys some of them.
#pragma once
#include <string>
#include <string_view>

/// `name` with each of its control bytes (below 32, and 127) as `\x` and two hexadecimal digits,
/// upper case. All other bytes stand as they are, those of UTF-8 and the backslash too.
///
///     io_printable("te")  // "te"
///     io_printable("a\tb\x1B[2J")  // "a\\x09b\\x1B[2J"
[[nodiscard]] inline std::string io_printable(std::string_view name) {
    constexpr char digits[] = "0123456789ABCDEF";
    std::string shown;
    for (const char each : name) {
        const auto byte = static_cast<unsigned char>(each);
        if (byte >= 32 && byte != 127)
            shown += each;
        else
            shown.append("\\x").append({digits[byte / 16], digits[byte % 16]});
    }
    return shown;
}
