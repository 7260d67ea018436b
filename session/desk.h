// The desk's buttons by their names.
#pragma once
#include <string_view>

#include "session/keyed_rows.h"
#include "session/station_model.h"

/// Start cycle, stop cycle, emergency stop.
enum class desk_button { dc, ac, atu, count };

/// One button.
struct desk_row {
    /// Its place in the table.
    desk_button key;
    /// As exercises, recordings and the control socket call it; an input of the station may bear
    /// the same name.
    std::string_view name;
    /// Where a desk has it.
    bool station_desk::*pushed;
};

/// In the order in which they are told.
inline constexpr desk_row desk_rows[] = {{desk_button::dc, "dc", &station_desk::dc},
                                         {desk_button::ac, "ac", &station_desk::ac},
                                         {desk_button::atu, "atu", &station_desk::atu}};
static_assert(one_row_each(desk_rows));

/// The button that is called so; null when there is none.
constexpr const desk_row* desk_button_named(std::string_view name) {
    for (const desk_row& each : desk_rows)
        if (each.name == name) return &each;
    return nullptr;
}
