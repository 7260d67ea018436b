// quorin-lesson mark: a class's recordings, marked.
#pragma once
#include <string>
#include <vector>

#include "lesson/exercise.h"

struct mark_request {
    std::vector<std::string> recordings = {};
    /// The files that are read, which no output may replace: the exercise, the recordings.
    std::vector<std::string> inputs = {};
    /// Where the report and the table go; empty: nowhere.
    std::string pdf = {}, csv = {};
    bool verbose = false;
};

/// Marks the recordings: a line for each on the standard output as soon as it is known, reasons of
/// refusals on the error stream, then the files. The program's status: 0 when all passed, else 3.
/// Throws `failure` where something cannot be written, or where a file to be written is one that is
/// read.
[[nodiscard]] int run_mark(const exercise& task, const mark_request& asked);
