// The station's names, and what each sensor tells.
#include "workcell/station_names.h"

#include <iterator>
#include <utility>

#include "session/keyed_rows.h"
#include "workcell/workcell_model.h"

namespace {

template <class Row, std::size_t count>
constexpr std::array<std::string_view, count> names_of(const Row (&rows)[count]) {
    std::array<std::string_view, count> names;
    for (std::size_t i = 0; i < count; ++i) names[i] = rows[i].name;
    return names;
}

struct output_row {
    station_output key;
    std::string_view name;
};

// A name is spelt as its enumerator.
// clang-format off
#define COMMAND(name) {station_output::name, #name}
constexpr output_row output_rows[] = {
    COMMAND(DEPOSE), COMMAND(MTA),  COMMAND(MT),   COMMAND(ASPI), COMMAND(RENT),
    COMMAND(SORT),   COMMAND(DESV), COMMAND(MONV), COMMAND(DESP), COMMAND(MONP),
    COMMAND(BZ1),    COMMAND(BZ2),  COMMAND(BZ3),
};
#undef COMMAND
// clang-format on
static_assert(one_row_each(output_rows));

}  // namespace

struct sensor_table {
    // clang-format off
    struct row {
        station_input key;
        std::string_view name;
        bool (*reads)(const workcell_model&);
    };

    #define SENSOR(name, reading) {station_input::name, #name, [](const workcell_model& m) { return reading; }}
    static constexpr row rows[] = {
        SENSOR(b1e,          m.belts_.blockers()[0].at_rest()),
        SENSOR(b1s,          m.belts_.blockers()[0].at_far_end()),
        SENSOR(b2e,          m.belts_.blockers()[1].at_rest()),
        SENSOR(b2s,          m.belts_.blockers()[1].at_far_end()),
        SENSOR(b3e,          m.belts_.blockers()[2].at_rest()),
        SENSOR(b3s,          m.belts_.blockers()[2].at_far_end()),
        SENSOR(te,           m.handling_.drawer().at_rest()),
        SENSOR(ts,           m.handling_.drawer().at_far_end()),
        SENSOR(vh,           m.handling_.cup().at_rest()),
        SENSOR(vb,           m.handling_.cup().at_far_end()),
        SENSOR(ph,           m.press_.rod().at_rest()),
        SENSOR(pb,           m.press_.rod().at_far_end()),
        SENSOR(pp,           m.handling_.part_in_drawer()),
        SENSOR(p1ok,         m.belts_.at_zone(0) != nullptr),
        SENSOR(p2ok,         m.belts_.at_zone(1) != nullptr),
        SENSOR(p3ok,         m.belts_.at_zone(2) != nullptr),
        SENSOR(init,         m.at_rest()),
        SENSOR(vide,         m.handling_.vacuum()),
        SENSOR(colle,        m.belts_.at_zone(0) != nullptr && m.belts_.at_zone(0)->glued()),
        SENSOR(dc,           m.desk_.dc),
        SENSOR(ac,           m.desk_.ac),
        SENSOR(atu,          m.desk_.atu),
        SENSOR(timer10_term, m.press_.timer_done()),
    };
    #undef SENSOR
    // clang-format on
};
static_assert(one_row_each(sensor_table::rows));

constinit const std::array<std::string_view, std::size(sensor_table::rows)> station_inputs =
    names_of(sensor_table::rows);

constinit const std::array<std::string_view, std::size(output_rows)> station_outputs =
    names_of(output_rows);

int workcell_model::sensor(int input) const {
    if (input < 0 || std::cmp_greater_equal(input, std::size(sensor_table::rows))) return 0;
    return sensor_table::rows[input].reads(*this);
}
