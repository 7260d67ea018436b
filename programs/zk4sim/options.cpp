#include "programs/zk4sim/options.h"

#include "session/failure.h"
#include "session/keyed_rows.h"
#include "session/whole_number.h"

namespace {

constexpr int most_supplies = 1'000'000;

enum class zk4sim_option { seed, bases, parts, count };

std::uint64_t seed(const std::string& value) {
    const std::optional<std::uint64_t> number = whole_number<std::uint64_t>(value);
    if (!number) throw misuse("un entier positif est attendu");
    return *number;
}

int supplies(const std::string& value) {
    const std::optional<int> number = whole_number<int>(value);
    if (number && *number >= 0 && *number <= most_supplies) return *number;
    throw misuse("un entier de 0 à " + std::to_string(most_supplies) + " est attendu");
}

using row = option_row<zk4sim_option, zk4sim_options>;

// clang-format off
constexpr row rows[] = {
    {zk4sim_option::seed, "--seed", "N", "choisit la place de la première base (0)", false,
     [](zk4sim_options& o, const std::string& value) { o.seed = seed(value); }},
    {zk4sim_option::bases, "--bases", "N", "bases en réserve, de 0 à 1000000 (1000)", false,
     [](zk4sim_options& o, const std::string& value) { o.supplies.bases = supplies(value); }},
    {zk4sim_option::parts, "--parts", "N", "pièces en réserve, de 0 à 1000000 (1000)", false,
     [](zk4sim_options& o, const std::string& value) { o.supplies.parts = supplies(value); }},
};
// clang-format on
static_assert(one_row_each(rows));

}  // namespace

command_line zk4sim_command_line(zk4sim_options& options) {
    command_line line{"zk4sim", "Simulateur de la station ZK4 de dépôt de colle", "", {}, ""};
    add_options(line, rows, options);
    return line;
}
