// The names of the station's inputs (its sensors, as the panel shows them) and outputs (its
// commands), in the order in which they are served on the segment. Everything that needs a name or
// an index takes it from here.
#pragma once
#include <array>
#include <cstddef>
#include <string_view>

// clang-format off
/// What the station tells the panel: 22 sensors in the panel's order, then the press's timer.
inline constexpr std::array<const char*, 23> station_inputs = {
    "b1e", "b1s", "b2e", "b2s", "b3e", "b3s", "te", "ts", "vh", "vb", "ph", "pb", "pp",
    "p1ok", "p2ok", "p3ok", "init", "vide", "colle", "dc", "ac", "atu", "timer10_term"};

/// What the panel tells the station: its 13 commands.
inline constexpr std::array<const char*, 13> station_outputs = {
    "DEPOSE", "MTA", "MT", "ASPI", "RENT", "SORT", "DESV", "MONV", "DESP", "MONP", "BZ1", "BZ2", "BZ3"};
// clang-format on

template <std::size_t count>
constexpr int station_index(const std::array<const char*, count>& names, std::string_view name) {
    for (std::size_t i = 0; i < count; ++i)
        if (name == names[i]) return static_cast<int>(i);
    return -1;
}

/// The index of an input or an output by its exact name; -1 for a name that the station does not
/// have.
///
///     input_index("te")  // 6
constexpr int input_index(std::string_view name) { return station_index(station_inputs, name); }
constexpr int output_index(std::string_view name) { return station_index(station_outputs, name); }
