// The table of the panel's widgets, and the look-up of a widget by
// its signal's name while compiling: a name that no widget goes
// with, or a widget of the other kind, is an error of the compiler.
#pragma once
#include <algorithm>
#include <array>
#include <cstddef>
#include <iterator>
#include <string_view>

namespace quorin_form {

/// What a widget is: the window's frame, a toggle button, a lamp, a text.
enum class shape { frame, button, indicator, caption };

/// A row of the table: one widget.
struct child {
    /// By this it is known whether the run loop reads it, lights it, or leaves it alone.
    shape kind;
    /// Pixels from the window's top left.
    int x, y, w, h;
    /// UTF-8; null for the frame, which has none.
    const char* label;
    /// Its number in quorin_class, from 1; 0 for a widget that is not kept.
    int member = 0;
    /// For a kept widget: the output that a button drives, or the input that an indicator shows.
    const char* name = label;
};

// clang-format off
/// In creation order, a later widget on top of an earlier one. Pixels from the window's top left.
/// The frame is wider than the window and starts above it, so that its right and top edges are
/// clipped. The captions of the second and third blockers carry two blanks.
inline constexpr child children[] = {
    {shape::frame,       0,  -1, 1162, 191, nullptr},
    {shape::button,    210,  10,  60, 20, "RENT", 1},
    {shape::button,    210,  40,  60, 20, "SORT", 2},
    {shape::caption,   270,  10,  80, 20, "Rentrer tiroir"},
    {shape::caption,   270,  40,  80, 20, "Sortir tiroir"},
    {shape::button,    567,  10,  60, 20, "DESP", 3},
    {shape::button,    567,  40,  60, 20, "MONP", 4},
    {shape::caption,   627,  10, 110, 20, "Descendre presse"},
    {shape::caption,   627,  40,  80, 20, "Monter presse"},
    {shape::button,    210,  70,  60, 20, "DESV", 5},
    {shape::button,    210, 100,  60, 20, "MONV", 6},
    {shape::caption,   270,  70,  90, 20, "Descendre vent."},
    {shape::caption,   270, 100,  80, 20, "Monter vent."},
    {shape::button,    567,  70,  60, 20, "BZ1", 7},
    {shape::button,    210, 130,  60, 20, "ASPI", 8},
    {shape::caption,   270, 130,  80, 20, "Aspiration"},
    {shape::button,     10,  10,  70, 20, "MTA", 9},
    {shape::button,     10,  40,  70, 20, "MT", 10},
    {shape::caption,    82,  10, 123, 20, "Marche tapis att"},
    {shape::caption,    82,  40, 113, 20, "Marche tapis"},
    {shape::indicator, 391,  10,  60, 20, "te", 11},
    {shape::indicator, 391,  40,  60, 20, "ts", 12},
    {shape::indicator, 936,  70,  60, 20, "b1s", 13},
    {shape::indicator, 763,  70,  60, 20, "b1e", 14},
    {shape::indicator, 391,  70,  60, 20, "vb", 15},
    {shape::indicator, 391, 100,  60, 20, "vh", 16},
    {shape::indicator, 763,  10,  60, 20, "pb", 17},
    {shape::indicator, 763,  40,  60, 20, "ph", 18},
    {shape::caption,    82, 130, 113, 20, "presence piece"},
    {shape::indicator, 391, 130,  60, 20, "vide", 19},
    {shape::button,     10,  70,  70, 20, "DEPOSE", 20},
    {shape::caption,    82,  70, 113, 20, "depose colle"},
    {shape::indicator, 936, 100,  60, 20, "b2s", 21},
    {shape::indicator, 763, 100,  60, 20, "b2e", 22},
    {shape::indicator, 936, 130,  60, 20, "b3s", 23},
    {shape::indicator, 763, 130,  60, 20, "b3e", 24},
    {shape::indicator, 210, 160,  60, 20, "dc", 25},
    {shape::caption,   270, 160,  80, 20, "depart cycle"},
    {shape::indicator, 391, 160,  60, 20, "ac", 26},
    {shape::caption,   451, 160,  80, 20, "arret cycle"},
    {shape::button,    567, 100,  60, 20, "BZ2", 27},
    {shape::button,    567, 130,  60, 20, "BZ3", 28},
    {shape::caption,   627,  70,  80, 20, "Bloquer zone 1"},
    {shape::caption,   627, 130,  80, 20, "Bloquer zone 3"},
    {shape::caption,   627, 100,  80, 20, "Bloquer zone 2"},
    {shape::indicator,  10, 130,  70, 20, "pp", 29},
    {shape::indicator,  10, 160,  70, 20, "init", 30},
    {shape::caption,    82, 160,  80, 20, "initialisation"},
    {shape::caption,   451, 130,  80, 20, "vide actif"},
    {shape::caption,   451, 100,  80, 20, "ventouse haute"},
    {shape::caption,   451,  70,  80, 20, "ventouse basse"},
    {shape::caption,   451,  40,  80, 20, "tiroir sorti"},
    {shape::caption,   451,  10,  80, 20, "tiroir entre"},
    {shape::caption,   823,  10,  80, 20, "presse basse"},
    {shape::caption,   823,  40,  80, 20, "presse haute"},
    {shape::caption,   823,  70,  80, 20, "b1 entre"},
    {shape::caption,   996,  70,  80, 20, "b1 sorti"},
    {shape::caption,   823, 100,  80, 20, "b2  entre"},
    {shape::caption,   996, 100,  80, 20, "b2  sorti"},
    {shape::caption,   823, 130,  80, 20, "b3  entre"},
    {shape::caption,   996, 130,  80, 20, "b3  sorti"},
    {shape::indicator, 567, 160,  60, 20, "p1ok", 31},
    {shape::indicator, 763, 160,  60, 20, "p2ok", 32},
    {shape::caption,   627, 160, 108, 20, "presence 1 OK"},
    {shape::caption,   823, 160, 112, 20, "presence 2 OK"},
    {shape::caption,   996, 160, 109, 20, "presence 3 OK"},
    {shape::indicator, 936, 160,  60, 20, "p3ok", 33},
    {shape::indicator, 936,  10,  60, 20, "ATU", 34, "atu"},
    {shape::caption,   996,  10, 104, 20, "arret urgence"},
    {shape::indicator,  10, 100,  70, 20, "colle", 35},
    {shape::caption,    82, 100, 113, 20, "colle d\xC3\xA9pos\xC3\xA9" "e"},
};
// clang-format on

/// How many widgets quorin_class keeps: the 13 buttons and the 22 indicators.
inline constexpr int members = 35;

/// How many widgets there are of a kind.
consteval std::size_t count_of(shape kind) {
    return static_cast<std::size_t>(std::ranges::count(children, kind, &child::kind));
}

/// Whether exactly the buttons and the indicators are
/// kept, each under a number of its own from 1 to 35.
consteval bool members_are_numbered() {
    std::array<bool, members> taken{};
    for (const child& each : children) {
        const bool kept = each.kind == shape::button || each.kind == shape::indicator;
        if (kept != (each.member != 0)) return false;
        if (!kept) continue;
        if (each.member > members || taken[static_cast<std::size_t>(each.member - 1)]) return false;
        taken[static_cast<std::size_t>(each.member - 1)] = true;
    }
    return std::ranges::count(taken, true) == members;
}

static_assert(std::size(children) == 71);
static_assert(count_of(shape::button) == 13);
static_assert(count_of(shape::indicator) == 22);
static_assert(members_are_numbered());

/// A signal of the link, and the place in quorin_class::kept of its widget.
struct joined_signal {
    /// As the link has it: "atu", where the widget says "ATU".
    const char* name;
    /// From 0; the widget's number in the table less one.
    int place;
};

/// The place in quorin_class::kept of the button that drives the output `name`, or of the indicator
/// that shows the input `name`. Any other name does not compile.
consteval int place_of(shape kind, std::string_view name) {
    for (const child& each : children)
        if (each.kind == kind && each.member && each.name == name) return each.member - 1;
    throw "no widget of this kind goes with this name";
}

/// The signals of these names, in this order, each joined to its widget. A widget of the kind that
/// is left out, or named twice, does not compile.
template <std::size_t count>
consteval std::array<joined_signal, count> join(shape kind, const char* const (&names)[count]) {
    if (count != count_of(kind)) throw "a widget of this kind is left out, or named twice";
    std::array<joined_signal, count> signals{};
    std::array<bool, members> taken{};
    for (std::size_t at = 0; at < count; ++at) {
        signals[at] = {names[at], place_of(kind, names[at])};
        bool& place_taken = taken[static_cast<std::size_t>(signals[at].place)];
        if (place_taken) throw "a widget is named twice";
        place_taken = true;
    }
    return signals;
}

}  // namespace quorin_form
