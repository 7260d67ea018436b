#include "programs/quorin_lesson/request.h"

#include <algorithm>

#include "ioshare/io_printable.h"
#include "session/command_line.h"
#include "session/command_table.h"
#include "session/failure.h"

namespace {

std::string all_help() {
    return command_help(command_table()) +
           "\nUn EXERCICE est un fichier, ou le nom d'un exercice fourni.\n";
}

/// The command line of a command, whose options go to `asked`; of all of them when there is none.
command_line line_of(const command_row* command, lesson_request& asked) {
    command_line line{"quorin-lesson",
                      "Liste, montre, vérifie et note des exercices",
                      "COMMANDE",
                      {},
                      all_help()};
    if (command) line.operands = std::string(command->word) + " " + command->operands;
    for (const lesson_option_row& row : option_table()) {
        if (command && !takes(*command, row.key)) continue;
        line.options.push_back({row.word, row.value, row.meaning, false, false,
                                [&asked, &row](const std::string& value) {
                                    asked.options[static_cast<std::size_t>(row.key)] = {value};
                                }});
    }
    return line;
}

void check_together(const lesson_request& asked) {
    const command_row& command = *asked.command;
    check_number(command, asked.operands);
    for (const std::string& each : asked.operands)
        if (each.empty()) throw incomplete_command();
    for (const lesson_option_row& row : option_table())
        if (needs(command, row.key) && !asked.given(row.key))
            throw misuse(std::string(command.word) + ": " + row.word + " " + row.value +
                         " est attendu");
}

}  // namespace

lesson_request read_request(const std::vector<std::string>& words) {
    lesson_request asked;
    asked.command = words.empty() ? nullptr : command_named(command_table(), words.front());
    const auto rest = words.begin() + (asked.command ? 1 : 0);
    const command_words read =
        read_command_line(line_of(asked.command, asked), {rest, words.end()});
    if (read.answer) return {read.answer};
    if (!asked.command && words.empty()) throw incomplete_command();
    if (!asked.command) throw not_understood(io_printable(words.front()));
    asked.operands = read.operands;
    check_together(asked);
    return asked;
}
