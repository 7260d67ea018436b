// The station's inputs (its sensors, as the panel shows them) and outputs (its commands), in the
// order in which they are served on the segment.
//
// An enumerator is spelt as the name that it stands for, so that a misspelt one does not compile.
#pragma once
#include <array>
#include <cstddef>
#include <string_view>

// clang-format off
/// What the station tells the panel: its sensors in the panel's order, then the press's timer.
enum class station_input {
    b1e, b1s, b2e, b2s, b3e, b3s, te, ts, vh, vb, ph, pb, pp,
    p1ok, p2ok, p3ok, init, vide, colle, dc, ac, atu, timer10_term, count
};

/// What the panel tells the station.
enum class station_output {
    DEPOSE, MTA, MT, ASPI, RENT, SORT, DESV, MONV, DESP, MONP, BZ1, BZ2, BZ3, count
};
// clang-format on

/// Their names, each at its enumerator's place.
extern const std::array<std::string_view, static_cast<std::size_t>(station_input::count)>
    station_inputs;
extern const std::array<std::string_view, static_cast<std::size_t>(station_output::count)>
    station_outputs;

/// The place of an input or an output on the link, as `sensor` and `set_command` take it.
///
///     place_of(station_input::te)  // 6
///     place_of(station_output::MT)  // 2
[[nodiscard]] constexpr int place_of(station_input input) { return static_cast<int>(input); }
[[nodiscard]] constexpr int place_of(station_output output) { return static_cast<int>(output); }
