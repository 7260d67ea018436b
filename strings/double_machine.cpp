#include "strings/double_machine.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <iterator>

namespace double_machine {
namespace {

enum class state {
    start,
    error,
    minus,
    lone_zero,
    whole,
    separated,
    fraction,
    e,
    e_sign,
    exponent
};
constexpr std::size_t state_count = 10;

// A byte may be of several kinds, since a caller may choose
// "5" or "E" as separator. The first row that matches wins.
using kinds = unsigned;
constexpr kinds is_blank = 1, is_minus = 2, is_plus = 4, is_zero = 8, is_nonzero = 16, is_e = 32,
                is_separator = 64, is_any = 128;
constexpr kinds is_digit = is_zero | is_nonzero;

enum class action { none, negate, add_whole, add_fraction, add_exponent, negate_exponent };

struct transition {
    state from;
    kinds on;
    action does;
    state to;
    bool accepts;
};

// clang-format off
constexpr transition transitions[] = {
    // from            on            does                     to                accepts
    {state::start,     is_blank,     action::none,            state::start,     false},
    {state::start,     is_minus,     action::negate,          state::minus,     false},
    {state::start,     is_zero,      action::add_whole,       state::lone_zero, true},
    {state::start,     is_nonzero,   action::add_whole,       state::whole,     true},
    {state::start,     is_any,       action::none,            state::error,     false},
    {state::error,     is_any,       action::none,            state::error,     false},
    {state::minus,     is_zero,      action::add_whole,       state::lone_zero, false},  // "-0" is refused
    {state::minus,     is_nonzero,   action::add_whole,       state::whole,     true},
    {state::minus,     is_any,       action::none,            state::error,     false},
    {state::lone_zero, is_separator, action::none,            state::separated, false},
    {state::lone_zero, is_any,       action::none,            state::error,     false},
    {state::whole,     is_separator, action::none,            state::separated, false},
    {state::whole,     is_digit,     action::add_whole,       state::whole,     true},
    {state::whole,     is_e,         action::none,            state::e,         false},
    {state::whole,     is_any,       action::none,            state::error,     false},
    {state::separated, is_digit,     action::add_fraction,    state::fraction,  true},
    {state::separated, is_any,       action::none,            state::error,     false},
    {state::fraction,  is_digit,     action::add_fraction,    state::fraction,  true},
    {state::fraction,  is_e,         action::none,            state::e,         false},
    {state::fraction,  is_any,       action::none,            state::error,     false},
    {state::e,         is_nonzero,   action::add_exponent,    state::exponent,  true},
    {state::e,         is_minus,     action::negate_exponent, state::e_sign,    false},
    {state::e,         is_plus,      action::none,            state::e_sign,    false},
    {state::e,         is_any,       action::none,            state::error,     false},
    {state::e_sign,    is_nonzero,   action::add_exponent,    state::exponent,  true},
    {state::e_sign,    is_any,       action::none,            state::error,     false},
    {state::exponent,  is_digit,     action::add_exponent,    state::exponent,  true},
    {state::exponent,  is_any,       action::none,            state::error,     false},
};
// clang-format on
static_assert(std::ranges::count(transitions, is_any, &transition::on) == state_count);
static_assert(std::ranges::is_sorted(transitions, {}, &transition::from));

constexpr std::array<std::size_t, state_count> first_row = [] {
    std::array<std::size_t, state_count> rows{};
    for (std::size_t row = std::size(transitions); row-- > 0;)
        rows[static_cast<std::size_t>(transitions[row].from)] = row;
    return rows;
}();

constexpr std::array<std::uint8_t, 256> kinds_of_byte = [] {
    std::array<std::uint8_t, 256> table{};
    table.fill(is_any);
    for (unsigned char digit = '0'; digit <= '9'; ++digit) table[digit] |= is_nonzero;
    table['0'] = is_any | is_zero;
    table[' '] |= is_blank;
    table['-'] |= is_minus;
    table['+'] |= is_plus;
    table['E'] |= is_e;
    table['e'] |= is_e;
    return table;
}();

/// `value` * 10 + `digit`, wrapped to 32 bits.
std::int32_t append_digit(std::int32_t value, int digit) {
    return static_cast<std::int32_t>(static_cast<std::uint32_t>(value) * 10U +
                                     static_cast<std::uint32_t>(digit));
}

void perform(action what, int digit, reading& so_far) {
    switch (what) {
        case action::none:
            break;
        case action::negate:
            so_far.sign = -1;
            break;
        case action::add_whole:
            so_far.whole = append_digit(so_far.whole, digit);
            break;
        case action::add_fraction:
            so_far.fraction = append_digit(so_far.fraction, digit);
            so_far.divisor = append_digit(so_far.divisor, 0);
            break;
        case action::add_exponent:
            so_far.exponent = append_digit(so_far.exponent, digit);
            break;
        case action::negate_exponent:
            so_far.exponent_sign = -1;
            break;
    }
}

}  // namespace

reading read(std::string_view text, char separator) {
    reading result;
    state now = state::start;
    for (const char byte : text) {
        const kinds is = kinds_of_byte[static_cast<unsigned char>(byte)] |
                         (byte == separator ? is_separator : 0U);
        const transition* row = &transitions[first_row[static_cast<std::size_t>(now)]];
        while (!(row->on & is)) ++row;
        perform(row->does, byte - '0', result);
        result.accepted = row->accepts;
        now = row->to;
    }
    return result;
}

}  // namespace double_machine
