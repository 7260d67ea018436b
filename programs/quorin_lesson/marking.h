// A recording marked: run through the model again, and judged afresh from what happened.
#pragma once
#include <optional>
#include <string>

#include "lesson/exercise.h"
#include "lesson/judge.h"

/// What came of a recording: a standing that is over, or why it was refused.
struct marked_recording {
    /// As it was named.
    std::string file;
    std::optional<exercise_standing> standing = {};
    /// French, one line, with the file's name; empty where there is a standing.
    std::string refusal = {};

    [[nodiscard]] bool passed() const { return standing && standing->passed; }
    /// "reussi", "echoue" or "refuse".
    [[nodiscard]] std::string result() const;
};

/// Marks the recording in that file; "-" is the standard input. What the station could not have
/// answered, what was made with other supplies, another seed or other faults than the exercise's,
/// and what is no recording, is refused; one that was cut off is judged to its last whole step.
[[nodiscard]] marked_recording mark_recording(const exercise& task, const std::string& file);
