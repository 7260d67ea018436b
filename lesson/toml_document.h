// A TOML file as plain data, so that one source alone sees the library that reads it.
#pragma once
#include <cstdint>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "lesson/exercise_file.h"

struct toml_entry;
struct toml_value;

/// Dates and times: no exercise has any.
struct toml_moment {};

/// Deeper than any exercise goes, lists and tables are empty.
using toml_list = std::vector<toml_value>;
using toml_table = std::vector<toml_entry>;

struct toml_value {
    std::variant<std::string, std::int64_t, double, bool, toml_moment, toml_list, toml_table> is;
    /// Of a table its heading's; 1 for the whole file.
    int line = 1;
};

struct toml_entry {
    std::string key;
    toml_value value;
    /// The key's.
    int line;
};

/// The whole file as a table, whatever the bytes; or what is wrong with its first wrong line.
[[nodiscard]] std::variant<toml_table, exercise_problem> read_toml(std::string_view bytes);
