#include "session/session_options.h"

#include <algorithm>

#include "ioshare/io_printable.h"
#include "session/failure.h"
#include "session/faults.h"
#include "session/keyed_rows.h"
#include "session/step_clock.h"

namespace {

constexpr double longest_s = 1e9;

enum class session_option {
    panel,
    no_panel,
    exec,
    commander_timeout,
    headless,
    paused,
    speed,
    duration,
    fault,
    title,
    count
};

void take_title(session_options& options, const std::string& value) {
    if (std::ranges::any_of(value, io_is_control))
        throw misuse("une seule ligne est attendue, sans caract\xC3\xA8re de contr\xC3\xB4le");
    options.title = value;
}

using row = option_row<session_option, session_options>;

// clang-format off
constexpr row rows[] = {
    {session_option::panel, "--panel", "PROGRAMME", "panneau à lancer (quorin, à côté du programme ou sur le PATH)", false,
     [](session_options& o, const std::string& value) { o.panel = value; }},
    {session_option::no_panel, "--no-panel", "", "ne lance aucun panneau", false,
     [](session_options& o, const std::string&) { o.no_panel = true; }},
    {session_option::exec, "--exec", "COMMANDE", "au lieu du panneau: la fait exécuter par sh, avec QUORIN_IDENT, et finit avec elle", false,
     [](session_options& o, const std::string& value) { o.command = value; }},
    {session_option::commander_timeout, "--commander-timeout", "S", "sans panneau: au bout de S secondes sans client, les commandes valent 0", false,
     [](session_options& o, const std::string& value) { o.commander_timeout_s = number_between(value, 0, longest_s); }},
    {session_option::headless, "--headless", "", "sans fenêtre", false,
     [](session_options& o, const std::string&) { o.headless = true; }},
    {session_option::paused, "--paused", "", "commence en pause", false,
     [](session_options& o, const std::string&) { o.paused = true; }},
    {session_option::speed, "--speed", "X", "secondes simulées par seconde, de 0.1 à 100 (1)", false,
     [](session_options& o, const std::string& value) { o.speed = number_between(value, least_speed, most_speed); }},
    {session_option::duration, "--duration", "S", "termine après S secondes simulées", false,
     [](session_options& o, const std::string& value) { o.duration_s = number_between(value, 0, longest_s); }},
    {session_option::fault, "--fault", "NOM=PANNE", "une panne dès le début, répétable", true,
     [](session_options& o, const std::string& value) { o.faults.push_back(value); }},
    {session_option::title, "--title", "TEXTE", "un nom pour la session", false, take_title},
};
// clang-format on
static_assert(one_row_each(rows));

}  // namespace

void add_session_options(command_line& line, session_options& options) {
    add_options(line, rows, options);
    line.notes += "\nPannes des capteurs: " + fault_kind_words(fault_place::sensor) +
                  "; des actionneurs: " + fault_kind_words(fault_place::actuator) + "\n";
}

void check_together(const session_options& options) {
    if (options.no_panel && !options.panel.empty())
        throw misuse("--panel et --no-panel s'excluent");
    if (!options.command.empty() && !options.panel.empty())
        throw misuse("--panel et --exec s'excluent");
    if (options.commander_timeout_s && !options.no_panel && options.command.empty())
        throw misuse("--commander-timeout demande --no-panel");
}
