// What no TOML text holds, or none that is an exercise, and what the library that reads them must
// not meet: it takes for granted that it does not.
#pragma once
#include <optional>
#include <string_view>

#include "lesson/exercise_file.h"

/// The first of these, where there is one: a byte that is no UTF-8; a control byte other than tabs
/// and ends of line; outside of texts and comments a character that is not ASCII, or more than 1000
/// points in a value or a heading. Each point may be a table within a table, "a.a.a.a = 1", and the
/// library calls itself for each.
[[nodiscard]] std::optional<exercise_problem> refused_at_sight(std::string_view bytes);
