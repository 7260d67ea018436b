#include "station_view/exercise_words.h"

#include "session/keyed_rows.h"

namespace {

struct word_row {
    exercise_word key;
    bilingual text;
};

// clang-format off
constexpr word_row rows[] = {
    {exercise_word::exercise,      {"Exercice", "Exercise"}},
    {exercise_word::goals,         {"Buts, dans cet ordre", "Goals, in this order"}},
    {exercise_word::bans,          {"À ne jamais faire", "Never"}},
    {exercise_word::balances,      {"À la fin", "In the end"}},
    {exercise_word::diagnosis,     {"Diagnostic", "Diagnosis"}},
    {exercise_word::told_faults,   {"Pannes annoncées", "Announced faults"}},
    {exercise_word::hidden_faults, {"Pannes cachées", "Hidden faults"}},
    {exercise_word::hold,          {"à tenir ", "to be held for "}},
    {exercise_word::time_left,     {"reste ", "left: "}},
    {exercise_word::too_late,      {"trop tard", "too late"}},
    {exercise_word::not_reached,   {"pas atteint", "not reached"}},
    {exercise_word::happened,      {"à ", "at "}},
    {exercise_word::not_failed,    {"pas arrivé", "did not happen"}},
    {exercise_word::no_answer_yet, {"pas encore de réponse", "no answer yet"}},
    {exercise_word::no_answer,     {"pas de réponse", "no answer"}},
    {exercise_word::points,        {" points", " points"}},
    {exercise_word::passed,        {"Réussi", "Passed"}},
    {exercise_word::failed,        {"Non réussi", "Not passed"}},
    {exercise_word::question,      {"Qu'est-ce qui est en panne, et comment ?", "What is faulty, and in which way?"}},
    {exercise_word::sensor_or_actuator, {"Capteur ou actionneur", "Sensor or actuator"}},
    {exercise_word::kind,          {"Panne", "Fault"}},
    {exercise_word::answer,        {"Ma réponse", "My answer"}},
    {exercise_word::add,           {"Ajouter", "Add"}},
    {exercise_word::remove,        {"Retirer", "Remove"}},
    {exercise_word::send,          {"Répondre", "Answer"}},
    {exercise_word::close,         {"Fermer", "Close"}},
    {exercise_word::add_tip,       {"Ajoute cette panne à la réponse (touche Entrée)", "Adds this fault to the answer (key Return)"}},
    {exercise_word::remove_tip,    {"Retire de la réponse la panne choisie (touche Suppr)", "Removes the chosen fault from the answer (key Delete)"}},
    {exercise_word::send_tip,      {"Donne cette réponse ; elle peut être changée jusqu'à la fin (touches Ctrl+Entrée)", "Gives this answer; it can be changed until the end (keys Ctrl+Return)"}},
    {exercise_word::close_tip,     {"Ferme sans répondre (touche Échap)", "Closes without an answer (key Esc)"}},
};
// clang-format on
static_assert(one_row_each(rows));

}  // namespace

const char* text_of(exercise_word word, language in) { return row_of(rows, word).text.in(in); }
