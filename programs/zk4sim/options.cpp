#include "programs/zk4sim/options.h"

#include <algorithm>

#include "programs/zk4sim/cli_words.h"
#include "session/whole_number.h"

namespace {

constexpr char version[] = "zk4sim " QUORIN_VERSION "\n";

/// The words of the command line, before they are understood.
struct raw_words {
    std::string panel, commander_timeout, speed = "1", duration, seed = "0";
    std::vector<std::string> faults;
    bool no_panel = false, headless = false;
};

struct misuse {
    std::string why;
};

double number_between(const std::string& option, const std::string& text, double least,
                      double most) {
    const std::optional<double> value = whole_number<double>(text);
    if (!value || *value < least || *value > most) {
        throw misuse{option + " " + text + ": un nombre de " + CLI::detail::to_string(least) +
                     " à " + CLI::detail::to_string(most) + " est attendu"};
    }
    return *value;
}

std::vector<workcell_fault> understand_faults(const std::vector<std::string>& words) {
    std::vector<workcell_fault> faults;
    for (const std::string& word : words) {
        std::string reason;
        const std::optional<workcell_fault> fault = parse_fault(word, reason);
        if (!fault) throw misuse{"--fault " + reason};
        faults.push_back(*fault);
    }
    return faults;
}

zk4sim_options understand(const raw_words& words) {
    constexpr double longest_s = 1e9;
    zk4sim_options options;
    options.panel = words.panel;
    options.no_panel = words.no_panel;
    options.speed = number_between("--speed", words.speed, 0.1, 100);
    if (!words.duration.empty())
        options.duration_s = number_between("--duration", words.duration, 0, longest_s);
    if (!words.commander_timeout.empty()) {
        if (!words.no_panel) throw misuse{"--commander-timeout demande --no-panel"};
        options.commander_timeout_s =
            number_between("--commander-timeout", words.commander_timeout, 0, longest_s);
    }
    if (words.no_panel && !words.panel.empty()) throw misuse{"--panel et --no-panel s'excluent"};
    const std::optional<std::uint64_t> seed = whole_number<std::uint64_t>(words.seed);
    if (!seed) throw misuse{"--seed " + words.seed + ": un entier positif est attendu"};
    options.seed = *seed;
    options.faults = understand_faults(words.faults);
    return options;
}

void describe(CLI::App& app, raw_words& words) {
    app.set_help_flag("--help", "affiche cette aide");
    app.set_version_flag("--version", std::string(version, sizeof version - 2),
                         "affiche la version");
    app.add_option("--panel", words.panel,
                   "panneau à lancer (quorin, à côté de zk4sim ou sur le PATH)")
        ->type_name("PROGRAMME");
    app.add_flag("--no-panel", words.no_panel, "ne lance aucun panneau");
    app.add_option("--commander-timeout", words.commander_timeout,
                   "avec --no-panel: au bout de S secondes sans client, les commandes valent 0")
        ->type_name("S");
    app.add_flag("--headless", words.headless, "sans fenêtre");
    app.add_option("--speed", words.speed, "secondes simulées par seconde, de 0.1 à 100 (1)")
        ->type_name("X");
    app.add_option("--duration", words.duration, "termine après S secondes simulées")
        ->type_name("S");
    app.add_option("--fault", words.faults,
                   "une panne dès le début, répétable: stuck0, stuck1, inverted (capteurs), "
                   "dead (actionneurs)")
        ->type_name("NOM=PANNE")
        ->expected(1)
        ->multi_option_policy(CLI::MultiOptionPolicy::TakeAll);
    app.add_option("--seed", words.seed, "choisit la place de la première base (0)")
        ->type_name("N");
}

}  // namespace

zk4sim_request zk4sim_read_command_line(const std::vector<std::string>& arguments) {
    raw_words words;
    CLI::App app("Simulateur de la station ZK4 de dépôt de colle", "zk4sim");
    describe(app, words);
    try {
        // CLI11 takes the words from the last to the first.
        app.parse(std::vector<std::string>(arguments.rbegin(), arguments.rend()));
        return {understand(words), 0, ""};
    } catch (const CLI::CallForHelp&) {
        return {std::nullopt, 0, app.help()};
    } catch (const CLI::CallForVersion&) {
        return {std::nullopt, 0, version};
    } catch (const CLI::ParseError& error) {
        return {std::nullopt, 2, "zk4sim: " + misunderstanding(app, error) + "\n"};
    } catch (const misuse& error) {
        return {std::nullopt, 2, "zk4sim: " + error.why + "\n"};
    }
}
