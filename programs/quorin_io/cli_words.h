// What zk4sim and quorin-io say of a command line that CLI11 refuses: its own words are English.
#pragma once
#include <CLI/CLI.hpp>

#include <string>

/// What is wrong, in one French line without an end of line: the first word that was not expected,
/// or the option that lacks its value or has several. `app` is the one that threw `error`.
inline std::string misunderstanding(const CLI::App& app, const CLI::ParseError& error) {
    constexpr char misunderstood[] = "ligne de commande incomprise: ";
    const std::vector<std::string> unexpected = app.remaining(true);
    if (!unexpected.empty()) return misunderstood + unexpected.front();
    if (dynamic_cast<const CLI::ArgumentMismatch*>(&error)) {
        const std::string words = error.what();  // They begin with the option and a colon.
        return misunderstood + words.substr(0, words.find(':'));
    }
    return "ligne de commande incomplète (voir --help)";
}
