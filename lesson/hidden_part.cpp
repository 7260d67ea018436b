#include "lesson/hidden_part.h"

#include <algorithm>
#include <array>

#include "lesson/sha256.h"
#include "session/whole_number.h"

namespace {

/// In front of the text: the beginning of its SHA-256, by which damage is found and which changes
/// all that follows.
constexpr std::size_t sum_bytes = 8;
/// Three for each byte.
constexpr std::size_t digits = 3;

std::string sum_of(std::string_view text) { return sha256(text).substr(0, sum_bytes); }

/// Forth and back are the same.
std::string mixed(std::string_view text, const std::string& sum) {
    std::string result, mask;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (i % 32 == 0) mask = sha256(sum + "quorin" + std::to_string(i));
        result += static_cast<char>(text[i] ^ mask[i % 32]);
    }
    return result;
}

std::string digits_of(std::string_view bytes) {
    std::string text;
    for (const char each : bytes)
        text += std::to_string(1000 + static_cast<unsigned char>(each)).substr(1);
    return text;
}

std::optional<std::string> bytes_of(std::string_view text) {
    std::string bytes;
    if (text.size() % digits != 0) return std::nullopt;
    for (std::size_t at = 0; at < text.size(); at += digits) {
        const auto value = whole_number<std::uint8_t>(text.substr(at, digits));
        if (!value) return std::nullopt;
        bytes += static_cast<char>(*value);
    }
    return bytes;
}

}  // namespace

std::string hidden_part(std::string_view text) {
    const std::string sum = sum_of(text);
    return digits_of(sum + mixed(text, sum));
}

std::optional<std::string> shown_part(std::string_view text) {
    const std::optional<std::string> bytes = bytes_of(text);
    if (!bytes || bytes->size() < sum_bytes) return std::nullopt;
    const std::string sum = bytes->substr(0, sum_bytes);
    std::string shown = mixed(bytes->substr(sum_bytes), sum);
    return sum_of(shown) == sum ? std::optional(std::move(shown)) : std::nullopt;
}
