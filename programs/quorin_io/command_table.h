// The words of quorin-io's command line: each command and each option once. The check of a command
// line, the help, and the tests of the pages all come from these two tables.
#pragma once
#include <span>

#include "ioshare/io_observer.h"

struct io_request;

enum class option_key { last, until, timeout, any, unless, length, time, initial, count };

/// What an operand or an option's value must look like for the command line to be understood.
enum class word_form { any, assignment, condition, seconds };

struct option_row {
    option_key key;
    const char* word;     ///< "--timeout"
    const char* value;    ///< How the help names its value; empty for a flag.
    word_form form;       ///< What each of its values must look like.
    bool repeatable;      ///< Whether it may be given several times.
    bool several;         ///< Whether it takes all the words up to the next option.
    const char* meaning;  ///< French
};

// clang-format off
enum class command_key {
    list, get, set, reset, wait, expect, pulse, watch,
    status, desk, fault, diagnose, pause, resume, speed, step, end,
    count
};
// clang-format on

/// What a command works on: the segment, or the session through its control socket.
enum class works_on { values_to_read, outputs_to_write, session };

struct command_row {
    command_key key;
    const char* word;      ///< "wait"
    const char* operands;  ///< How the help names what follows; empty when nothing does.
    std::size_t least;     ///< How many operands there must be,
    std::size_t most;      ///< and may be.
    word_form form;        ///< What each of them must look like.
    unsigned options;      ///< A bit for each option that it takes: see takes().
    works_on on;
    /// Null for those that the session carries out.
    void (*carry_out)(io_observer& segment, const io_request& asked);
    const char* meaning;  ///< French
};

/// Every option, in the order of the help.
[[nodiscard]] std::span<const option_row> option_table();
/// Every command, in the order of the help.
[[nodiscard]] std::span<const command_row> command_table();
/// Whether the command takes the option.
[[nodiscard]] bool takes(const command_row& command, option_key option);
