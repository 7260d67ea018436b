// Texts as recordings hold them: UTF-8 without control bytes, whatever a station calls its things.
#pragma once
#include <string>
#include <string_view>

/// How many bytes the UTF-8 character at the front of `text` has, 1 to 4; 0 when there is none: the
/// bytes are no UTF-8, or there are no bytes.
///
///     utf8_length("\xC3\xA9t\xC3\xA9")  // 2
///     utf8_length("\xE9")  // 0
[[nodiscard]] std::size_t utf8_length(std::string_view text);

/// `text` with every byte that a recording does not hold as `\x` and two hexadecimal digits: those
/// that are no UTF-8, and control bytes.
///
///     recorded_name("a\tb\xFF")  // "a\\x09b\\xFF"
[[nodiscard]] std::string recorded_name(std::string_view text);

/// The same for a text, which may also have tabs and several lines.
///
///     recorded_text("a\nb\x1B")  // "a\nb\\x1B"
[[nodiscard]] std::string recorded_text(std::string_view text);
