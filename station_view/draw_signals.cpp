// Every sensor and every command at its place: a lamp or an arrow, and its name.
//
// One row each: a name of the station without a place on the drawing does not compile.
#include <string>

#include "session/keyed_rows.h"
#include "station_view/signal_meanings.h"
#include "station_view/station_parts.h"
#include "workcell/station_figures.h"

namespace {

using enum shape_kind;

/// Along the belts in millimetres, and units to the right of it; the row.
struct place {
    double mm, units, row;
};

struct sensor_row {
    station_input key;
    place at;
    bilingual tells;
};

struct command_row {
    station_output key;
    place at;
    shape_kind arrow;
    bilingual does;
    // Whether a value that is neither 0 nor 1 stands below the name, not after it.
    bool value_below = false;
};

// Where a blocker's names begin, where the drawer ends when it is in, and so on.
constexpr double blocker_1 = station::stop_mm[0] + 17, blocker_2 = station::stop_mm[1] + 17,
                 blocker_3 = station::stop_mm[2] + 17;
constexpr double drawer_in = 398, cup = 594, press = station::press_head_end_mm;
constexpr double desk = -station::waiting_belt_mm;

// clang-format off
constexpr sensor_row sensors[] = {
    {station_input::b1e,   {blocker_1, 1.1, 24.1}, {"1 quand le bloqueur 1 est rentré (BZ1 à 0).", "1 when blocker 1 is retracted (BZ1 at 0)."}},
    {station_input::b1s,   {blocker_1, 1.1, 22.6}, {"1 quand le bloqueur 1 est sorti (BZ1 à 1).", "1 when blocker 1 is extended (BZ1 at 1)."}},
    {station_input::b2e,   {blocker_2, 1.1, 24.1}, {"1 quand le bloqueur 2 est rentré (BZ2 à 0).", "1 when blocker 2 is retracted (BZ2 at 0)."}},
    {station_input::b2s,   {blocker_2, 1.1, 22.6}, {"1 quand le bloqueur 2 est sorti (BZ2 à 1).", "1 when blocker 2 is extended (BZ2 at 1)."}},
    {station_input::b3e,   {blocker_3, 1.1, 24.1}, {"1 quand le bloqueur 3 est rentré (BZ3 à 0).", "1 when blocker 3 is retracted (BZ3 at 0)."}},
    {station_input::b3s,   {blocker_3, 1.1, 22.6}, {"1 quand le bloqueur 3 est sorti (BZ3 à 1).", "1 when blocker 3 is extended (BZ3 at 1)."}},
    {station_input::te,    {drawer_in, -3, 17.2}, {"1 quand le tiroir est rentré (RENT).", "1 when the drawer is in (RENT)."}},
    {station_input::ts,    {cup, 1.2, 17.2}, {"1 quand le tiroir est sorti sous la ventouse (SORT).", "1 when the drawer is out, below the cup (SORT)."}},
    {station_input::vh,    {cup, 1.2, 10.4}, {"1 quand la ventouse est haute (MONV).", "1 when the cup is high (MONV)."}},
    {station_input::vb,    {cup, 1.2, 15.6}, {"1 quand la ventouse est basse (DESV).", "1 when the cup is low (DESV)."}},
    {station_input::ph,    {press, 1.8, 10.2}, {"1 quand la presse est haute (MONP).", "1 when the press is high (MONP)."}},
    {station_input::pb,    {press, 1.8, 17.2}, {"1 quand la presse est basse (DESP).", "1 when the press is low (DESP)."}},
    {station_input::pp,    {drawer_in, -3, 15.6}, {"1 quand une pièce est dans le tiroir.", "1 when a part is in the drawer."}},
    {station_input::p1ok,  {station::stop_mm[0] - 3, -4.2, 22.6}, {"1 quand un support est à la butée de la zone 1.", "1 when a base is at the stop of zone 1."}},
    {station_input::p2ok,  {station::stop_mm[1] - 3, -4.2, 22.6}, {"1 quand un support est à la butée de la zone 2.", "1 when a base is at the stop of zone 2."}},
    {station_input::p3ok,  {station::stop_mm[2] - 3, -4.2, 22.6}, {"1 quand un support est à la butée de la zone 3.", "1 when a base is at the stop of zone 3."}},
    {station_input::init,  {desk, 16.4, 9.1}, {"1 quand la station est au repos : tiroir rentré, ventouse et presse hautes, bloqueurs rentrés, rien en marche.", "1 when the station is at rest: drawer in, cup and press high, blockers retracted, nothing running."}},
    {station_input::vide,  {cup, 1.2, 13}, {"1 quand la ventouse tient une pièce par le vide (ASPI).", "1 when the cup holds a part by vacuum (ASPI)."}},
    {station_input::colle, {station::stop_mm[0] - 80, -4.2, 16.6}, {"1 quand le support en zone 1 est collé (DEPOSE).", "1 when the base at zone 1 is glued (DEPOSE)."}},
    {station_input::dc,    {desk, 1.4, 9.1}, {"bouton de départ de cycle, 1 tant qu'il est enfoncé.", "start cycle button, 1 while it is held."}},
    {station_input::ac,    {desk, 6.4, 9.1}, {"bouton d'arrêt de cycle, 1 tant qu'il est enfoncé.", "stop cycle button, 1 while it is held."}},
    {station_input::atu,   {desk, 11.4, 9.1}, {"arrêt d'urgence, 1 tant qu'il est verrouillé : tout reste où il est.", "emergency stop, 1 while it is latched: everything stays where it is."}},
    {station_input::timer10_term, {press, 1.8, 14.2}, {"1 quand la presse a tenu un support dix secondes, jusqu'à ce qu'elle remonte (DESP, MONP).", "1 when the press has held a base for ten seconds, until it goes up (DESP, MONP)."}},
};

constexpr command_row commands[] = {
    {station_output::DEPOSE, {236, -7.6, 8}, head_down, {"1 dépose de la colle en zone 1.", "1 lays glue at zone 1."}, true},
    {station_output::MTA,    {desk, 8.2, 23.2}, head_right, {"1 fait marcher le tapis d'attente.", "1 runs the waiting belt."}},
    {station_output::MT,     {0, 1.2, 23.2}, head_right, {"1 fait marcher le tapis principal.", "1 runs the main belt."}},
    {station_output::ASPI,   {cup, 0.6, 8.2}, head_up, {"1 aspire ; 0 lâche la pièce.", "1 sucks; 0 lets the part go."}},
    {station_output::RENT,   {drawer_in, -4.4, 5.1}, head_left, {"1 rentre le tiroir sous le magasin.", "1 moves the drawer in, below the magazine."}},
    {station_output::SORT,   {drawer_in, -4.4, 6.7}, head_right, {"1 sort le tiroir sous la ventouse.", "1 moves the drawer out, below the cup."}},
    {station_output::DESV,   {cup, 0.6, 6.7}, head_down, {"1 descend la ventouse.", "1 lowers the cup."}},
    {station_output::MONV,   {cup, 0.6, 5.2}, head_up, {"1 monte la ventouse.", "1 raises the cup."}},
    {station_output::DESP,   {882, 0.7, 6.7}, head_down, {"1 descend la presse.", "1 lowers the press."}},
    {station_output::MONP,   {882, 0.7, 5.2}, head_up, {"1 monte la presse.", "1 raises the press."}},
    {station_output::BZ1,    {blocker_1, 0.55, 25.7}, head_up, {"1 sort le bloqueur 1, 0 le laisse rentrer.", "1 extends blocker 1, 0 lets it retract."}},
    {station_output::BZ2,    {blocker_2, 0.55, 25.7}, head_up, {"1 sort le bloqueur 2, 0 le laisse rentrer.", "1 extends blocker 2, 0 lets it retract."}},
    {station_output::BZ3,    {blocker_3, 0.55, 25.7}, head_up, {"1 sort le bloqueur 3, 0 le laisse rentrer.", "1 extends blocker 3, 0 lets it retract."}},
};
// clang-format on
static_assert(one_row_each(sensors));
static_assert(one_row_each(commands));

std::string value_sentence(std::int32_t value, bool english) {
    if (value == 0 || value == 1) return "";
    return (english ? " Value received: " : " Valeur reçue : ") + std::to_string(value) + ".";
}

// "te: 1 when ...", with the blank that French puts before a colon.
std::string sentence(const std::string& name, const bilingual& words, std::int32_t value,
                     const station_scene& scene) {
    return name + told(colon, scene) + told(words, scene) + value_sentence(value, scene.english);
}

void draw_arrow(picture_builder& into, shape_kind kind, ink colour, int left, int middle_y) {
    const int length = into.px(1.1), half = length * 2 / 5;
    if (kind == head_left || kind == head_right)
        return into.bar(kind, colour, left, middle_y - half, left + length, middle_y + half + 1);
    const int middle = left + length / 2;
    into.bar(kind, colour, middle - half, middle_y - length / 2, middle + half + 1,
             middle_y + length / 2);
}

void draw_command(picture_builder& into, const station_scene& scene, const command_row& command) {
    const auto index = static_cast<std::size_t>(command.key);
    const std::int32_t value = scene.commands[index];
    const std::string name(station_outputs[index]);
    const auto [mm, units, row] = command.at;
    const int left = into.x(mm, units), y = into.y(row), text_x = left + into.px(1.4);
    into.begin(name, sentence(name, command.does, value, scene));
    draw_arrow(into, command.arrow, value == 1 ? ink::lit : ink::unlit, left, y);
    into.text(name, text_x, y, text_side::left, value == 1 ? ink::lit : ink::black, 1, value == 1);
    if (value == 0 || value == 1) return;
    const int after = text_x + text_width_px(name, into.text_px(1)) + into.px(0.3);
    into.text(std::to_string(value), command.value_below ? text_x : after,
              command.value_below ? y + into.px(1.3) : y, text_side::left, ink::odd, 0.8);
}

}  // namespace

void draw_lamp(picture_builder& into, int centre_x, int centre_y, std::int32_t value) {
    const int side = into.px(1.1), half = into.px(value == 0 ? 0.4 : 0.5), glint = into.px(0.28);
    if (value == 1) {
        into.disc(bound_disc, ink::lamp_one, centre_x, centre_y, side);
        return into.disc(disc, ink::white, centre_x - side / 5, centre_y - side / 5, glint);
    }
    const int left = centre_x - half, top = centre_y - half;
    const int right = centre_x + half, bottom = centre_y + half;
    into.bar(bound, value == 0 ? ink::lamp_zero : ink::white, left, top, right, bottom);
    if (value == 0) return;
    into.line(ink::black, left, top, right - 1, bottom - 1);
    into.line(ink::black, left, bottom - 1, right - 1, top);
}

void draw_sensors(picture_builder& into, const station_scene& scene) {
    for (const sensor_row& sensor : sensors) {
        const auto index = static_cast<std::size_t>(sensor.key);
        const std::int32_t value = scene.sensors[index];
        const std::string name(station_inputs[index]);
        const int x = into.x(sensor.at.mm, sensor.at.units), y = into.y(sensor.at.row);
        into.begin(name, sentence(name, sensor.tells, value, scene));
        draw_lamp(into, x, y, value);
        into.text(name, x + into.px(0.85), y);
    }
}

void draw_commands(picture_builder& into, const station_scene& scene) {
    for (const command_row& command : commands) draw_command(into, scene, command);
}

std::string signal_meaning(std::string_view name, language in) {
    for (const sensor_row& each : sensors)
        if (station_inputs[static_cast<std::size_t>(each.key)] == name) return each.tells.in(in);
    for (const command_row& each : commands)
        if (station_outputs[static_cast<std::size_t>(each.key)] == name) return each.does.in(in);
    return "";
}
