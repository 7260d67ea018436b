#include "station_view/window_actions.h"

#include <FL/Enumerations.H>

#include "session/keyed_rows.h"

namespace {

// clang-format off
constexpr action_row rows[] = {
    {window_action::start_cycle, 'd', 0, false, false, {"D", "D"}, {"Départ", "Start"},
     {"dc : départ cycle, tant qu'il est tenu", "dc: start cycle, while held"}},
    {window_action::stop_cycle, 'a', 0, false, false, {"A", "A"}, {"Arrêt", "Stop"},
     {"ac : arrêt cycle, tant qu'il est tenu", "ac: stop cycle, while held"}},
    {window_action::emergency, FL_Escape, 0, false, true, {"Échap", "Esc"}, {"ARRÊT\nD'URGENCE", "EMERGENCY\nSTOP"},
     {"atu : arrêt d'urgence, à accrochage", "atu: emergency stop, stays down"}},
    {window_action::unlock, FL_Escape, 0, true, true, {"Maj+Échap", "Shift+Esc"}, {"Déverrouiller", "Unlock"},
     {"Déverrouille l'arrêt d'urgence", "Lets the emergency stop up"}},
    {window_action::pause, 'p', FL_Pause, false, false, {"P", "P"}, {"Pause", "Pause"},
     {"Pause, ou reprise", "Pauses, or goes on"}},
    {window_action::step, 's', 0, false, true, {"S", "S"}, {"Un pas", "One step"},
     {"Pause, et un pas de 10 ms", "Pauses, and steps by 10 ms"}},
    {window_action::next_change, 'c', 0, false, true, {"C", "C"}, {"Changement", "Change"},
     {"Pause, et avance jusqu'au prochain changement", "Pauses, and goes on to the next change"}},
    {window_action::slower, '-', FL_KP + '-', false, true, {"-", "-"}, {"-", "-"},
     {"Moins vite", "Slower"}},
    {window_action::faster, '+', FL_KP + '+', false, true, {"+", "+"}, {"+", "+"},
     {"Plus vite", "Faster"}},
    {window_action::faults, 'f', 0, false, false, {"F", "F"}, {"Pannes", "Faults"},
     {"Va à la liste des pannes ; Tab et les flèches y circulent, Espace coche. Dans une petite fenêtre, la même touche ramène le pupitre", "Goes to the list of faults; Tab and arrows move, Space ticks. In a small window the same key brings the desk back"}},
    {window_action::journal, 'j', 0, false, false, {"J", "J"}, {"Journal...", "Journal..."},
     {"Ouvre le journal : les derniers changements et incidents, en PDF et en texte", "Opens the journal: the last changes and incidents, as PDF and text"}},
    {window_action::drawing_alone, 'g', FL_F + 11, false, false, {"G", "G"}, {"Dessin seul", "Drawing"},
     {"Le dessin occupe toute la fenêtre ; la même touche rend le reste", "The drawing takes the whole window; the same key brings the rest back"}},
    {window_action::diagnosis, 'r', 0, false, false, {"R", "R"}, {"Diagnostic...", "Diagnosis..."},
     {"Répond à la question de l'exercice : qu'est-ce qui est en panne ?", "Answers what the exercise asks: what is faulty?"}},
    {window_action::verdict, 'v', 0, false, false, {"V", "V"}, {"Verdict...", "Verdict..."},
     {"Ouvre le verdict de l'exercice terminé, en PDF et en texte", "Opens the verdict of the exercise that is over, as PDF and text"}},
};
// clang-format on
static_assert(one_row_each(rows));

constexpr bilingual key_word = {"touche", "key"};

}  // namespace

const action_row& row_of_action(window_action action) { return row_of(rows, action); }

std::string tooltip_of(window_action action, language in) {
    const action_row& row = row_of_action(action);
    return std::string(row.meaning.in(in)) + " (" + key_word.in(in) + " " + row.key_name.in(in) +
           ")";
}

std::optional<window_action> action_of_key(int symbol, bool shift) {
    for (const action_row& row : rows) {
        // A sign may need the shift key on some keyboards.
        const bool is_sign = row.symbol == '+' || row.symbol == '-';
        if ((symbol == row.symbol || (row.other_symbol && symbol == row.other_symbol)) &&
            (is_sign || shift == row.shift)) {
            return row.key;
        }
    }
    return std::nullopt;
}
