// How deep the tables of a TOML text may lie within one another, before anybody reads it.
#pragma once
#include <string_view>

/// The line on which a value or a heading has more than 1000 points outside of texts and comments:
/// each may be a table within a table, "a.a.a.a = 1", and the library that reads them calls itself
/// for each. 0 when there is none.
[[nodiscard]] int line_too_deep(std::string_view bytes);
