// Rows of files that are no exercise.
#pragma once
#include "tests/lesson/exercise_texts.h"

using lines = std::vector<std::string>;

struct broken {
    std::string text;
    lines told;
};

inline void expect_told(const std::vector<broken>& rows) {
    for (const auto& [text, told] : rows) EXPECT_EQ(problems_in(text), told) << text;
}
