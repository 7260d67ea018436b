// The belts, the blockers, the zones' presence sensors and the dispenser.
#include "tests/workcell/station_driver.h"

namespace {

std::size_t waiting(const workcell_state& state) {
    return static_cast<std::size_t>(std::ranges::count_if(
        state.bases, [](const workcell_base& each) { return each.front_mm <= 0; }));
}

TEST(WaitingBelt, IsLoadedEveryFiveSecondsUpToFourBasesAHundredMillimetresApart) {
    station_driver driven;
    driven.set("MTA=1");
    driven.run_ms(4999);
    EXPECT_EQ(waiting(driven.model.state()), 1u);
    driven.run_ms(1);
    EXPECT_EQ(waiting(driven.model.state()), 2u);
    driven.run_ms(5000);
    EXPECT_EQ(waiting(driven.model.state()), 3u);
    driven.run_ms(40'000);
    const workcell_state full = driven.model.state();
    ASSERT_EQ(full.bases.size(), 4u);
    for (std::size_t i = 0; i < 4; ++i)
        EXPECT_EQ(full.bases[i].front_mm, -100.0 * static_cast<double>(i));
    EXPECT_EQ(full.bases_in_stock, 996);
}

TEST(WaitingBelt, RunsAtAHundredMillimetresASecondWithItsCommandOnly) {
    station_driver driven;
    const double start_mm = driven.front_mm();
    driven.run_ms(1000);
    EXPECT_EQ(driven.front_mm(), start_mm);
    driven.set("MT=1");
    driven.run_ms(1000);
    EXPECT_EQ(driven.front_mm(), start_mm);
    driven.set("MT=0 MTA=1");
    driven.run_ms(500);
    EXPECT_NEAR(driven.front_mm(), std::min(start_mm + 50, 0.0), 1e-9);
}

TEST(WaitingBelt, LoadsAsSoonAsThereIsRoomAndNoMoreThanTheStock) {
    station_driver driven(1, {3, 0});
    // The belt stands still: the first base may leave room for one or two more, 100 mm apart.
    driven.run_ms(60'000);
    const std::size_t stopped = driven.model.state().bases.size();
    EXPECT_LE(stopped, 3u);
    driven.set("MTA=1 MT=1");
    driven.run_ms(60'000);
    const workcell_state end = driven.model.state();
    EXPECT_EQ(end.bases_in_stock, 0);
    EXPECT_EQ(end.bad, 3);
    EXPECT_TRUE(end.bases.empty());
}

TEST(WaitingBelt, ABaseStepsOverOnlyWhenBothBeltsRunAndTheWholeOfItHasRoom) {
    station_driver driven;
    driven.set("MTA=1 BZ1=1");
    driven.run_ms(30'000);
    EXPECT_EQ(driven.front_mm(), 0);  // The main belt stands still.
    driven.set("MT=1");
    driven.run_ms(60'000);
    const std::vector<workcell_base> bases = driven.model.state().bases;
    const double expected_mm[] = {300, 220, 140, 0, -100, -200, -300};
    ASSERT_EQ(bases.size(), std::size(expected_mm));
    for (std::size_t i = 0; i < bases.size(); ++i)
        EXPECT_EQ(bases[i].front_mm, expected_mm[i]) << i;
}

TEST(WaitingBelt, BasesThatStepOverOneAfterAnotherAreAHundredAndSixtyMillimetresApart) {
    station_driver driven;
    driven.set("MTA=1");
    driven.run_ms(15'000);
    driven.set("MT=1");
    driven.run_ms(1599);
    EXPECT_EQ(driven.front_mm(0), 159.9);
    EXPECT_EQ(driven.front_mm(1), 0);
    driven.run_ms(1);
    EXPECT_EQ(driven.front_mm(0), 160);
    EXPECT_EQ(driven.front_mm(1), 0);
    driven.run_ms(1);
    EXPECT_EQ(driven.front_mm(0), 160.1);
    EXPECT_EQ(driven.front_mm(1), 0.1);
    driven.run_ms(5000);
    for (std::size_t i = 1; i < 4; ++i)
        EXPECT_NEAR(driven.front_mm(i - 1) - driven.front_mm(i), 160, 1e-9) << i;
}

// A base that the press holds stops a closed queue with its last leading edge at exactly 160 mm.
TEST(WaitingBelt, ABaseStepsOverBehindOneThatStandsAtAHundredAndSixtyMillimetres) {
    station_driver driven;
    driven.set("MTA=1 MT=1");
    driven.wait_front(880);
    driven.set("MT=0 DESP=1");
    driven.run_ms(100);
    driven.set("DESP=0 MT=1");
    driven.run_ms(60'000);
    const std::vector<workcell_base> bases = driven.model.state().bases;
    const auto at_160 =
        std::ranges::find(bases, 160.0, [](const workcell_base& each) { return each.front_mm; });
    ASSERT_NE(at_160, bases.end());
    EXPECT_EQ(at_160[1].front_mm, 80);
    EXPECT_EQ(at_160[2].front_mm, -20);
}

TEST(WaitingBelt, KeepsAHundredMillimetresToTheLastBaseOnTheMainBeltToo) {
    station_driver driven;
    driven.set("MTA=1");
    driven.run_ms(15'000);
    driven.set("MT=1");
    driven.wait_front(30);
    driven.set("MT=0");
    driven.run_ms(5000);
    EXPECT_EQ(driven.front_mm(0), 30);
    EXPECT_EQ(driven.front_mm(1), -70);
}

TEST(MainBelt, RunsAtAHundredMillimetresASecondWithItsCommandOnly) {
    station_driver driven;
    driven.set("MTA=1 MT=1");
    driven.wait_front(100);
    driven.set("MTA=0");
    driven.run_ms(1000);
    EXPECT_NEAR(driven.front_mm(), 200, 0.15);
    const double there_mm = driven.front_mm();
    driven.set("MTA=1 MT=0");
    driven.run_ms(1000);
    EXPECT_EQ(driven.front_mm(), there_mm);
}

TEST(MainBelt, ABaseThatPassesTheEndIsCounted) {
    station_driver driven(1, {1, 0});
    driven.set("MTA=1 MT=1");
    driven.wait_front(1279);
    EXPECT_EQ(driven.model.state().bad, 0);
    driven.run_ms(11);
    EXPECT_EQ(driven.model.state().bad, 1);
    EXPECT_TRUE(driven.model.state().bases.empty());
    EXPECT_EQ(driven.incidents(), texts{});
}

TEST(Blocker, EachStopsABaseAtItsStop) {
    const struct {
        const char *block, *presence;
        double stop_mm;
    } zones[] = {{"BZ1=1", "p1ok", 300}, {"BZ2=1", "p2ok", 600}, {"BZ3=1", "p3ok", 900}};
    for (const auto& [block, presence, stop_mm] : zones) {
        station_driver driven;
        driven.set(std::string("MTA=1 MT=1 ") + block);
        driven.run_ms(20'000);
        EXPECT_EQ(driven.front_mm(), stop_mm);
        EXPECT_EQ(driven.sensor(presence), 1);
        EXPECT_EQ(driven.incidents(), texts{});
    }
}

TEST(Blocker, ARetractedOneLetsBasesPass) {
    station_driver driven;
    driven.set("MTA=1 MT=1");
    driven.wait_front(1000);
    EXPECT_EQ(driven.incidents(), texts{});
}

TEST(Presence, IsWithinFiveMillimetresOfTheStop) {
    for (const double stop_mm : {300.0, 600.0, 900.0}) {
        station_driver driven(1, {1, 0});
        driven.set("MTA=1 MT=1");
        const char* presence = stop_mm == 300 ? "p1ok" : stop_mm == 600 ? "p2ok" : "p3ok";
        driven.wait_front(stop_mm - 10);
        for (int ms = 0; ms < 200; ++ms) {
            const double distance_mm = driven.front_mm() - stop_mm;
            EXPECT_EQ(driven.sensor(presence), distance_mm >= -5 && distance_mm <= 5)
                << distance_mm;
            driven.run_ms(1);
        }
    }
}

TEST(Blocker, CannotExtendThroughABaseAndStaysWhereItTouches) {
    const struct {
        const char *on, *off, *retracted, *extended;
        double stop_mm;
        std::string incident;
    } zones[] = {
        {"BZ1=1", "BZ1=0", "b1e", "b1s", 300, blocker_refused[0]},
        {"BZ2=1", "BZ2=0", "b2e", "b2s", 600, blocker_refused[1]},
        {"BZ3=1", "BZ3=0", "b3e", "b3s", 900, blocker_refused[2]},
    };
    for (std::size_t zone = 0; zone < 3; ++zone) {
        const auto& [on, off, retracted, extended, stop_mm, incident] = zones[zone];
        station_driver driven(1, {1, 0});
        driven.set("MTA=1 MT=1");
        driven.wait_front(stop_mm + 20);
        driven.set(std::string("MT=0 ") + on);
        driven.run_ms(2000);
        EXPECT_EQ(driven.sensor(retracted), 0);
        EXPECT_EQ(driven.sensor(extended), 0);
        EXPECT_EQ(driven.model.state().blockers_out[zone], 0.5);
        EXPECT_EQ(driven.incidents(), texts{incident});  // Once, however long it lasts.
        driven.set(off);
        driven.run_ms(300);
        EXPECT_EQ(driven.sensor(retracted), 1);
        driven.set(on);
        driven.run_ms(300);
        EXPECT_EQ(driven.incidents(), texts{incident});  // Once each time.
        driven.set("MT=1");
        driven.wait_front(stop_mm + 80);
        driven.run_ms(300);
        EXPECT_EQ(driven.sensor(extended), 1);
        EXPECT_EQ(driven.incidents(), texts{});
    }
}

TEST(Blocker, CatchesTheNextOfAClosedQueueAsSoonAsTheFirstHasPassed) {
    station_driver driven;
    driven.set("MTA=1 MT=1 BZ1=1");
    driven.run_ms(40'000);
    driven.set("MTA=0 BZ1=0");
    driven.wait_front(310);
    driven.set("BZ1=1");
    driven.run_ms(5000);
    const std::vector<workcell_base> bases = driven.model.state().bases;
    EXPECT_GT(bases[0].front_mm, 600);
    EXPECT_EQ(bases[1].front_mm, 300);
    EXPECT_EQ(driven.sensor("b1s"), 1);
    EXPECT_EQ(driven.incidents(), texts{blocker_refused[0]});
}

TEST(Blocker, ABaseJustAtItsStopIsNotAboveIt) {
    station_driver driven(1, {1, 0});
    driven.set("MTA=1 MT=1 BZ1=1");
    driven.run_ms(15'000);
    driven.set("MT=0 BZ1=0");
    driven.run_ms(300);
    driven.set("BZ1=1");
    driven.run_ms(300);
    EXPECT_EQ(driven.sensor("b1s"), 1);
    EXPECT_EQ(driven.incidents(), texts{});
}

TEST(Dispenser, AWholeSecondInAllGluesABase) {
    station_driver driven;
    driven.bring_to_zone(1);
    driven.set("DEPOSE=1");
    driven.run_ms(600);
    EXPECT_EQ(driven.sensor("colle"), 0);
    driven.set("DEPOSE=0");
    driven.run_ms(5000);
    driven.set("DEPOSE=1");
    driven.run_ms(399);
    EXPECT_EQ(driven.sensor("colle"), 0);
    driven.run_ms(1);
    EXPECT_EQ(driven.sensor("colle"), 1);
    driven.run_ms(5000);  // More has no effect.
    EXPECT_EQ(driven.sensor("colle"), 1);
    EXPECT_EQ(driven.incidents(), texts{});
    driven.set("DEPOSE=0 BZ1=0 MT=1");
    driven.wait("p1ok", 0);
    EXPECT_EQ(driven.sensor("colle"), 0);  // The glued base has left zone 1.
    EXPECT_TRUE(driven.model.state().bases[0].glued);
}

TEST(Dispenser, SpillsWithNoBaseAtZoneOneOnceEachTime) {
    station_driver driven;
    driven.set("DEPOSE=1");
    driven.run_ms(3000);
    EXPECT_EQ(driven.incidents(), texts{glue_spilled});
    driven.set("DEPOSE=0");
    driven.run_ms(1);
    driven.set("DEPOSE=1");
    driven.run_ms(3000);
    EXPECT_EQ(driven.incidents(), texts{glue_spilled});
}

TEST(Dispenser, SpillsWhenTheBaseLeavesUnderIt) {
    station_driver driven;
    driven.bring_to_zone(1);
    driven.set("DEPOSE=1 BZ1=0 MT=1");
    driven.wait("p1ok", 0);
    driven.run_ms(100);
    EXPECT_EQ(driven.incidents(), texts{glue_spilled});
    EXPECT_FALSE(driven.model.state().bases[0].glued);
}

}  // namespace
