// An exercise as a file again.
#pragma once
#include <string>

#include "lesson/exercise.h"

/// A file that reads as the same exercise, save its digest: its comments are not there, and its
/// hidden faults and its diagnosis are one key `cache` of digits, unreadable at a glance. That
/// keeps nobody who is determined from reading them.
[[nodiscard]] std::string hidden_exercise_text(const exercise& what);
