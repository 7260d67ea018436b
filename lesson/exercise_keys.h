// The keys of an exercise file's tables: a row for each, which says what takes its value.
#pragma once
#include <algorithm>
#include <string>

#include "lesson/exercise_values.h"

template <class Target>
struct key_row {
    const char* name;
    bool required;
    void (*take)(exercise_reading& reading, const toml_entry& entry, Target& to);
};

/// The entry of that name; null when there is none.
inline const toml_entry* entry_named(const toml_table& table, std::string_view name) {
    const auto found = std::ranges::find(table, name, &toml_entry::key);
    return found == table.end() ? nullptr : &*found;
}

/// "texte, quand, points".
template <class Rows>
std::string names_of(const Rows& rows) {
    std::string names;
    for (const auto& row : rows) names.append(names.empty() ? "" : ", ").append(row.name);
    return names;
}

/// Reads a table whose heading stands on that line, in the order of the rows.
template <class Rows, class Target>
void take_table(exercise_reading& reading, const toml_table& table, int line, const Rows& rows,
                Target& to) {
    for (const key_row<Target>& row : rows) {
        if (const toml_entry* const entry = entry_named(table, row.name))
            row.take(reading, *entry, to);
        else if (row.required)
            reading.object(line, std::string("il manque ") + row.name);
    }
    for (const toml_entry& entry : table)
        if (std::ranges::find(rows, entry.key, &key_row<Target>::name) == std::end(rows))
            reading.object(entry, "inconnu ici; il y a " + names_of(rows));
}

/// Reads "[name]".
template <class Rows, class Target>
void take_table(exercise_reading& reading, const toml_entry& entry, const Rows& rows, Target& to) {
    if (const auto* const table = std::get_if<toml_table>(&entry.value.is))
        take_table(reading, *table, entry.value.line, rows, to);
    else
        reading.object(entry, "une table est attendue: [" + entry.key + "]");
}

/// Reads every "[[name]]".
template <class Rows, class Target>
void take_tables(exercise_reading& reading, const toml_entry& entry, const Rows& rows,
                 std::vector<Target>& to) {
    const auto* const list = std::get_if<toml_list>(&entry.value.is);
    const auto is_table = [](const toml_value& each) {
        return std::holds_alternative<toml_table>(each.is);
    };
    if (!list || !std::ranges::all_of(*list, is_table))
        return reading.object(entry, "des tables sont attendues: [[" + entry.key + "]]");
    for (const toml_value& each : *list)
        take_table(reading, std::get<toml_table>(each.is), each.line, rows, to.emplace_back());
}
