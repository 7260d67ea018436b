// A ZK4 station made again as a recording tells that it was set up.
#pragma once
#include <memory>
#include <span>

#include "session/station_model.h"
#include "workcell/workcell_model.h"

/// The station of these facts, as `workcell_model::facts` tells them. Throws `refusal` where one is
/// missing or is no such number, and for more supplies than a session may have.
[[nodiscard]] std::unique_ptr<workcell_model> workcell_of(std::span<const station_fact> facts);
