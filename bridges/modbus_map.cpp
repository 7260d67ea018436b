#include "bridges/modbus_map.h"

#include <iterator>

#include "ioshare/io_printable.h"

namespace {

constexpr std::string_view register_names[] = {"publications_poids_fort",
                                               "publications_poids_faible", "age_dixiemes", "etat"};
static_assert(std::size(register_names) == static_cast<std::size_t>(map_register::count));

std::string csv_field(const std::string& text) {
    if (text.find_first_of(",\"") == std::string::npos) return text;
    std::string quoted = "\"";
    for (const char each : text) quoted.append(each == '"' ? 2 : 1, each);
    return quoted + '"';
}

}  // namespace

std::vector<map_row> modbus_map(const io_observer& link) {
    std::vector<map_row> map;
    int inputs = 0, outputs = 0, registers = 0;
    for (const io_signal& each : link.signals()) {
        const bool input = each.direction == io_direction::input;
        map.push_back(
            {input ? "entree_discrete" : "bobine", input ? inputs++ : outputs++, each.name});
    }
    for (const std::string_view each : register_names)
        map.push_back({"registre_entree", registers++, std::string(each)});
    return map;
}

std::string csv_of(const std::vector<map_row>& map) {
    std::string text = "table,adresse,nom\n";
    for (const map_row& each : map) {
        text += each.table;
        text +=
            ',' + std::to_string(each.address) + ',' + csv_field(io_printable(each.name)) + '\n';
    }
    return text;
}
