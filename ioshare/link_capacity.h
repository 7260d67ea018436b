// What the shared I/O segment has room for, which the link itself does not check.
#pragma once
#include <string>
#include <vector>

/// Why these names would not fit in a segment, in one French line without an end of line: the first
/// that is longer than 49 bytes, or a list of more than 41. Empty when they fit.
///
///     link_capacity_problem({"te", "ts"}, {"RENT"})  // ""
[[nodiscard]] std::string link_capacity_problem(const std::vector<std::string>& inputs,
                                                const std::vector<std::string>& outputs);
