#include "workcell/workcell_facts.h"

#include <algorithm>

#include "session/failure.h"
#include "session/whole_number.h"

namespace {

template <class Number>
Number fact(std::span<const station_fact> facts, const std::string& name) {
    const auto found = std::ranges::find(facts, name, &station_fact::name);
    if (found == facts.end()) throw refusal("l'enregistrement ne dit pas \"" + name + '"');
    const auto number = whole_number<Number>(found->value);
    if (!number) throw refusal(name + ": \"" + found->value + "\" n'est pas un nombre");
    return *number;
}

int supply(std::span<const station_fact> facts, const std::string& name) {
    const int number = fact<int>(facts, name);
    if (number >= 0 && number <= most_workcell_supplies) return number;
    throw refusal(name + ": un entier de 0 à " + std::to_string(most_workcell_supplies) +
                  " est attendu");
}

}  // namespace

std::unique_ptr<workcell_model> workcell_of(std::span<const station_fact> facts) {
    const workcell_supplies supplies{supply(facts, "bases"), supply(facts, "pieces")};
    return std::make_unique<workcell_model>(fact<std::uint64_t>(facts, "graine"), supplies);
}
