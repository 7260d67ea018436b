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
    return std::ranges::any_of(
        words, [&](const std::string& word) { return word == one || word == other; });
}

/// CLI11 takes a word such as "[a,b]" for a list of two; a NUL at its end, which no command line
/// can hold, keeps it whole.
std::string guarded(const std::string& word) { return word.ends_with(']') ? word + '\0' : word; }
std::string unguarded(std::string word) {
    if (word.ends_with('\0')) word.pop_back();
    return word;
}

void add_option(CLI::App& app, given_values& given) {
    const command_option& option = *given.option;
    if (option.value_name.empty()) {
        app.add_flag(option.name, given.times);
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

/// `--option=` with nothing behind it, for which CLI11 would take the next word, and a flag that is
/// given a value.
void refuse_odd_values(const command_line& line, const std::vector<std::string>& words) {
    for (const std::string& word : words) {
        const std::string name = word.substr(0, word.find('='));
        const auto option = std::ranges::find(line.options, name, &command_option::name);
        if (option == line.options.end() || name == word) continue;
        if (option->value_name.empty()) throw not_understood(io_printable(word));
        if (word.size() == name.size() + 1) throw misuse(name + ": une valeur est attendue");
    }
}

/// What is wrong, in one French line: CLI11's own words are English.
failure misunderstanding(const CLI::App& app, const CLI::ParseError& error) {
    const std::vector<std::string> unexpected = app.remaining(true);
    if (!unexpected.empty()) return not_understood(io_printable(unguarded(unexpected.front())));
    const std::string words = error.what();  // They begin with the option and a colon.
    return not_understood(words.substr(0, words.find(':')));
}

void hand_over(const given_values& given) {
    const command_option& option = *given.option;
    for (int i = 0; i < given.times; ++i) option.take("");
    for (const std::string& each : given.values) {
        const std::string value = unguarded(each);
        if (value.empty()) throw misuse(option.name + ": une valeur est attendue");
        try {
            option.take(value);
        } catch (const failure& why) {
            throw misuse(option.name + " " + io_printable(value) + ": " + why.why);
        }
    }
}

void parse(CLI::App& app, const std::vector<std::string>& words) {
    std::vector<std::string> backwards;  // CLI11 takes the words from the last to the first.
    for (auto word = words.rbegin(); word != words.rend(); ++word)
        backwards.push_back(guarded(*word));
    try {
        app.parse(backwards);
    } catch (const CLI::ParseError& error) {
        throw misunderstanding(app, error);
    }
}

}  // namespace

command_words read_command_line(const command_line& line, const std::vector<std::string>& words) {
    const auto dashes = std::ranges::find(words, "--");
    const std::vector<std::string> before(words.begin(), dashes);
    if (asks(before, "--help", "-h")) return {{}, {}, help(line)};
    if (asks(before, "--version", "--version"))
        return {{}, {}, line.program + " " QUORIN_VERSION "\n"};
    refuse_odd_values(line, before);
    CLI::App app(line.description, line.program);
    std::vector<given_values> given;
    command_words read;
    describe(app, line, given, read.operands);
    parse(app, before);
    for (std::string& each : read.operands) each = unguarded(each);
    if (dashes != words.end()) read.operands.insert(read.operands.end(), dashes + 1, words.end());
    if (line.operands.empty() && !read.operands.empty())
        throw not_understood(io_printable(read.operands.front()));
    for (const given_values& each : given) {
        hand_over(each);
        if (each.times > 0 || !each.values.empty()) read.given.push_back(each.option->name);
    }
    return read;
}

double number_between(const std::string& value, double least, double most) {
    const std::optional<double> number = whole_number<double>(value);
    if (number && *number >= least && *number <= most) return *number;
    throw misuse("un nombre de " + number_text(least) + " à " + number_text(most) + " est attendu");
}
