#include "programs/quorin_io/request.h"

#include <algorithm>

#include "ioshare/io_printable.h"
#include "programs/quorin_io/record.h"
#include "session/command_line.h"
#include "session/command_table.h"
#include "session/failure.h"
#include "session/keyed_rows.h"
#include "session/whole_number.h"

namespace {

/// The words before the operands, each where it was given.
struct front {
    std::optional<std::string> ident;
    const command_row* command = nullptr;
    std::vector<std::string> rest;
};

bool is_last(const std::string& word) {
    return word == row_of(option_table(), option_key::last).word;
}

/// Whether a word stands where the identifier does: an option does not, but -1 and --last do.
bool in_idents_place(const std::string& word) {
    return !command_named(command_table(), word) &&
           (!word.starts_with('-') || whole_number<int>(word) || is_last(word));
}

front take_front(const std::vector<std::string>& words) {
    front taken;
    auto next = words.begin();
    if (next != words.end() && in_idents_place(*next)) taken.ident = *next++;
    if (next != words.end() && (taken.command = command_named(command_table(), *next))) ++next;
    taken.rest.assign(next, words.end());
    return taken;
}

/// What is wrong with a word of that form; empty when nothing is.
std::string objection(word_form form, const std::string& word) {
    const bool pair = form == word_form::assignment || form == word_form::condition;
    if (pair && word.find('=') == std::string::npos) return "NOM=VALEUR est attendu";
    if (form == word_form::recording)
        return recording_kind_called(word) ? "" : "csv ou vcd est attendu";
    if (form != word_form::seconds) return "";
    const std::optional<double> value = whole_number<double>(word);
    return value && *value >= 0 && *value <= 1e9 ? "" : "un nombre de secondes est attendu";
}

std::string all_help() {
    return command_help(command_table()) +
           "\nSans ident_mem ni --last, la variable QUORIN_IDENT donne l'identifiant.\n";
}

/// The command line of a command, whose options go to `asked`; of all of them when there is none.
command_line line_of(const command_row* command, io_request& asked) {
    command_line line{"quorin-io",
                      "Lit et écrit les entrées et sorties d'un simulateur par leurs noms",
                      "<ident_mem> COMMANDE",
                      {},
                      all_help()};
    if (command)
        line.operands = std::string("<ident_mem> ") + command->word + " " + command->operands;
    for (const io_option_row& row : option_table()) {
        if (command && !takes(*command, row.key)) continue;
        const auto take = [&asked, &row](const std::string& value) {
            const std::string why = objection(row.form, value);
            if (!why.empty()) throw misuse(why);
            asked.options[static_cast<std::size_t>(row.key)].push_back(value);
        };
        line.options.push_back(
            {row.word, row.value, row.meaning, row.repeatable, row.several, take});
    }
    return line;
}

void read_ident(const front& taken, const std::string& environment, io_request& asked) {
    asked.last = taken.ident && is_last(*taken.ident);
    if (asked.last) return;
    const bool here = taken.ident.has_value();
    const std::optional<int> ident = whole_number<int>(here ? *taken.ident : environment);
    if (ident) {
        asked.ident = *ident;
    } else if (here || !environment.empty()) {
        throw misuse(
            (here ? io_printable(*taken.ident) : "QUORIN_IDENT=" + io_printable(environment)) +
            ": l'identifiant d'un segment est un nombre entier");
    } else {
        throw misuse(std::string(taken.command->word) +
                     ": il manque l'identifiant du segment, --last ou QUORIN_IDENT");
    }
}

void check_operands(const io_request& asked) {
    const command_row& command = *asked.command;
    check_number(command, asked.operands);
    for (const std::string& each : asked.operands) {
        const std::string why = objection(command.form, each);
        if (!why.empty()) throw misuse(io_printable(each) + ": " + why);
    }
    if (command.key == command_key::set && asked.given(option_key::timeout) &&
        !asked.given(option_key::until))
        throw misuse("--timeout: --until est attendu");
    if (command.key == command_key::record) (void)kind_of_recording(asked);
}

}  // namespace

std::optional<double> io_request::seconds(option_key option) const {
    if (!given(option)) return std::nullopt;
    return whole_number<double>(of(option).front());
}

io_request read_request(const std::vector<std::string>& words, const std::string& environment) {
    io_request asked;
    const front taken = take_front(words);
    const command_words read = read_command_line(line_of(taken.command, asked), taken.rest);
    if (read.answer) return {read.answer};
    if (taken.command) {
        read_ident(taken, environment, asked);
        asked.command = taken.command;
        asked.operands = read.operands;
        check_operands(asked);
        return asked;
    }
    if (!taken.rest.empty()) throw not_understood(io_printable(taken.rest.front()));
    if (taken.ident && !whole_number<int>(*taken.ident) && !is_last(*taken.ident))
        throw not_understood(io_printable(*taken.ident));
    throw incomplete_command();
}
