// The words of quorin-io's command line: each command and each option once. The check of a command
// line, the help, and the tests of the pages all come from these two tables.
#pragma once
#include <span>

#include "ioshare/io_observer.h"

struct io_request;

// clang-format off
enum class option_key {
    last, until, timeout, any, unless, length, time, initial, format,
    count
};
// clang-format on

/// What an operand or an option's value must look like for the command line to be understood.
enum class word_form { any, assignment, condition, seconds, recording };

struct io_option_row {
    option_key key;
    /// "--timeout"
    const char* word;
    /// How the help names its value; empty for a flag.
    const char* value;
    /// What each of its values must look like.
    word_form form;
    /// Whether it may be given several times.
    bool repeatable;
    /// Whether it takes all the words up to the next option.
    bool several;
    /// French
    const char* meaning;
};

// clang-format off
enum class command_key {
    list, get, set, reset, wait, expect, pulse, watch, record,
    status, desk, fault, diagnose, pause, resume, speed, step, end,
    count
};
// clang-format on

/// What a command works on: the segment, or the session through its control socket.
enum class works_on { values_to_read, outputs_to_write, session };

struct command_row {
    command_key key;
    /// "wait"
    const char* word;
    /// How the help names what follows; empty when nothing does.
    const char* operands;
    /// How many operands there must be,
    std::size_t least;
    /// and may be.
    std::size_t most;
    /// What each of them must look like.
    word_form form;
    /// A bit for each option that it takes: see takes().
    unsigned options;
    works_on on;
    /// Null for those that the session carries out.
    void (*carry_out)(io_observer& segment, const io_request& asked);
    /// French
    const char* meaning;
};

/// Every option, in the order of the help.
[[nodiscard]] std::span<const io_option_row> option_table();
/// Every command, in the order of the help.
[[nodiscard]] std::span<const command_row> command_table();
/// Whether the command takes the option.
[[nodiscard]] bool takes(const command_row& command, option_key option);
