// The words of quorin-lesson's command line: each command and each option once. The check of a
// command line, the help, and the tests of the pages all come from these two tables.
#pragma once
#include <cstddef>
#include <span>

struct lesson_request;

enum class option_key { english, output, pdf, csv, verbose, count };

struct lesson_option_row {
    option_key key;
    /// "--english"
    const char* word;
    /// How the help names its value; empty for a flag.
    const char* value;
    /// French
    const char* meaning;
};

enum class command_key { list, show, check, hide, mark, count };

struct command_row {
    command_key key;
    /// "show"
    const char* word;
    /// How the help names what follows; empty when nothing does.
    const char* operands;
    /// How many operands there must be,
    std::size_t least;
    /// and may be.
    std::size_t most;
    /// A bit for each option that it takes: see takes().
    unsigned options;
    /// A bit for each of these that must be given: see needs().
    unsigned needed;
    /// The program's status. May throw `failure`.
    int (*carry_out)(const lesson_request& asked);
    /// French
    const char* meaning;
};

/// Every option, in the order of the help.
[[nodiscard]] std::span<const lesson_option_row> option_table();
/// Every command, in the order of the help.
[[nodiscard]] std::span<const command_row> command_table();
/// Whether the command takes the option.
[[nodiscard]] bool takes(const command_row& command, option_key option);
/// Whether it makes no sense without it.
[[nodiscard]] bool needs(const command_row& command, option_key option);
