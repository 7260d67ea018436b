// quorin-io: the link from scripts. Reads and writes a simulator's inputs and outputs by name.
#include <iostream>
#include <optional>
#include <string>
#include <vector>

#include "programs/quorin_io/cli_words.h"
#include "programs/quorin_io/io_commands.h"
#include "session/whole_number.h"

namespace {

using namespace io_commands;

constexpr char default_pulse_s[] = "0.2";

std::optional<double> read_seconds(const std::string& option, const std::string& text) {
    if (text.empty()) return std::nullopt;
    const std::optional<double> value = whole_number<double>(text);
    if (!value || *value < 0 || *value > 1e9) {
        throw failure{misunderstood, option + " " + text + ": un nombre de secondes est attendu"};
    }
    return value;
}

/// The words of the command line.
struct request {
    std::string ident, timeout, pulse_length = default_pulse_s;
    std::vector<std::string> words;
    std::string name;
};

int read_ident(const std::string& text) {
    const std::optional<int> ident = whole_number<int>(text);
    if (!ident)
        throw failure{misunderstood, text + ": l'identifiant d'un segment est un nombre entier"};
    return *ident;
}

int carry_out(const std::string& command, const request& asked) {
    const std::optional<double> timeout_s = read_seconds("--timeout", asked.timeout);
    const double pulse_s = read_seconds("--for", asked.pulse_length).value_or(0);
    const bool writes = command == "set" || command == "pulse";
    segment_view segment(read_ident(asked.ident),
                         writes ? segment_view::access::write : segment_view::access::read);
    if (!segment.problem().empty()) throw failure{refused, segment.problem()};
    if (command == "list") return list(segment);
    if (command == "get") return get(segment, asked.words);
    if (command == "set") return set(segment, asked.words);
    if (command == "wait") return wait(segment, asked.words, timeout_s);
    if (command == "pulse") return pulse(segment, asked.name, pulse_s);
    return watch(segment, asked.words);
}

void describe(CLI::App& app, request& asked) {
    app.set_help_flag("--help", "affiche cette aide");
    app.set_version_flag("--version", "quorin-io " QUORIN_VERSION, "affiche la version");
    app.add_option("ident_mem", asked.ident, "identifiant du segment")->required();
    app.add_subcommand("list", "toutes les entrées et sorties: sens, nom, valeur");
    app.add_subcommand("get", "des valeurs, une par ligne")
        ->add_option("NOM", asked.words)
        ->required();
    app.add_subcommand("set", "écrit des sorties")
        ->add_option("NOM=VALEUR", asked.words)
        ->required();
    CLI::App* const waiting =
        app.add_subcommand("wait", "attend que toutes ces entrées aient ces valeurs à la fois");
    waiting->add_option("NOM=VALEUR", asked.words)->required();
    waiting->add_option("--timeout", asked.timeout, "abandonne après S secondes")->type_name("S");
    CLI::App* const pulsing = app.add_subcommand("pulse", "met une sortie à 1, puis à 0");
    pulsing->add_option("NOM", asked.name)->required();
    pulsing
        ->add_option("--for", asked.pulse_length,
                     std::string("durée en secondes (") + default_pulse_s + ")")
        ->type_name("S");
    app.add_subcommand("watch", "une ligne par changement, jusqu'à la fin de la session")
        ->add_option("NOM", asked.words);
    app.require_subcommand(1);
    for (CLI::App* const command : app.get_subcommands({})) command->group("Commandes");
    for (const auto& [english, french] : {std::pair{"SUBCOMMAND", "COMMANDE"},
                                          {"Positionals", "Arguments"},
                                          {"TEXT", ""},
                                          {"REQUIRED", "(obligatoire)"}})
        app.get_formatter()->label(english, french);
}

int fail(int status, const std::string& why) {
    std::cerr << "quorin-io: " << why << "\n";
    return status;
}

}  // namespace

int main(int argc, char** argv) {
    request asked;
    CLI::App app("Lit et écrit les entrées et sorties d'un simulateur par leurs noms", "quorin-io");
    describe(app, asked);
    try {
        app.parse(argc, argv);
        const int status = carry_out(app.get_subcommands().front()->get_name(), asked);
        if (!std::cout.flush()) throw failure{refused, "la sortie standard ne prend rien"};
        return status;
    } catch (const CLI::CallForHelp&) {
        std::cout << app.help();
        return done;
    } catch (const CLI::CallForVersion&) {
        std::cout << app.version() << "\n";
        return done;
    } catch (const CLI::ParseError& error) {
        return fail(misunderstood, misunderstanding(app, error));
    } catch (const failure& error) {
        return fail(error.status, error.why);
    }
}
