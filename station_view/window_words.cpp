#include "station_view/window_words.h"

#include "session/keyed_rows.h"

namespace {

struct word_row {
    window_word key;
    bilingual text;
};

// clang-format off
constexpr word_row rows[] = {
    {window_word::desk,            {"Pupitre", "Desk"}},
    {window_word::time,            {"Temps", "Time"}},
    {window_word::production,      {"Production", "Production"}},
    {window_word::faults,          {"Pannes", "Faults"}},
    {window_word::whole_window,    {"Tout voir", "Show all"}},
    {window_word::desk_tip,        {"Ramène le pupitre (touche F)", "Brings the desk back (key F)"}},
    {window_word::sensors,         {"Capteurs", "Sensors"}},
    {window_word::actuators,       {"Actionneurs", "Actuators"}},
    {window_word::good,            {"bonnes", "good"}},
    {window_word::bad,             {"mauvaises", "bad"}},
    {window_word::incidents,       {"incidents", "incidents"}},
    {window_word::no_incident,     {"Aucun incident.", "No incident."}},
    {window_word::nothing_changed, {"rien n'a changé en 60 s", "nothing changed in 60 s"}},
    {window_word::running,         {"En marche", "Running"}},
    {window_word::paused,          {"En pause", "Paused"}},
    {window_word::emergency,       {"Arrêt d'urgence", "Emergency stop"}},
    {window_word::dead_link,       {"Liaison sans commande", "Nobody commands"}},
    {window_word::replay,          {"Rejeu", "Replay"}},
    {window_word::inputs,          {"Entrées", "Inputs"}},
    {window_word::outputs,         {"Sorties", "Outputs"}},
    {window_word::speed_tip,       {"Vitesse : secondes simulées par seconde, de 0.1 à 100 (touches + et -)",
                                    "Speed: simulated seconds per second, 0.1 to 100 (keys + and -)"}},
    {window_word::moment_tip,      {"Moment du rejeu : le curseur le mène n'importe où (Tab, puis les flèches)",
                                    "Moment of the replay: the slider takes it anywhere (Tab, then the arrows)"}},
    {window_word::signal_tip,      {"Les entrées à envoyer : les flèches y circulent, Espace coche", "The inputs to send: arrows move, Space ticks"}},
    {window_word::sticky_tip,      {"Les entrées qui restent cochées après GO", "The inputs that stay ticked after GO"}},
    {window_word::init_tip,        {"Met toutes les entrées à 0", "Sets every input to 0"}},
    {window_word::go_tip,          {"Envoie les entrées cochées dans Signal", "Sends the inputs that are ticked in Signal"}},
    {window_word::quit_tip,        {"Termine la session", "Ends the session"}},
    {window_word::page_back_tip,   {"Les sorties précédentes", "The outputs before these"}},
    {window_word::page_on_tip,     {"Les sorties suivantes", "The outputs after these"}},
    {window_word::exercise_over,   {"Exercice terminé", "Exercise over"}},
    {window_word::journal_title,   {"Journal de la session", "Journal of the session"}},
    {window_word::verdict_title,   {"Verdict de l'exercice", "Verdict of the exercise"}},
    {window_word::journal_time,    {"temps en s", "time in s"}},
    {window_word::journal_kind,    {"genre", "kind"}},
    {window_word::journal_name,    {"nom", "name"}},
    {window_word::journal_value,   {"valeur", "value"}},
    {window_word::journal_limit,   {"lignes plus anciennes oubliées : ", "older rows forgotten: "}},
    {window_word::station,         {"Station ZK4", "ZK4 station"}},
    {window_word::by_hand,         {"Entrées à la main", "Inputs by hand"}},
};
// clang-format on
static_assert(one_row_each(rows));

}  // namespace

const char* text_of(window_word word, language in) { return row_of(rows, word).text.in(in); }
