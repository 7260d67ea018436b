#include "programs/zk4sim/options.h"

#include "lesson/bundled_exercises.h"
#include "session/failure.h"
#include "session/keyed_rows.h"
#include "session/whole_number.h"

namespace {

enum class zk4sim_option { seed, bases, parts, manual, names, exercise, english, count };

std::uint64_t seed(const std::string& value) {
    const std::optional<std::uint64_t> number = whole_number<std::uint64_t>(value);
    if (!number) throw misuse("un entier positif est attendu");
    return *number;
}

int supplies(const std::string& value) {
    const std::optional<int> number = whole_number<int>(value);
    if (number && *number >= 0 && *number <= most_workcell_supplies) return *number;
    throw misuse("un entier de 0 à " + std::to_string(most_workcell_supplies) + " est attendu");
}

void for_the_model(zk4sim_options& options, const char* option) {
    if (options.for_the_model.empty()) options.for_the_model = option;
}

using row = option_row<zk4sim_option, zk4sim_options>;

// clang-format off
constexpr row rows[] = {
    {zk4sim_option::seed, "--seed", "N", "choisit la place de la première base (0)", false,
     [](zk4sim_options& o, const std::string& value) { for_the_model(o, "--seed"); o.seed = seed(value); }},
    {zk4sim_option::bases, "--bases", "N", "bases en réserve, de 0 à 1000000 (1000)", false,
     [](zk4sim_options& o, const std::string& value) { for_the_model(o, "--bases"); o.supplies.bases = supplies(value); }},
    {zk4sim_option::parts, "--parts", "N", "pièces en réserve, de 0 à 1000000 (1000)", false,
     [](zk4sim_options& o, const std::string& value) { for_the_model(o, "--parts"); o.supplies.parts = supplies(value); }},
    {zk4sim_option::manual, "--manual", "", "sans modèle: les entrées à la main", false,
     [](zk4sim_options& o, const std::string&) { o.manual = true; }},
    {zk4sim_option::names, "--names", "FICHIER", "avec --manual: les entrées, une ligne vide, les sorties, une par ligne", false,
     [](zk4sim_options& o, const std::string& value) { o.names = value; }},
    {zk4sim_option::exercise, "--exercise", "EXERCICE", "un exercice: un fichier, ou le nom d'un exercice fourni", false,
     [](zk4sim_options& o, const std::string& value) { o.exercise = value; }},
    {zk4sim_option::english, "--english", "", "la fenêtre en anglais", false,
     [](zk4sim_options& o, const std::string&) { o.in = language::english; }},
};
// clang-format on
static_assert(one_row_each(rows));

}  // namespace

command_line zk4sim_command_line(zk4sim_options& options) {
    command_line line{"zk4sim", "Simulateur de la station ZK4 de dépôt de colle", "", {}, ""};
    add_options(line, rows, options);
    return line;
}

std::vector<std::string> files_read(const zk4sim_options& options) {
    std::vector<std::string> files;
    if (!options.names.empty()) files.push_back(options.names);
    if (!options.exercise.empty()) files.push_back(exercise_file_called(options.exercise));
    return files;
}

void check_together(const zk4sim_options& options) {
    if (!options.names.empty() && !options.manual) throw misuse("--names demande --manual");
    if (options.manual && !options.for_the_model.empty())
        throw misuse("--manual et " + options.for_the_model + " s'excluent");
}

void check_together(const zk4sim_options& options, const session_options& session) {
    if (options.manual && !session.faults.empty()) throw misuse("--manual et --fault s'excluent");
}
