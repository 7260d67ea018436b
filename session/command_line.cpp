#include "session/command_line.h"

#include <CLI/CLI.hpp>

#include <algorithm>

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

void describe(CLI::App& app, const command_line& line, std::vector<given_values>& given,
              std::vector<std::string>& operands) {
    app.set_help_flag("--help,-h", "affiche cette aide");
    app.set_version_flag("--version", line.program + " " QUORIN_VERSION, "affiche la version");
    for (const command_option& each : line.options) given.push_back({&each, {}});
    for (given_values& each : given) {
        if (each.option->value_name.empty()) {
            app.add_flag(each.option->name, each.times, each.option->meaning);
            continue;
        }
        app.add_option(each.option->name, each.values, each.option->meaning)
            ->type_name(each.option->value_name)
            ->expected(1)
            ->multi_option_policy(each.option->repeatable ? CLI::MultiOptionPolicy::TakeAll
                                                          : CLI::MultiOptionPolicy::Throw);
    }
    if (!line.operands.empty()) app.add_option("operands", operands)->group("");
}

std::string help(const CLI::App& app, const command_line& line) {
    const std::string operands = line.operands.empty() ? "" : " " + line.operands;
    std::string text =
        line.description + "\nUsage: " + line.program + operands + " [OPTIONS]\n\n" + "Options:\n";
    for (const CLI::Option* each : app.get_options()) {
        if (each->get_name() == "operands") continue;
        std::string names = each->get_name(false, true);
        if (each->get_type_size() > 0) names += " " + each->get_type_name();
        names.resize(std::max<std::size_t>(names.size() + 2, 30), ' ');
        text += "  " + names + each->get_description() + "\n";
    }
    return text + line.notes;
}

/// What is wrong, in one French line: CLI11's own words are English.
std::string misunderstanding(const CLI::App& app, const CLI::ParseError& error) {
    constexpr char misunderstood[] = "ligne de commande incomprise: ";
    const std::vector<std::string> unexpected = app.remaining(true);
    if (!unexpected.empty()) return misunderstood + unexpected.front();
    const std::string words = error.what();  // They begin with the option and a colon.
    return misunderstood + words.substr(0, words.find(':'));
}

void hand_over(const given_values& given) {
    const command_option& option = *given.option;
    for (int i = 0; i < given.times; ++i) option.take("");
    for (const std::string& value : given.values) {
        if (value.empty()) throw misuse("une valeur est attendue");
        option.take(value);
    }
}

}  // namespace

command_words read_command_line(const command_line& line, const std::vector<std::string>& words) {
    CLI::App app(line.description, line.program);
    std::vector<given_values> given;
    command_words read;
    describe(app, line, given, read.operands);
    if (asks(words, "--help", "-h")) return {{}, help(app, line)};
    if (asks(words, "--version", "--version")) return {{}, app.version() + "\n"};
    try {
        // CLI11 takes the words from the last to the first.
        app.parse(std::vector<std::string>(words.rbegin(), words.rend()));
    } catch (const CLI::ParseError& error) {
        throw misuse(misunderstanding(app, error));
    }
    for (const given_values& each : given) {
        try {
            hand_over(each);
        } catch (const failure& why) {
            throw misuse(each.option->name + ": " + why.why);
        }
    }
    return read;
}

double number_between(const std::string& value, double least, double most) {
    const std::optional<double> number = whole_number<double>(value);
    if (number && *number >= least && *number <= most) return *number;
    throw misuse("un nombre de " + CLI::detail::to_string(least) + " à " +
                 CLI::detail::to_string(most) + " est attendu, pas " + value);
}
