#include "workcell/faults.h"

#include <iterator>

#include "workcell/station_names.h"

namespace {

// In the order of the kinds.
constexpr const char* kind_names[] = {"stuck0", "stuck1", "inverted", "dead"};

std::optional<workcell_fault_kind> kind_named(std::string_view name) {
    for (std::size_t i = 0; i < std::size(kind_names); ++i)
        if (name == kind_names[i]) return static_cast<workcell_fault_kind>(i);
    return std::nullopt;
}

// Why a text is no fault; empty when it is one.
std::string objection(std::string_view text) {
    const std::size_t equals = text.find('=');
    if (equals == std::string_view::npos)
        return "une panne s'\xC3\xA9"
               "crit NOM=PANNE";
    const std::string name(text.substr(0, equals)), kind_name(text.substr(equals + 1));
    const bool sensor = input_index(name) >= 0;
    if (!sensor && output_index(name) < 0)
        return "la station n'a ni capteur ni actionneur nomm\xC3\xA9 \"" + name + '"';
    const std::optional<workcell_fault_kind> kind = kind_named(kind_name);
    if (kind && fault_fits(name, *kind)) return "";
    return name + (sensor ? " est un capteur : ses pannes sont stuck0, stuck1, inverted"
                          : " est un actionneur : sa seule panne est dead");
}

}  // namespace

const char* fault_kind_name(workcell_fault_kind kind) {
    return kind_names[static_cast<std::size_t>(kind)];
}

bool fault_fits(std::string_view name, workcell_fault_kind kind) {
    return (kind == workcell_fault_kind::dead ? output_index(name) : input_index(name)) >= 0;
}

std::optional<workcell_fault> parse_fault(std::string_view text, std::string& reason) {
    const std::string why_not = objection(text);
    if (!why_not.empty()) {
        reason = std::string(text) + ": " + why_not;
        return std::nullopt;
    }
    const std::size_t equals = text.find('=');
    return workcell_fault{std::string(text.substr(0, equals)),
                          *kind_named(text.substr(equals + 1))};
}
