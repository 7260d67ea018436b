// Hands that make one good base after another, as docs/workcell.md has them in its table.
#pragma once
#include <array>
#include <cstdint>
#include <span>
#include <string_view>

#include "workcell/station_names.h"

/// What the hands do, as data.
namespace good_base {

using in = station_input;
using out = station_output;

struct order {
    out output = out::count;
    std::int32_t value = 0;
};

/// Orders, then a sensor that must have a value for more than so many steps.
struct row {
    std::array<order, 3> orders;
    in until;
    int value;
    int steps;
};

// clang-format off
inline constexpr row rows[] = {
    {{}, in::pp, 1, 0},
    {{{{out::BZ1, 1}, {out::BZ2, 1}, {out::BZ3, 1}}}, in::b3s, 1, 0},
    {{{{out::MTA, 1}}}, in::te, 1, 400},
    {{{{out::MTA, 0}, {out::MT, 1}}}, in::te, 1, 0},
    {{{{out::MTA, 1}}}, in::te, 1, 20},
    {{{{out::MTA, 0}}}, in::p1ok, 1, 0},
    {{{{out::DEPOSE, 1}}}, in::colle, 1, 0},
    {{{{out::DEPOSE, 0}, {out::BZ1, 0}}}, in::p2ok, 1, 0},
    {{{{out::SORT, 1}}}, in::ts, 1, 0},
    {{{{out::SORT, 0}, {out::DESV, 1}}}, in::vb, 1, 0},
    {{{{out::ASPI, 1}}}, in::vide, 1, 0},
    {{{{out::DESV, 0}, {out::MONV, 1}}}, in::vh, 1, 0},
    {{{{out::MONV, 0}, {out::RENT, 1}}}, in::te, 1, 0},
    {{{{out::RENT, 0}, {out::DESV, 1}}}, in::vb, 1, 0},
    {{{{out::ASPI, 0}}}, in::vide, 0, 0},
    {{{{out::DESV, 0}, {out::MONV, 1}}}, in::vh, 1, 0},
    {{{{out::MONV, 0}, {out::BZ2, 0}}}, in::p3ok, 1, 0},
    {{{{out::DESP, 1}}}, in::timer10_term, 1, 0},
    {{{{out::DESP, 0}, {out::MONP, 1}}}, in::ph, 1, 0},
    {{{{out::MONP, 0}, {out::BZ3, 0}}}, in::p3ok, 0, 1000},
    {{{{out::MT, 0}}}, in::init, 1, 0},
};
// clang-format on

}  // namespace good_base

class good_bases {
public:
    /// Whether a sensor stands at 1, as the hands see it.
    template <class Sensor>
    void look(const Sensor& sensor) {
        const good_base::row& now = good_base::rows[row_];
        if (waited_steps_ == 0)
            for (const good_base::order& each : now.orders)
                if (each.output != station_output::count)
                    given_[static_cast<std::size_t>(each.output)] = each.value;
        ++waited_steps_;
        if (sensor(now.until) != now.value)
            steps_there_ = 0;
        else if (++steps_there_ > now.steps)
            next_row();
    }
    std::int32_t command(int output) const { return given_[static_cast<std::size_t>(output)]; }

private:
    void next_row() {
        row_ = (row_ + 1) % std::size(good_base::rows);
        waited_steps_ = steps_there_ = 0;
    }

    std::size_t row_ = 0;
    int waited_steps_ = 0, steps_there_ = 0;
    std::array<std::int32_t, static_cast<std::size_t>(station_output::count)> given_ = {};
};
