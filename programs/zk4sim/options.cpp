#include "programs/zk4sim/options.h"

#include "ioshare/io_printable.h"
#include "session/failure.h"
#include "session/keyed_rows.h"
#include "session/whole_number.h"

namespace {

constexpr int most_supplies = 1'000'000;

enum class zk4sim_option { seed, bases, parts, count };

template <class Number>
Number whole_between(const char* option, const std::string& value, Number most) {
    const std::optional<Number> number = whole_number<Number>(value);
    if (number && *number <= most) return *number;
    throw misuse(std::string(option) + " " + io_printable(value) + ": un entier de 0 à " +
                 std::to_string(most) + " est attendu");
}

int supplies(const char* option, const std::string& value) {
    return static_cast<int>(whole_between<std::uint32_t>(option, value, most_supplies));
}

using row = option_row<zk4sim_option, zk4sim_options>;

// clang-format off
constexpr row rows[] = {
    {zk4sim_option::seed, "--seed", "N", "choisit la place de la première base (0)", false,
     [](zk4sim_options& o, const std::string& value) { o.seed = whole_between<std::uint64_t>("--seed", value, UINT64_MAX); }},
    {zk4sim_option::bases, "--bases", "N", "bases en réserve, de 0 à 1000000 (1000)", false,
     [](zk4sim_options& o, const std::string& value) { o.supplies.bases = supplies("--bases", value); }},
    {zk4sim_option::parts, "--parts", "N", "pièces en réserve, de 0 à 1000000 (1000)", false,
     [](zk4sim_options& o, const std::string& value) { o.supplies.parts = supplies("--parts", value); }},
};
// clang-format on
static_assert(one_row_each(rows));

}  // namespace

command_line zk4sim_command_line(zk4sim_options& options) {
    command_line line{"zk4sim", "Simulateur de la station ZK4 de dépôt de colle", "", {}, ""};
    add_options(line, rows, options);
    return line;
}
