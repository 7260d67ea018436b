#include "programs/quorin_lesson/command_table.h"

#include <limits>

#include "programs/quorin_lesson/exercise_commands.h"
#include "programs/quorin_lesson/mark.h"
#include "session/keyed_rows.h"

namespace {

constexpr std::size_t any_number = std::numeric_limits<std::size_t>::max();

template <class... Keys>
constexpr unsigned with(Keys... keys) {
    return (0U | ... | (1U << static_cast<unsigned>(keys)));
}

using enum option_key;

// clang-format off
constexpr lesson_option_row options[] = {
    {english, "--english", "", "list, show: en anglais"},
    {output, "-o", "FICHIER", "hide: le fichier à écrire (- : la sortie standard)"},
    {pdf, "--pdf", "FICHIER", "mark: un rapport pour la classe"},
    {csv, "--csv", "FICHIER", "mark: les résultats en table"},
    {verbose, "--verbose", "", "mark: le verdict sous chaque résultat"}};
static_assert(one_row_each(options));

using key = command_key;

constexpr command_row commands[] = {
    {key::list, "list", "", 0, 0, with(english), with(), list_exercises,
     "les exercices fournis: nom, titre, points"},
    {key::show, "show", "EXERCICE", 1, 1, with(english), with(), show_exercise,
     "l'énoncé, sans rien de ce qui est caché"},
    {key::check, "check", "FICHIER", 1, 1, with(), with(), check_exercise,
     "tout ce qui ne va pas dans un fichier"},
    {key::hide, "hide", "FICHIER", 1, 1, with(output), with(output), hide_exercise,
     "le même exercice, pannes cachées et diagnostic illisibles au premier regard"},
    {key::mark, "mark", "EXERCICE ENREGISTREMENT...", 2, any_number, with(pdf, csv, verbose), with(), mark_recordings,
     "rejoue et note des enregistrements"}};
static_assert(one_row_each(commands));
// clang-format on

}  // namespace

std::span<const lesson_option_row> option_table() { return options; }

std::span<const command_row> command_table() { return commands; }

bool takes(const command_row& command, option_key option) { return command.options & with(option); }

bool needs(const command_row& command, option_key option) { return command.needed & with(option); }
