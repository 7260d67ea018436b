#include "programs/quorin_io/command_table.h"

#include <limits>

#include "programs/quorin_io/link_commands.h"
#include "programs/quorin_io/record.h"
#include "session/keyed_rows.h"

namespace {

constexpr std::size_t any_number = std::numeric_limits<std::size_t>::max();

template <class... Keys>
constexpr unsigned with(Keys... keys) {
    return (0U | ... | (1U << static_cast<unsigned>(keys)));
}

using enum option_key;
using form = word_form;

// clang-format off
constexpr io_option_row options[] = {
    {last, "--last", "", form::any, false, false,
     "à la place de ident_mem: la plus jeune session de cet utilisateur"},
    {until, "--until", "CONDITION", form::condition, true, true,
     "set: attend ensuite que toutes ces conditions tiennent à la fois"},
    {timeout, "--timeout", "S", form::seconds, false, false,
     "wait, set --until: abandonne après S secondes"},
    {any, "--any", "", form::any, false, false,
     "wait: une seule des conditions suffit"},
    {unless, "--unless", "CONDITION", form::condition, true, false,
     "wait: abandonne quand cette condition tient; répétable"},
    {length, "--for", "S", form::seconds, false, false,
     "pulse: durée en secondes (0.2); expect: les conditions tiennent S secondes sans interruption"},
    {option_key::time, "--time", "", form::any, false, false,
     "watch: les secondes depuis son début devant chaque ligne"},
    {initial, "--initial", "", form::any, false, false,
     "watch: d'abord les valeurs présentes"},
    {option_key::format, "--format", "csv|vcd", form::recording, false, false,
     "record: la forme de l'enregistrement, quand le nom du fichier ne la dit pas"}};
static_assert(one_row_each(options));

using key = command_key;
using enum works_on;

constexpr command_row commands[] = {
    {key::list, "list", "", 0, 0, form::any, with(), values_to_read, list_signals,
     "toutes les entrées et sorties: sens, nom, valeur"},
    {key::get, "get", "NOM...", 1, any_number, form::any, with(), values_to_read, get_values,
     "des valeurs, une par ligne"},
    {key::set, "set", "NOM=VALEUR...", 1, any_number, form::assignment, with(until, timeout), outputs_to_write, set_outputs,
     "écrit des sorties"},
    {key::reset, "reset", "", 0, 0, form::any, with(), outputs_to_write, reset_outputs,
     "met toutes les sorties à 0"},
    {key::wait, "wait", "CONDITION...", 1, any_number, form::condition, with(timeout, any, unless), values_to_read, wait_for_conditions,
     "attend que toutes ces conditions (NOM=VALEUR, NOM!=VALEUR) tiennent à la fois"},
    {key::expect, "expect", "CONDITION...", 1, any_number, form::condition, with(length), values_to_read, expect_conditions,
     "vérifie que toutes ces conditions tiennent"},
    {key::pulse, "pulse", "NOM", 1, 1, form::any, with(length), outputs_to_write, pulse_output,
     "met une sortie à 1, puis à 0"},
    {key::watch, "watch", "[NOM...]", 0, any_number, form::any, with(option_key::time, initial), values_to_read, watch_values,
     "une ligne par changement, jusqu'à la fin de la session"},
    {key::record, "record", "FICHIER", 1, 1, form::any, with(option_key::format), values_to_read, record_link,
     "enregistre la liaison dans un fichier .csv ou .vcd (- : la sortie standard)"},
    {key::status, "status", "", 0, 0, form::any, with(), session, nullptr,
     "l'état de la session, en lignes nom=valeur"},
    {key::desk, "desk", "dc=|ac=|atu=...", 1, any_number, form::any, with(), session, nullptr,
     "le pupitre: dc, ac, atu à 0 ou 1"},
    {key::fault, "fault", "NOM=SORTE|NOM=", 1, 1, form::any, with(), session, nullptr,
     "met une panne, ou la termine"},
    {key::diagnose, "diagnose", "NOM=SORTE...", 1, any_number, form::any, with(), session, nullptr,
     "répond au diagnostic d'un exercice"},
    {key::pause, "pause", "", 0, 0, form::any, with(), session, nullptr,
     "arrête le temps simulé"},
    {key::resume, "resume", "", 0, 0, form::any, with(), session, nullptr,
     "le remet en marche"},
    {key::speed, "speed", "X", 1, 1, form::any, with(), session, nullptr,
     "secondes simulées par seconde"},
    {key::step, "step", "S", 1, 1, form::any, with(), session, nullptr,
     "en pause: avance de S secondes simulées, et attend qu'elles soient passées"},
    {key::end, "end", "", 0, 0, form::any, with(), session, nullptr,
     "termine la session"}};
static_assert(one_row_each(commands));
// clang-format on

}  // namespace

std::span<const io_option_row> option_table() { return options; }

std::span<const command_row> command_table() { return commands; }

bool takes(const command_row& command, option_key option) { return command.options & with(option); }
