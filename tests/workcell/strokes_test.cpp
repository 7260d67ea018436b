// The start, the cylinders' strokes and their sensors, and the commands' values.
#include "tests/workcell/station_driver.h"

namespace {

TEST(Station, StartsAtRestWithOneBaseOnTheWaitingBelt) {
    for (const std::uint64_t seed : {0ull, 1ull, 2ull, 12345ull, ~0ull}) {
        const station_driver at_start(seed);
        for (std::size_t i = 0; i < station_inputs.size(); ++i) {
            const std::string_view name = station_inputs[i];
            const bool set = name == "b1e" || name == "b2e" || name == "b3e" || name == "te" ||
                             name == "vh" || name == "ph" || name == "init";
            EXPECT_EQ(at_start.model.sensor(static_cast<int>(i)), set) << name;
        }
        const workcell_state state = at_start.model.state();
        ASSERT_EQ(state.bases.size(), 1u);
        EXPECT_GE(state.bases[0].front_mm, -320);
        EXPECT_LE(state.bases[0].front_mm, 0);
        EXPECT_EQ(state.time_s, 0);
        EXPECT_EQ(state.bases_in_stock, 999);
        EXPECT_EQ(state.parts_in_magazine, 1000);
        EXPECT_EQ(state.incidents, 0);
    }
}

TEST(Station, TheSeedChoosesTheFirstBasesPlace) {
    std::vector<double> places;
    for (std::uint64_t seed = 0; seed < 20; ++seed)
        places.push_back(station_driver(seed).front_mm());
    std::ranges::sort(places);
    EXPECT_GT(std::unique(places.begin(), places.end()) - places.begin(), 10);
}

TEST(Station, EachCylinderTakesItsStrokeAndItsSensorsSeeTwoPercent) {
    const struct {
        const char *forth, *back, *rest, *end;
        int stroke_ms;
    } cylinders[] = {
        {"BZ1=1", "BZ1=0", "b1e", "b1s", 300},
        {"BZ2=1", "BZ2=0", "b2e", "b2s", 300},
        {"BZ3=1", "BZ3=0", "b3e", "b3s", 300},
        {"SORT=1 RENT=0", "SORT=0 RENT=1", "te", "ts", 800},
        {"DESV=1 MONV=0", "DESV=0 MONV=1", "vh", "vb", 600},
        {"DESP=1 MONP=0", "DESP=0 MONP=1", "ph", "pb", 1000},
    };
    for (const auto& [forth, back, rest, end, stroke_ms] : cylinders) {
        station_driver driven;
        const int two_percent_ms = stroke_ms / 50;
        const struct {
            const char *command, *from, *to;
        } ways[] = {{forth, rest, end}, {back, end, rest}};
        for (const auto& [command, from, to] : ways) {
            driven.set(command);
            driven.run_ms(two_percent_ms);
            EXPECT_EQ(driven.sensor(from), 1) << from;
            driven.run_ms(1);
            EXPECT_EQ(driven.sensor(from), 0) << from;
            driven.run_ms(stroke_ms - 2 * two_percent_ms - 2);
            EXPECT_EQ(driven.sensor(to), 0) << to;
            driven.run_ms(1);
            EXPECT_EQ(driven.sensor(to), 1) << to;
            driven.run_ms(stroke_ms);
            EXPECT_EQ(driven.sensor(to), 1) << to;
        }
        EXPECT_EQ(driven.incidents(), texts{}) << forth;
    }
}

TEST(Station, OppositeCommandsTogetherOrNeitherStay) {
    const struct {
        const char *forth, *both, *none;
        double workcell_state::*place;
    } pairs[] = {
        {"SORT=1 RENT=0", "SORT=1 RENT=1", "SORT=0 RENT=0", &workcell_state::drawer_out},
        {"DESV=1 MONV=0", "DESV=1 MONV=1", "DESV=0 MONV=0", &workcell_state::cup_down},
        {"DESP=1 MONP=0", "DESP=1 MONP=1", "DESP=0 MONP=0", &workcell_state::press_down},
    };
    for (const auto& [forth, both, none, place] : pairs) {
        station_driver driven;
        driven.set(forth);
        driven.run_ms(300);
        const double there = driven.model.state().*place;
        EXPECT_GT(there, 0);
        EXPECT_LT(there, 1);
        for (const char* stay : {both, none}) {
            driven.set(stay);
            driven.run_ms(2000);
            EXPECT_EQ(driven.model.state().*place, there) << stay;
        }
    }
}

TEST(Station, ABlockerIsBroughtBackByItsSpring) {
    station_driver driven;
    driven.set("BZ2=1");
    driven.run_ms(300);
    EXPECT_EQ(driven.sensor("b2s"), 1);
    driven.set("BZ2=0");
    driven.run_ms(300);
    EXPECT_EQ(driven.sensor("b2e"), 1);
    EXPECT_EQ(driven.model.state().blockers_out[1], 0);
}

TEST(Station, OnlyExactlyOneIsOn) {
    for (const std::int32_t value : {0, 2, -1, 255, 257, INT32_MAX, INT32_MIN}) {
        station_driver driven;
        driven.model.set_command(place_of(station_output::BZ1), value);
        driven.run_ms(400);
        EXPECT_EQ(driven.sensor("b1e"), 1) << value;
    }
}

TEST(Station, IndicesThatDoNotExistReadZeroAndSetNothing) {
    station_driver driven;
    const int outputs = place_of(station_output::count), inputs = place_of(station_input::count);
    for (const int index : {-1, INT32_MIN, INT32_MAX, outputs}) driven.model.set_command(index, 1);
    driven.run_ms(400);
    EXPECT_EQ(driven.sensor("init"), 1);
    for (const int index : {-1, INT32_MIN, INT32_MAX, inputs})
        EXPECT_EQ(driven.model.sensor(index), 0) << index;
}

}  // namespace
