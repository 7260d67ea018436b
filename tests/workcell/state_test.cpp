// What a drawing is told beside the sensors: how far the belts have run, for how long the press has
// been holding, how much glue lies on a base.
#include <gtest/gtest.h>

#include "tests/workcell/station_driver.h"

namespace {

TEST(State, BeltsCountTheWayThatTheyRun) {
    station_driver station;
    EXPECT_EQ(station.model.state().main_belt_um, 0);
    EXPECT_EQ(station.model.state().waiting_belt_um, 0);
    station.set("MT=1");
    station.run_ms(1500);
    EXPECT_EQ(station.model.state().main_belt_um, 150'000);
    EXPECT_EQ(station.model.state().waiting_belt_um, 0);
    station.set("MT=0 MTA=1");
    station.run_ms(10);
    EXPECT_EQ(station.model.state().main_belt_um, 150'000);
    EXPECT_EQ(station.model.state().waiting_belt_um, 1000);
}

TEST(State, ASlowBeltRunsAQuarterOfTheWay) {
    station_driver station;
    station.model.set_slow(place_of(station_output::MT), true);
    station.set("MT=1 MTA=1");
    station.run_ms(1000);
    EXPECT_EQ(station.model.state().main_belt_um, 25'000);
    EXPECT_EQ(station.model.state().waiting_belt_um, 100'000);
}

TEST(State, BeltsRunBelowABaseThatIsHeld) {
    station_driver station;
    station.bring_to_zone(1);
    const auto before = station.model.state();
    station.set("MT=1");
    station.run_ms(2000);
    const auto after = station.model.state();
    EXPECT_EQ(after.bases[0].front_mm, before.bases[0].front_mm);
    EXPECT_EQ(after.main_belt_um - before.main_belt_um, 200'000);
}

TEST(State, BeltsStandUnderAnEmergencyStopAndWithAnotherValueThanOne) {
    station_driver station;
    station.set("MT=2 MTA=2");
    station.run_ms(100);
    EXPECT_EQ(station.model.state().main_belt_um, 0);
    EXPECT_EQ(station.model.state().waiting_belt_um, 0);
    station.set("MT=1 MTA=1");
    station.stop(true);
    station.run_ms(100);
    EXPECT_EQ(station.model.state().main_belt_um, 0);
    EXPECT_EQ(station.model.state().waiting_belt_um, 0);
}

TEST(State, ThePressTellsForHowLongItHasHeld) {
    station_driver station;
    station.bring_to_zone(3);
    EXPECT_EQ(station.model.state().press_held_s, 0);
    station.set("DESP=1");
    station.wait("pb");
    const double first = station.model.state().press_held_s;
    EXPECT_DOUBLE_EQ(first, 0.001);
    station.run_ms(4999);
    EXPECT_DOUBLE_EQ(station.model.state().press_held_s, 5);
    station.run_ms(20'000);
    EXPECT_DOUBLE_EQ(station.model.state().press_held_s, 10);
    EXPECT_EQ(station.sensor("timer10_term"), 1);
    station.set("DESP=0 MONP=1");
    station.wait("ph");
    EXPECT_EQ(station.model.state().press_held_s, 0);
}

TEST(State, ABaseTellsHowMuchGlueItHas) {
    station_driver station;
    station.bring_to_zone(1);
    EXPECT_EQ(station.model.state().bases[0].glue_s, 0);
    station.set("DEPOSE=1");
    station.run_ms(400);
    EXPECT_DOUBLE_EQ(station.model.state().bases[0].glue_s, 0.4);
    EXPECT_FALSE(station.model.state().bases[0].glued);
    station.run_ms(5000);
    EXPECT_DOUBLE_EQ(station.model.state().bases[0].glue_s, 1);
    EXPECT_TRUE(station.model.state().bases[0].glued);
}

}  // namespace
