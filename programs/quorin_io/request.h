// quorin-io's command line, understood.
#pragma once
#include <array>
#include <optional>
#include <string>
#include <vector>

#include "programs/quorin_io/command_table.h"

struct io_request {
    /// What --help or --version prints; nothing else is to be done then.
    std::optional<std::string> answer = {};
    int ident = 0;
    /// --last stands in the identifier's place.
    bool last = false;
    const command_row* command = nullptr;
    std::vector<std::string> operands = {};
    std::array<std::vector<std::string>, static_cast<std::size_t>(option_key::count)> options = {};

    /// The values of an option; an empty one for each time that a flag was given.
    [[nodiscard]] const std::vector<std::string>& of(option_key option) const {
        return options[static_cast<std::size_t>(option)];
    }
    [[nodiscard]] bool given(option_key option) const { return !of(option).empty(); }
    /// The seconds that an option gives; nothing when it was not given.
    [[nodiscard]] std::optional<double> seconds(option_key option) const;
};

/// Understands the words after the program's name. The identifier may stand in front of the
/// command, or in `environment`, the value of QUORIN_IDENT (empty when it is not set). Throws
/// `misuse` with one French line. The values of NAME=VALUE words are not looked at here.
[[nodiscard]] io_request read_request(const std::vector<std::string>& words,
                                      const std::string& environment);
