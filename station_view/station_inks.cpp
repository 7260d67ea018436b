// The drawing's colours.
#include "session/keyed_rows.h"
#include "station_view/station_picture.h"

namespace {

struct ink_row {
    ink key;
    std::uint32_t rgb;
};

// The lamps' are the panel's own. What must be told apart is apart in grey tones too.
// clang-format off
constexpr ink_row inks[] = {
    {ink::paper,          0xFAFAF7},
    {ink::paused_paper,   0xE3E3DD},
    {ink::replay_paper,   0xE6DDF3},
    {ink::dead_paper,     0xBEBEBE},
    {ink::over_paper,     0xD2D8DE},
    {ink::dead_cross,     0x8C8C8C},
    {ink::black,          0x000000},
    {ink::white,          0xFFFFFF},
    {ink::unlit,          0x909090},
    {ink::faint,          0x5A5A5A},
    {ink::lamp_one,       0xFF0000},
    {ink::lamp_zero,      0x0000FF},
    {ink::lit,            0x006B2D},
    {ink::odd,            0x9A4A00},
    {ink::metal,          0xC9D1D6},
    {ink::dark_metal,     0x7C8890},
    {ink::belt,           0x3C4247},
    {ink::cleat,          0xE8E8E8},
    {ink::base,           0x9FB4C4},
    {ink::glue,           0xFFD400},
    {ink::part,           0xB5651D},
    {ink::stamp,          0x14324A},
    {ink::suction,        0x9FE0E0},
    {ink::vacuum,         0x006A70},
    {ink::housing,        0xE9EDF0},
    {ink::alarm,          0xD00000},
    {ink::warning,        0xFFC800},
    {ink::replay,         0x5B2A9B},
};
// clang-format on
static_assert(one_row_each(inks));

}  // namespace

std::uint32_t rgb_of(ink colour) { return row_of(inks, colour).rgb; }
