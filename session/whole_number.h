// Numbers on command lines: whole words only, with a point, whatever the locale.
#pragma once
#include <array>
#include <charconv>
#include <cmath>
#include <optional>
#include <string>
#include <string_view>
#include <type_traits>

/// The number that `text` is from its first byte to its last; nothing for any other text, for one
/// beyond the type's range, and for an infinity.
///
///     whole_number<double>("0.5")  // 0.5
///     whole_number<std::int32_t>("5s").has_value()  // false
template <typename number>
std::optional<number> whole_number(std::string_view text) {
    number value{};
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error != std::errc() || end != text.data() + text.size()) return std::nullopt;
    if constexpr (std::is_floating_point_v<number>) {
        if (!std::isfinite(value)) return std::nullopt;
    }
    return value;
}

/// The shortest text that reads back as the number.
///
///     number_text(0.1)  // "0.1"
///     number_text(1e9)  // "1e+09"
inline std::string number_text(double number) {
    std::array<char, 32> text;
    const auto end = std::to_chars(text.data(), text.data() + text.size(), number).ptr;
    return {text.data(), end};
}
