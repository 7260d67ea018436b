#include "programs/quorin_modbus/options.h"

#include <algorithm>

#include "bridges/listening_socket.h"
#include "ioshare/io_printable.h"
#include "session/command_line.h"
#include "session/failure.h"
#include "session/keyed_rows.h"
#include "session/whole_number.h"

namespace {

constexpr int most_clients = 256, most_port = 65535;
constexpr double least_silence_s = 0.2, most_silence_s = 60;

enum class modbus_option { map, listen, port, control, safe_after, clients, count };

int number_from_one(const std::string& value, int most) {
    const std::optional<int> number = whole_number<int>(value);
    if (number && *number >= 1 && *number <= most) return *number;
    throw misuse("un entier de 1 à " + std::to_string(most) + " est attendu");
}

std::string address(const std::string& value) {
    if (value == "localhost") return "127.0.0.1";
    if (!is_ip_address(value)) throw misuse("une adresse IP en chiffres est attendue");
    return value;
}

using row = option_row<modbus_option, modbus_options>;

// clang-format off
constexpr row rows[] = {
    {modbus_option::map, "--map", "", "affiche les adresses et leurs noms, en CSV, et rien d'autre", false,
     [](modbus_options& o, const std::string&) { o.map = true; }},
    {modbus_option::listen, "--listen", "ADRESSE", "où écouter (127.0.0.1)", false,
     [](modbus_options& o, const std::string& value) { o.listen = address(value); }},
    {modbus_option::port, "--port", "N", "sur quel port, de 1 à 65535 (1502)", false,
     [](modbus_options& o, const std::string& value) { o.port = number_from_one(value, most_port); }},
    {modbus_option::control, "--control", "", "les clients peuvent écrire les bobines", false,
     [](modbus_options& o, const std::string&) { o.service.control = true; }},
    {modbus_option::safe_after, "--safe-after", "S", "avec --control: les bobines valent 0 après S secondes de silence, de 0.2 à 60 (2)", false,
     [](modbus_options& o, const std::string& value) { o.service.safe_after_s = number_between(value, least_silence_s, most_silence_s); }},
    {modbus_option::clients, "--clients", "N", "clients à la fois, de 1 à 256 (8)", false,
     [](modbus_options& o, const std::string& value) { o.service.clients = number_from_one(value, most_clients); }},
};
// clang-format on
static_assert(one_row_each(rows));

int ident(const std::vector<std::string>& operands) {
    if (operands.empty()) throw misuse("il manque l'identifiant du segment");
    if (operands.size() > 1) throw not_understood(io_printable(operands[1]));
    const std::optional<int> number = whole_number<int>(operands.front());
    if (!number)
        throw misuse(io_printable(operands.front()) +
                     ": l'identifiant d'un segment est un nombre entier");
    return *number;
}

void check_together(const modbus_options& options, const std::vector<std::string>& given) {
    const auto has = [&](const char* name) {
        return std::ranges::find(given, name) != given.end();
    };
    if (options.map && given.size() > 1)
        throw misuse("--map et " + (given.front() == "--map" ? given.back() : given.front()) +
                     " s'excluent");
    if (has("--safe-after") && !options.service.control)
        throw misuse("--safe-after demande --control");
}

}  // namespace

modbus_options read_options(const std::vector<std::string>& words) {
    modbus_options options;
    command_line line{"quorin-modbus",
                      "Sert les entrées et sorties d'un simulateur en Modbus TCP",
                      "<ident_mem>",
                      {},
                      ""};
    add_options(line, rows, options);
    const command_words read = read_command_line(line, words);
    if (read.answer) {
        options.answer = read.answer;
        return options;
    }
    check_together(options, read.given);
    options.ident = ident(read.operands);
    return options;
}
