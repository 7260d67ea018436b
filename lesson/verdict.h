// The verdict of an exercise, as sentences: what was reached when, what was missing since when,
// what must not have happened, the counts, the hidden faults, the points.
#pragma once
#include <string>
#include <vector>

#include "lesson/judge.h"

struct verdict_sentence {
    /// UTF-8, one line. Times are simulated seconds as `--at` takes them: "12.340 s".
    std::string text;
    /// Whether it says why the exercise is not passed: it names the moment then.
    bool failed = false;
};

/// The sentences on an exercise that is over, in the order in which they are read.
[[nodiscard]] std::vector<verdict_sentence> verdict_sentences(const exercise& task,
                                                              const exercise_standing& standing,
                                                              language in);

/// The same as lines of the paged viewer's markup (docs/markup_and_exports.md), UTF-8: a column 102
/// characters wide between rules, longer sentences in several lines. `heading` is the first line;
/// empty: none.
[[nodiscard]] std::vector<std::string> verdict_lines(const exercise& task,
                                                     const exercise_standing& standing, language in,
                                                     const std::string& heading = {});

/// A text for a cell of the markup: without the "#" that begins another one.
[[nodiscard]] std::string markup_cell(std::string text);

/// The same in lines of their own: broken at blanks where it is longer than a column of so many
/// characters, each line behind a blank.
[[nodiscard]] std::vector<std::string> markup_lines(const std::string& text, std::size_t width);
