// quorin-io: the link from scripts. Reads and writes a simulator's inputs and outputs by name.
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <csignal>
#include <iostream>
#include <optional>
#include <string>
#include <vector>

#include "workcell/command_line.h"
#include "workcell/numbers.h"
#include "workcell/segment_view.h"

namespace {

constexpr int done = 0, refused = 1, misunderstood = 2, time_over = 3, session_ended = 4;
constexpr useconds_t look_pause_us = 2'000;
constexpr char default_pulse_s[] = "0.2";

using steady = std::chrono::steady_clock;

/// Ends the program's work with a status and one line on the standard error stream.
struct failure {
    int status;
    std::string why;
};

struct assignment {
    std::string name;
    std::int32_t value;
};

volatile std::sig_atomic_t interrupted = 0;

void note_interruption(int) { interrupted = 1; }

void pause_between_looks() { usleep(look_pause_us); }

/// NAME=VALUE. A name may hold "=", a value may not.
assignment read_assignment(const std::string& word) {
    const std::size_t equals = word.rfind('=');
    if (equals == std::string::npos)
        throw failure{misunderstood, word + ": NOM=VALEUR est attendu"};
    const std::optional<std::int32_t> value =
        whole_number<std::int32_t>(std::string_view(word).substr(equals + 1));
    if (!value) throw failure{refused, word + ": la valeur n'est pas un entier de 32 bits"};
    return {word.substr(0, equals), *value};
}

std::vector<assignment> read_assignments(const std::vector<std::string>& words) {
    std::vector<assignment> all;
    for (const std::string& word : words) all.push_back(read_assignment(word));
    return all;
}

std::optional<double> read_seconds(const std::string& option, const std::string& text) {
    if (text.empty()) return std::nullopt;
    const std::optional<double> value = whole_number<double>(text);
    if (!value || *value < 0 || *value > 1e9) {
        throw failure{misunderstood, option + " " + text + ": un nombre de secondes est attendu"};
    }
    return value;
}

bool passed(steady::time_point since, double limit_s) {
    return std::chrono::duration<double>(steady::now() - since).count() >= limit_s;
}

/// What the link shows under a name: an input before an output, the last of those named alike, as
/// the panel reads them.
std::optional<std::int32_t> value_of(const std::vector<io_entry>& entries,
                                     const std::string& name) {
    for (const io_direction direction : {io_direction::input, io_direction::output}) {
        const auto found = std::find_if(
            entries.rbegin(), entries.rend(),
            [&](const io_entry& each) { return each.direction == direction && each.name == name; });
        if (found != entries.rend()) return found->value;
    }
    return std::nullopt;
}

void require(const std::vector<io_entry>& entries, io_direction direction,
             const std::string& name) {
    const bool there = std::ranges::any_of(entries, [&](const io_entry& each) {
        return each.direction == direction && each.name == name;
    });
    if (!there) {
        throw failure{
            refused,
            (direction == io_direction::input ? "entrée inconnue: " : "sortie inconnue: ") + name};
    }
}

int list(const segment_view& segment) {
    for (const io_entry& each : segment.entries()) {
        std::cout << (each.direction == io_direction::input ? "entree" : "sortie") << '\t'
                  << each.name << '\t' << each.value << '\n';
    }
    return done;
}

int get(const segment_view& segment, const std::vector<std::string>& names) {
    const std::vector<io_entry> entries = segment.entries();
    std::string lines;
    for (const std::string& name : names) {
        const std::optional<std::int32_t> value = value_of(entries, name);
        if (!value) throw failure{refused, "nom inconnu: " + name};
        lines += std::to_string(*value) + '\n';
    }
    std::cout << lines;
    return done;
}

void refuse_after_the_end(const segment_view& segment) {
    if (segment.session_over()) throw failure{session_ended, "la session est terminée"};
}

int set(segment_view& segment, const std::vector<std::string>& words) {
    const std::vector<assignment> wanted = read_assignments(words);
    const std::vector<io_entry> entries = segment.entries();
    for (const assignment& each : wanted) require(entries, io_direction::output, each.name);
    refuse_after_the_end(segment);
    for (const assignment& each : wanted) segment.write_output(each.name, each.value);
    return done;
}

int wait(const segment_view& segment, const std::vector<std::string>& words,
         std::optional<double> timeout_s) {
    const std::vector<assignment> wanted = read_assignments(words);
    for (const assignment& each : wanted)
        require(segment.entries(), io_direction::input, each.name);
    for (const auto start = steady::now();;) {
        // The end is looked for first: values that still stand after it are nobody's.
        refuse_after_the_end(segment);
        const std::vector<io_entry> entries = segment.entries();
        const bool all = std::ranges::all_of(wanted, [&](const assignment& each) {
            return value_of(entries, each.name) == each.value;
        });
        if (all) return done;
        if (timeout_s && passed(start, *timeout_s)) throw failure{time_over, "délai écoulé"};
        pause_between_looks();
    }
}

/// Also an interruption sets the output back to 0: it must not stay on because a script was
/// stopped.
int pulse(segment_view& segment, const std::string& name, double length_s) {
    require(segment.entries(), io_direction::output, name);
    refuse_after_the_end(segment);
    for (const int number : {SIGINT, SIGTERM, SIGHUP}) std::signal(number, note_interruption);
    const auto start = steady::now();
    segment.write_output(name, 1);
    while (!passed(start, length_s) && !interrupted && !segment.session_over())
        pause_between_looks();
    segment.write_output(name, 0);
    refuse_after_the_end(segment);
    return done;
}

int watch(const segment_view& segment, const std::vector<std::string>& names) {
    std::vector<io_entry> last = segment.entries();
    for (const std::string& name : names) {
        if (!value_of(last, name)) throw failure{refused, "nom inconnu: " + name};
    }
    const auto wanted = [&](const std::string& name) {
        return names.empty() || std::ranges::find(names, name) != names.end();
    };
    for (bool over = false; !over; pause_between_looks()) {
        over = segment.session_over();  // Looked at first, so that the last changes are told.
        std::vector<io_entry> now = segment.entries();
        for (std::size_t i = 0; i < now.size() && i < last.size(); ++i) {
            if (now[i] != last[i] && wanted(now[i].name)) {
                std::cout << now[i].name << '=' << now[i].value << std::endl;
            }
        }
        last = std::move(now);
    }
    return done;
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
