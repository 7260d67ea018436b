// What the tables of an exercise file may hold, and what must fit together in it.
#pragma once
#include "lesson/exercise_values.h"

/// Reads a whole file into `to`, and objects to all that is wrong.
void take_exercise(exercise_reading& reading, const toml_table& file, exercise& to);
