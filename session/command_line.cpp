#include "session/command_line.h"

#include <CLI/CLI.hpp>

#include <algorithm>

#include "ioshare/io_printable.h"
#include "session/failure.h"
#include "session/whole_number.h"

namespace {

/// What an option was given.
struct given_values {
    const command_option* option;
    std::vector<std::string> values;
    int times = 0;
};

bool asks(const std::vector<std::string>& words, std::string_view one, std::string_view other) {
    const auto end = std::ranges::find(words, "--");
    return std::any_of(words.begin(), end,
                       [&](const std::string& word) { return word == one || word == other; });
}

/// CLI11 takes a word such as "[a,b]" for a list of two; a NUL at its end, which no command line
/// can hold, keeps it whole.
std::string guarded(const std::string& word) {
    return word.size() > 1 && word.front() == '[' && word.back() == ']' ? word + '\0' : word;
}
void unguard(std::string& word) {
    if (!word.empty() && word.back() == '\0') word.pop_back();
}

void add_option(CLI::App& app, given_values& given) {
    const command_option& option = *given.option;
    if (option.value_name.empty()) {
        app.add_flag(option.name, given.times)->disable_flag_override();
        return;
    }
    app.add_option(option.name, given.values)
        ->expected(1, option.several ? CLI::detail::expected_max_vector_size : 1)
        ->allow_extra_args(option.several)
        ->multi_option_policy(option.repeatable || option.several ? CLI::MultiOptionPolicy::TakeAll
                                                                  : CLI::MultiOptionPolicy::Throw);
}

void describe(CLI::App& app, const command_line& line, std::vector<given_values>& given,
              std::vector<std::string>& operands) {
    app.set_help_flag();  // Help and version are asked for before anything is parsed.
    for (const command_option& each : line.options) given.push_back({&each, {}});
    for (given_values& each : given) add_option(app, each);
    if (!line.operands.empty()) app.add_option("operands", operands);
}

std::string help_row(std::string name, const std::string& meaning) {
    name.resize(std::max<std::size_t>(name.size() + 2, 30), ' ');
    return "  " + name + meaning + "\n";
}

std::string help(const command_line& line) {
    const std::string operands = line.operands.empty() ? "" : " " + line.operands;
    std::string text = line.description + "\nUsage: " + line.program + operands + " [OPTIONS]\n\n" +
                       "Options:\n" + help_row("-h,--help", "affiche cette aide") +
                       help_row("--version", "affiche la version");
    for (const command_option& each : line.options) {
        const std::string value = each.value_name.empty() ? "" : " " + each.value_name;
        text += help_row(each.name + value + (each.several ? "..." : ""), each.meaning);
    }
    return text + line.notes;
}

/// `--option=` without anything behind it: CLI11 would take the next word for its value.
void refuse_empty_values(const command_line& line, const std::vector<std::string>& words) {
    const auto end = std::ranges::find(words, "--");
    for (const command_option& each : line.options)
        if (std::find(words.begin(), end, each.name + "=") != end)
            throw misuse(each.name + ": une valeur est attendue");
}

/// What is wrong, in one French line: CLI11's own words are English.
std::string misunderstanding(const CLI::App& app, const CLI::ParseError& error) {
    constexpr char misunderstood[] = "ligne de commande incomprise: ";
    const std::vector<std::string> unexpected = app.remaining(true);
    if (!unexpected.empty()) return misunderstood + io_printable(unexpected.front());
    const std::string words = error.what();  // They begin with the option and a colon.
    return misunderstood + words.substr(0, words.find(':'));
}

void hand_over(const given_values& given) {
    const command_option& option = *given.option;
    for (int i = 0; i < given.times; ++i) option.take("");
    for (std::string value : given.values) {
        unguard(value);
        if (value.empty()) throw misuse(option.name + ": une valeur est attendue");
        option.take(value);
    }
}

void parse(CLI::App& app, const command_line& line, const std::vector<std::string>& words) {
    refuse_empty_values(line, words);
    std::vector<std::string> backwards;  // CLI11 takes the words from the last to the first.
    for (auto word = words.rbegin(); word != words.rend(); ++word)
        backwards.push_back(guarded(*word));
    try {
        app.parse(backwards);
    } catch (const CLI::ParseError& error) {
        throw misuse(misunderstanding(app, error));
    }
}

}  // namespace

command_words read_command_line(const command_line& line, const std::vector<std::string>& words) {
    if (asks(words, "--help", "-h")) return {{}, help(line)};
    if (asks(words, "--version", "--version")) return {{}, line.program + " " QUORIN_VERSION "\n"};
    CLI::App app(line.description, line.program);
    std::vector<given_values> given;
    command_words read;
    describe(app, line, given, read.operands);
    parse(app, line, words);
    for (std::string& each : read.operands) unguard(each);
    for (const given_values& each : given) hand_over(each);
    return read;
}

double number_between(std::string_view option, const std::string& value, double least,
                      double most) {
    const std::optional<double> number = whole_number<double>(value);
    if (number && *number >= least && *number <= most) return *number;
    throw misuse(std::string(option) + " " + value + ": un nombre de " +
                 CLI::detail::to_string(least) + " à " + CLI::detail::to_string(most) +
                 " est attendu");
}
