// The commands that read exercises and judge nobody. Each returns the program's status.
#pragma once
#include "programs/quorin_lesson/request.h"

/// A line for each bundled exercise: name, title and points, tabs between them.
int list_exercises(const lesson_request& asked);
/// The task of the first operand.
int show_exercise(const lesson_request& asked);
/// Nothing when the first operand is an exercise.
int check_exercise(const lesson_request& asked);
/// Writes the first operand anew.
int hide_exercise(const lesson_request& asked);
