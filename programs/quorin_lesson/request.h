// What a command line of quorin-lesson asks for.
#pragma once
#include <array>
#include <optional>
#include <string>
#include <vector>

#include "lesson/bilingual.h"
#include "programs/quorin_lesson/command_table.h"

struct lesson_request {
    /// What --help or --version prints instead of all else.
    std::optional<std::string> answer = {};
    /// Null only with an answer.
    const command_row* command = nullptr;
    /// The words after the command that are no options; as many as it takes.
    std::vector<std::string> operands = {};
    /// The values of each option, one for each time that it was given; "" for a flag.
    std::array<std::vector<std::string>, static_cast<std::size_t>(option_key::count)> options = {};

    const std::vector<std::string>& of(option_key option) const {
        return options[static_cast<std::size_t>(option)];
    }
    bool given(option_key option) const { return !of(option).empty(); }
    language in() const {
        return given(option_key::english) ? language::english : language::french;
    }
};

/// Reads the words after the program's name. Throws `misuse` with one French line.
[[nodiscard]] lesson_request read_request(const std::vector<std::string>& words);
