// An exercise as the student gets it.
#pragma once
#include <string>
#include <vector>

#include "lesson/exercise.h"

/// Its lines, UTF-8 without ends of line: title, task, goals, what must not happen, how it must
/// end, the faults that are told, for how long, and the points. Nothing that is hidden: no
/// conditions, no hints, no hidden faults and not how many; of a diagnosis only that there is one
/// to make, and its points.
[[nodiscard]] std::vector<std::string> task_lines(const exercise& what, language in);
