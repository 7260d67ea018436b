// Exercises as files: TOML, read for a station whose names they use. docs/exercises.md is their
// page.
#pragma once
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "lesson/exercise.h"
#include "session/failure.h"
#include "session/station_model.h"

/// Of bases, and of parts.
inline constexpr int most_exercise_supplies = 1'000'000;
/// Of one table, given or taken off.
inline constexpr std::int64_t most_exercise_points = 1'000'000'000;
/// The bytes of a file; a longer one is refused.
inline constexpr std::size_t most_exercise_bytes = 1 << 20;

/// What is wrong with a file.
struct exercise_problem {
    /// The line of the key, else of its table, else 1.
    int line;
    /// French (UTF-8), one line.
    std::string reason;
    bool operator==(const exercise_problem&) const = default;
};

/// All that is wrong with a file, by its lines; never empty.
using exercise_problems = std::vector<exercise_problem>;

/// The failure of a file that is no exercise: `refused`, and a line "FILE:LINE: reason" for each
/// problem. Control bytes of the path are shown as `\x` and two digits.
struct exercise_refusal : failure {
    /// `found` are the problems, by their lines; at least one.
    exercise_refusal(const std::string& path, exercise_problems found);
    /// The same for whoever shows them otherwise than as the lines of `why`.
    exercise_problems problems;
};

/// Reads an exercise for that station, whatever the bytes: the exercise, or all that is wrong.
[[nodiscard]] std::variant<exercise, exercise_problems> read_exercise(std::string_view bytes,
                                                                      const station_model& model);

/// Reads a file; "-" is the standard input. Throws `exercise_refusal` when it is no exercise, and
/// `refusal` with one line when it cannot be read.
[[nodiscard]] exercise read_exercise_file(const std::string& path, const station_model& model);
