// What each part of the station is, in a sentence, and which names belong to it.
#include "session/keyed_rows.h"
#include "station_view/station_parts.h"

namespace {

struct part_row {
    station_part key;
    const char* name;
    bilingual sentence;
};

// A part is named as its enumerator.
// clang-format off
#define PART(name) station_part::name, #name
constexpr part_row parts[] = {
    {PART(running), {"La station est en marche.", "The station is running."}},
    {PART(paused), {"Pause : le temps de la station est arrêté.", "Paused: the station's time stands still."}},
    {PART(replay), {"Rejeu : un enregistrement commande la station.", "Replay: a recording commands the station."}},
    {PART(replay_paused), {"Rejeu en pause : l'enregistrement attend.", "Replay paused: the recording waits."}},
    {PART(link_dead), {"Liaison sans commande : plus personne ne commande la station, ses commandes valent 0.", "Nobody commands the station any more: its commands are 0."}},
    {PART(over), {"Session terminée : le dessin montre le dernier état de la station.", "Session over: the drawing shows the station's last state."}},
    {PART(emergency_stop), {"Arrêt d'urgence (atu) : tout reste où il est, le vide tient la pièce.", "Emergency stop (atu): everything stays where it is, the vacuum holds the part."}},
    {PART(title), {"Le titre de cette session.", "This session's title."}},
    {PART(desk), {"Pupitre : départ de cycle (dc), arrêt de cycle (ac), arrêt d'urgence (atu) ; init dit que la station est au repos.", "Desk: start cycle (dc), stop cycle (ac), emergency stop (atu); init tells that the station is at rest."}},
    {PART(loader), {"Réserve de supports : toutes les 5 s au plus, elle en pose un sur le tapis d'attente (MTA) s'il y a de la place.", "Stock of bases: every 5 s at most it lays one on the waiting belt (MTA) if there is room."}},
    {PART(waiting_belt), {"Tapis d'attente, 400 mm : MTA le fait marcher.", "Waiting belt, 400 mm: MTA runs it."}},
    {PART(main_belt), {"Tapis principal, 1200 mm : MT le fait marcher.", "Main belt, 1200 mm: MT runs it."}},
    {PART(base), {"Support : MTA puis MT le font avancer.", "Base: MTA, then MT carry it along."}},
    {PART(glue_dispenser), {"Distributeur de colle : DEPOSE dépose la colle, colle dit que le support en zone 1 est collé.", "Glue dispenser: DEPOSE lays the glue, colle tells that the base at zone 1 is glued."}},
    {PART(magazine), {"Magasin de pièces : il en laisse tomber une dans le tiroir rentré (te) et vide (pp à 0).", "Magazine of parts: it drops one into the drawer that is in (te) and empty (pp at 0)."}},
    {PART(drawer), {"Tiroir : RENT le rentre (te), SORT le sort sous la ventouse (ts), pp dit qu'il porte une pièce.", "Drawer: RENT moves it in (te), SORT moves it out below the cup (ts), pp tells that it carries a part."}},
    {PART(suction_cup), {"Ventouse : DESV la descend (vb), MONV la monte (vh), ASPI aspire, vide dit qu'elle tient une pièce.", "Suction cup: DESV lowers it (vb), MONV raises it (vh), ASPI sucks, vide tells that it holds a part."}},
    {PART(press), {"Presse : DESP la descend (pb), MONP la monte (ph) ; basse dix secondes sur un support, elle le presse (timer10_term).", "Press: DESP lowers it (pb), MONP raises it (ph); low on a base for ten seconds, it presses it (timer10_term)."}},
    {PART(press_timer), {"Les dix secondes de la presse sur un support, jusqu'à timer10_term.", "The press's ten seconds on a base, until timer10_term."}},
    {PART(blocker_1), {"Bloqueur de la zone 1 : BZ1 le sort (b1s), son ressort le rentre (b1e) ; p1ok dit qu'un support est à la butée.", "Blocker of zone 1: BZ1 extends it (b1s), its spring retracts it (b1e); p1ok tells that a base is at the stop."}},
    {PART(blocker_2), {"Bloqueur de la zone 2 : BZ2 le sort (b2s), son ressort le rentre (b2e) ; p2ok dit qu'un support est à la butée.", "Blocker of zone 2: BZ2 extends it (b2s), its spring retracts it (b2e); p2ok tells that a base is at the stop."}},
    {PART(blocker_3), {"Bloqueur de la zone 3 : BZ3 le sort (b3s), son ressort le rentre (b3e) ; p3ok dit qu'un support est à la butée.", "Blocker of zone 3: BZ3 extends it (b3s), its spring retracts it (b3e); p3ok tells that a base is at the stop."}},
    {PART(counts), {"Supports sortis, bons et mauvais, incidents et pièces perdues depuis le début.", "Bases that left, good and bad, incidents and lost parts since the start."}},
    {PART(ruler), {"Places le long des tapis, en millimètres ; les butées sont à 300, 600 et 900.", "Places along the belts, in millimetres; the stops are at 300, 600 and 900."}},
    {PART(legend), {"Un capteur : disque rouge à 1, carré bleu à 0, croix pour toute autre valeur ; une commande : flèche foncée à 1, sinon claire, avec la valeur si elle n'est ni 0 ni 1.", "A sensor: red disc at 1, blue square at 0, cross for any other value; a command: dark arrow at 1, else a light one, with the value if it is neither 0 nor 1."}},
};
#undef PART
// clang-format on
static_assert(one_row_each(parts));

}  // namespace

void begin_part(picture_builder& into, const station_scene& scene, station_part part) {
    const part_row& row = row_of(parts, part);
    into.begin(row.name, told(row.sentence, scene));
}
