#include "recording/recorded_text.h"

namespace {

unsigned byte_at(std::string_view text, std::size_t place) {
    return place < text.size() ? static_cast<unsigned char>(text[place]) : 0;
}

bool continued(std::string_view text, std::size_t length) {
    for (std::size_t i = 1; i < length; ++i)
        if ((byte_at(text, i) & 0xC0U) != 0x80U) return false;
    return true;
}

/// No character has two forms, none is a surrogate, and none lies beyond the last one.
bool second_byte_fits(unsigned first, unsigned second) {
    switch (first) {
        case 0xE0:
            return second >= 0xA0;
        case 0xED:
            return second <= 0x9F;
        case 0xF0:
            return second >= 0x90;
        case 0xF4:
            return second <= 0x8F;
        default:
            return true;
    }
}

std::size_t announced_length(unsigned first) {
    if (first < 0x80) return 1;
    if (first >= 0xC2 && first <= 0xDF) return 2;
    if (first >= 0xE0 && first <= 0xEF) return 3;
    if (first >= 0xF0 && first <= 0xF4) return 4;
    return 0;
}

bool is_control(char each) {
    const auto byte = static_cast<unsigned char>(each);
    return byte < 32 || byte == 127;
}

std::string hexadecimal(char byte) {
    constexpr char digits[] = "0123456789ABCDEF";
    const auto value = static_cast<unsigned char>(byte);
    return {'\\', 'x', digits[value / 16], digits[value % 16]};
}

std::string escaped(std::string_view text, std::string_view kept_controls) {
    std::string shown;
    while (!text.empty()) {
        const std::size_t length = utf8_length(text);
        const bool kept = !is_control(text[0]) || kept_controls.find(text[0]) != text.npos;
        const std::size_t taken = length > 0 && kept ? length : 1;
        shown += length > 0 && kept ? std::string(text.substr(0, taken)) : hexadecimal(text[0]);
        text.remove_prefix(taken);
    }
    return shown;
}

}  // namespace

std::size_t utf8_length(std::string_view text) {
    if (text.empty()) return 0;
    const unsigned first = byte_at(text, 0);
    const std::size_t length = announced_length(first);
    const bool whole = length <= text.size() && continued(text, length);
    return whole && second_byte_fits(first, byte_at(text, 1)) ? length : 0;
}

std::string recorded_name(std::string_view text) { return escaped(text, ""); }

std::string recorded_text(std::string_view text) { return escaped(text, "\t\n\r"); }
