// Values of an exercise file as what they stand for: texts, numbers, times, conditions, faults.
#pragma once
#include <cstdint>
#include <string>
#include <vector>

#include "lesson/exercise_file.h"
#include "lesson/toml_document.h"

/// A file while it is read: for which station, what was wrong so far.
struct exercise_reading {
    explicit exercise_reading(const station_model& for_model) : model(for_model) {}

    const station_model& model;
    exercise_problems problems;

    /// Adds a problem; bytes that no line can show become `\x` and two digits.
    void object(int line, const std::string& reason);
    /// The same about an entry: the line and the name of its key come first.
    void object(const toml_entry& entry, const std::string& reason);
};

/// Each takes the entry's value to `to`; where it cannot, it objects and leaves `to` alone, or with
/// what was read of it.
/// One line that says something.
void take_line(exercise_reading& reading, const toml_entry& entry, std::string& to);
/// Lines that say something, each with its line feed.
void take_lines(exercise_reading& reading, const toml_entry& entry, std::string& to);
/// A whole number between two others, or from one on.
void take_whole(exercise_reading& reading, const toml_entry& entry, std::int64_t least,
                std::int64_t most, std::int64_t& to);
/// Seconds as milliseconds, half ones up; `least_ms` and more.
void take_seconds(exercise_reading& reading, const toml_entry& entry, std::int64_t least_ms,
                  std::int64_t& to);
/// At least one condition, each once, none of which excludes another.
void take_conditions(exercise_reading& reading, const toml_entry& entry,
                     std::vector<exercise_condition>& to);
/// Faults of different names; there may be none.
void take_faults(exercise_reading& reading, const toml_entry& entry,
                 std::vector<station_fault>& to);
