// A program's commands as rows of a table: what is the same in every such program.
//
// A row has `word` ("mark"), `operands` as the help names them, `least` and `most` of them, and the
// French `meaning`.
#pragma once
#include <algorithm>
#include <span>
#include <string>
#include <vector>

#include "ioshare/io_printable.h"
#include "session/failure.h"

/// The failure of a command line that ends too soon.
inline failure incomplete_command() { return misuse("ligne de commande incomplète (voir --help)"); }

/// The command of that word; null when there is none.
template <class Row>
[[nodiscard]] const Row* command_named(std::span<const Row> commands, const std::string& word) {
    const auto found = std::ranges::find(commands, word, &Row::word);
    return found == commands.end() ? nullptr : &*found;
}

/// The part of the help that lists them.
template <class Row>
[[nodiscard]] std::string command_help(std::span<const Row> commands) {
    std::string text = "\nCommandes:\n";
    for (const Row& each : commands) {
        std::string words = std::string(each.word) + " " + each.operands;
        words.resize(std::max<std::size_t>(words.size() + 2, 30), ' ');
        text += "  " + words + each.meaning + "\n";
    }
    return text;
}

/// Throws `misuse` for too few operands, or too many.
template <class Row>
void check_number(const Row& command, const std::vector<std::string>& operands) {
    if (operands.size() < command.least) throw incomplete_command();
    if (operands.size() > command.most) throw not_understood(io_printable(operands[command.most]));
}
