// quorin-lesson mark: a class's recordings, marked.
#pragma once
#include "programs/quorin_lesson/request.h"

/// Marks the recordings behind the first operand, an exercise: a line for each on the standard
/// output as soon as it is known, reasons of refusals on the error stream, then the files of --csv
/// and --pdf. The program's status: 0 when all passed, else 3. Throws `failure` where something
/// cannot be written, or where a file to be written is one that is read.
int mark_recordings(const lesson_request& asked);
