// The desk: start and stop cycle, `init`, the emergency stop.
#include "tests/workcell/station_driver.h"

namespace {

TEST(Desk, StartAndStopCycleReadOneWhileHeldAndMoveNothing) {
    station_driver driven;
    driven.model.set_desk({.dc = true});
    EXPECT_EQ(driven.sensor("dc"), 1);
    EXPECT_EQ(driven.sensor("ac"), 0);
    driven.model.set_desk({.ac = true});
    EXPECT_EQ(driven.sensor("dc"), 0);
    EXPECT_EQ(driven.sensor("ac"), 1);
    driven.run_ms(2000);
    EXPECT_EQ(driven.sensor("init"), 1);
    driven.model.set_desk({});
    EXPECT_EQ(driven.sensor("ac"), 0);
}

TEST(Init, EveryThingThatIsNotAtRestEndsIt) {
    for (const char* name :
         {"BZ1", "BZ2", "BZ3", "SORT", "DESV", "DESP", "ASPI", "DEPOSE", "MTA", "MT"}) {
        station_driver driven;
        EXPECT_EQ(driven.sensor("init"), 1);
        driven.set(std::string(name) + "=1");
        driven.run_ms(100);
        EXPECT_EQ(driven.sensor("init"), 0) << name;
        driven.set(std::string(name) + "=0 RENT=1 MONV=1 MONP=1");
        driven.run_ms(1000);
        EXPECT_EQ(driven.sensor("init"), 1) << name;
    }
}

// Everything that moves, in mid-motion, with a base on each belt.
void set_all_in_motion(station_driver& driven) {
    driven.set("MTA=1 MT=1");
    driven.run_ms(10'000);
    driven.set("BZ1=1 BZ2=1 BZ3=1");
    driven.run_ms(300);
    driven.set("BZ1=0 SORT=1 DESV=1 DESP=1");
    driven.run_ms(100);
}

void expect_same_places(const workcell_state& a, const workcell_state& b) {
    EXPECT_EQ(a.blockers_out, b.blockers_out);
    EXPECT_EQ(a.drawer_out, b.drawer_out);
    EXPECT_EQ(a.cup_down, b.cup_down);
    EXPECT_EQ(a.press_down, b.press_down);
    ASSERT_EQ(a.bases.size(), b.bases.size());
    for (std::size_t i = 0; i < a.bases.size(); ++i)
        EXPECT_EQ(a.bases[i].front_mm, b.bases[i].front_mm);
}

TEST(EmergencyStop, EverythingStopsWhereItIsAndGoesOnFromThere) {
    station_driver stopped(3), free(3);
    set_all_in_motion(stopped);
    set_all_in_motion(free);
    const workcell_state before = stopped.model.state();
    EXPECT_GT(before.blockers_out[0], 0);
    EXPECT_LT(before.blockers_out[0], 1);
    stopped.stop(true);
    stopped.run_ms(20'000);
    EXPECT_EQ(stopped.sensor("atu"), 1);
    expect_same_places(stopped.model.state(), before);
    EXPECT_FALSE(stopped.model.state().main_belt_runs);
    EXPECT_EQ(stopped.model.state().time_s, before.time_s + 20);
    stopped.stop(false);
    for (const int ms : {1, 100, 400, 10'000}) {
        stopped.run_ms(ms);
        free.run_ms(ms);
        expect_same_places(stopped.model.state(), free.model.state());
    }
    EXPECT_EQ(stopped.incidents(), free.incidents());
}

TEST(EmergencyStop, CommandsChangedMeanwhileActOnRelease) {
    station_driver driven;
    driven.set("SORT=1");
    driven.run_ms(400);
    driven.stop(true);
    driven.set("SORT=0 RENT=1 BZ1=1");
    driven.run_ms(1000);
    EXPECT_EQ(driven.model.state().drawer_out, 0.5);
    EXPECT_EQ(driven.sensor("b1e"), 1);
    driven.stop(false);
    driven.run_ms(400);
    EXPECT_EQ(driven.model.state().drawer_out, 0);
    EXPECT_EQ(driven.sensor("b1s"), 1);
}

TEST(EmergencyStop, TheVacuumHoldsThePart) {
    station_driver driven;
    driven.fetch_part();
    driven.stop(true);
    driven.run_ms(1);
    driven.set("ASPI=0");
    driven.run_ms(60'000);
    EXPECT_EQ(driven.sensor("vide"), 1);
    EXPECT_TRUE(driven.model.state().part_in_cup);
    EXPECT_TRUE(driven.model.state().suction);
    driven.stop(false);
    driven.run_ms(100);
    EXPECT_EQ(driven.sensor("vide"), 0);
    EXPECT_EQ(driven.incidents(), texts{part_lost});
}

TEST(EmergencyStop, APartAlreadyLetGoDoesNotFallEither) {
    station_driver driven;
    driven.fetch_part();
    driven.set("ASPI=0");
    driven.run_ms(99);
    driven.stop(true);
    driven.run_ms(60'000);
    EXPECT_TRUE(driven.model.state().part_in_cup);
    driven.stop(false);
    driven.set("ASPI=1");
    driven.run_ms(60'000);
    EXPECT_EQ(driven.sensor("vide"), 1);
    EXPECT_EQ(driven.incidents(), texts{});
}

TEST(EmergencyStop, NoneOfTheStationsTimesRuns) {
    station_driver magazine;
    magazine.run_ms(400);
    magazine.stop(true);
    magazine.run_ms(10'000);
    EXPECT_EQ(magazine.sensor("pp"), 0);
    EXPECT_EQ(magazine.model.state().bases.size(), 1u);  // Nor is a base loaded.
    magazine.stop(false);
    magazine.run_ms(100);
    EXPECT_EQ(magazine.sensor("pp"), 1);

    station_driver glue;
    glue.bring_to_zone(1);
    glue.set("DEPOSE=1");
    glue.run_ms(900);
    glue.stop(true);
    glue.run_ms(10'000);
    glue.stop(false);
    glue.run_ms(99);
    EXPECT_EQ(glue.sensor("colle"), 0);
    glue.run_ms(1);
    EXPECT_EQ(glue.sensor("colle"), 1);

    station_driver press;
    press.bring_to_zone(3);
    press.play({{"DESP=1", "pb=1"}});
    press.run_ms(5000);
    press.stop(true);
    press.run_ms(10'000);
    EXPECT_EQ(press.sensor("timer10_term"), 0);
    press.stop(false);
    press.run_ms(4999);
    EXPECT_EQ(press.sensor("timer10_term"), 1);
}

TEST(EmergencyStop, ForInitBeltsAndDispenserAreStoppedAndTheSuctionIsAsItWas) {
    station_driver driven;
    driven.set("MT=1 MTA=1 DEPOSE=1");
    driven.run_ms(1);
    EXPECT_EQ(driven.sensor("init"), 0);
    driven.stop(true);
    driven.set("ASPI=1");
    driven.run_ms(1);
    EXPECT_EQ(driven.sensor("init"), 1);
    driven.stop(false);
    driven.set("MT=0 MTA=0 DEPOSE=0");
    driven.run_ms(1);
    EXPECT_EQ(driven.sensor("init"), 0);
    driven.stop(true);
    driven.set("ASPI=0");
    driven.run_ms(1000);
    EXPECT_EQ(driven.sensor("init"), 0);
    driven.stop(false);
    driven.run_ms(1);
    EXPECT_EQ(driven.sensor("init"), 1);
}

TEST(EmergencyStop, NothingSpillsAndNothingIsRefused) {
    station_driver driven;
    driven.stop(true);
    driven.set("DEPOSE=1 DESV=1 SORT=1 DESP=1 MT=1 MTA=1");
    driven.run_ms(10'000);
    EXPECT_EQ(driven.incidents(), texts{});
    EXPECT_EQ(driven.sensor("init"), 1);  // It still stands at rest.
}

}  // namespace
