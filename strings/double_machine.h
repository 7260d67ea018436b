// The state machine that reads the text of a double, shared by Stod and checkdouble: what one
// reads, the other accepts.
#pragma once
#include <cstdint>
#include <string_view>

namespace double_machine {

/// The pieces of a text such as "-3,25E+2". They are 32-bit
/// integers that wrap when the text has more digits.
struct reading {
    bool accepted = false;  ///< The last byte left the machine on an accepting step.
    std::int32_t sign = 1;
    std::int32_t whole = 0;
    std::int32_t fraction = 0;
    std::int32_t divisor = 1;  ///< 10 to the number of fraction digits.
    std::int32_t exponent = 0;
    std::int32_t exponent_sign = 1;
};

/// Runs the machine over every byte of `text`; `separator`
/// stands between the whole part and the fraction.
[[nodiscard]] reading read(std::string_view text, char separator);

}  // namespace double_machine
