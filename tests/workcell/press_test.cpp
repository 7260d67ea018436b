#include "tests/workcell/station_driver.h"

namespace {

TEST(Press, TenSecondsLowOnABaseEndTheTimerUntilItLeavesItsLowEnd) {
    station_driver driven;
    driven.bring_to_zone(3);
    driven.play({{"DESP=1", "pb=1"}});
    driven.run_ms(9998);
    EXPECT_EQ(driven.sensor("timer10_term"), 0);
    EXPECT_FALSE(driven.model.state().bases[0].pressed);
    driven.run_ms(1);
    EXPECT_EQ(driven.sensor("timer10_term"), 1);
    EXPECT_TRUE(driven.model.state().bases[0].pressed);
    driven.run_ms(60'000);
    EXPECT_EQ(driven.sensor("timer10_term"), 1);
    driven.set("DESP=0 MONP=1");
    driven.wait("pb", 0);
    EXPECT_EQ(driven.sensor("timer10_term"), 0);
    EXPECT_TRUE(driven.model.state().bases[0].pressed);
    EXPECT_EQ(driven.incidents(), texts{});
}

TEST(Press, CountsItsTenSecondsFromTheStartEachTime) {
    station_driver driven;
    driven.bring_to_zone(3);
    driven.play({{"DESP=1", "pb=1"}});
    driven.run_ms(9000);
    driven.play({{"DESP=0 MONP=1", "pb=0"}, {"MONP=0 DESP=1", "pb=1"}});
    driven.run_ms(9998);
    EXPECT_EQ(driven.sensor("timer10_term"), 0);
    driven.run_ms(1);
    EXPECT_EQ(driven.sensor("timer10_term"), 1);
}

TEST(Press, CountsNothingWithoutABase) {
    station_driver driven;
    driven.play({{"DESP=1", "pb=1"}});
    driven.run_ms(20'000);
    EXPECT_EQ(driven.sensor("timer10_term"), 0);
    EXPECT_EQ(driven.incidents(), texts{});
}

TEST(Press, StopsOnABaseThatIsNotAtItsStopOnceEachTime) {
    for (const double front_mm : {831.0, 860.0, 894.0, 906.0, 969.0}) {
        station_driver driven(1, {1, 0});
        driven.set("MTA=1 MT=1");
        driven.wait_front(front_mm);
        driven.set("MT=0 DESP=1");
        driven.run_ms(3000);
        EXPECT_EQ(driven.model.state().press_down, 0.9) << front_mm;
        EXPECT_EQ(driven.sensor("pb"), 0);
        EXPECT_EQ(driven.incidents(), texts{press_stopped});
        driven.set("DESP=0");
        driven.run_ms(10);
        driven.set("DESP=1");
        driven.run_ms(3000);
        EXPECT_EQ(driven.incidents(), texts{press_stopped});
        driven.set("DESP=0 MONP=1");
        driven.run_ms(1000);
        EXPECT_EQ(driven.sensor("ph"), 1);
        EXPECT_EQ(driven.incidents(), texts{});
    }
}

TEST(Press, GoesLowBesideABaseThatIsNotUnderItsHead) {
    for (const double front_mm : {800.0, 829.0, 970.5, 1100.0}) {
        station_driver driven(1, {1, 0});
        driven.set("MTA=1 MT=1");
        driven.wait_front(front_mm);
        driven.set("MT=0 DESP=1");
        driven.run_ms(1000);
        EXPECT_EQ(driven.sensor("pb"), 1) << front_mm;
        EXPECT_EQ(driven.incidents(), texts{});
    }
}

TEST(Press, PressesABaseWithinFiveMillimetresOfItsStop) {
    for (const double front_mm : {895.0, 904.8}) {
        station_driver driven(1, {1, 0});
        driven.set("MTA=1 MT=1");
        driven.wait_front(front_mm);
        driven.set("MT=0 DESP=1");
        driven.wait("timer10_term");
        EXPECT_EQ(driven.incidents(), texts{});
    }
}

TEST(Press, ABaseUnderItDoesNotMoveUntilItIsHigh) {
    station_driver driven;
    driven.bring_to_zone(3);
    driven.play({{"DESP=1", "pb=1"}, {"BZ3=0 MT=1", ""}});
    driven.run_ms(2000);
    EXPECT_EQ(driven.front_mm(), 900);
    EXPECT_EQ(driven.incidents(), texts{base_held});  // Once, however long it lasts.
    driven.set("MT=0");
    driven.run_ms(10);
    driven.set("MT=1");
    driven.run_ms(10);
    EXPECT_EQ(driven.incidents(), texts{base_held});  // Once each time.
    driven.set("DESP=0 MONP=1");
    driven.run_ms(979);
    EXPECT_EQ(driven.sensor("ph"), 0);
    EXPECT_EQ(driven.front_mm(), 900);
    driven.run_ms(1);
    EXPECT_EQ(driven.sensor("ph"), 1);
    EXPECT_GT(driven.front_mm(), 900);
    driven.run_ms(4000);
    EXPECT_EQ(driven.model.state().bad, 1);
    EXPECT_EQ(driven.incidents(), texts{});
}

TEST(Press, ABaseDoesNotComeUnderItUntilItIsHigh) {
    station_driver driven(1, {1, 0});
    driven.play({{"DESP=1", "pb=1"}, {"MTA=1 MT=1", ""}});
    driven.run_ms(20'000);
    EXPECT_EQ(driven.front_mm(), 830);
    EXPECT_EQ(driven.incidents(), texts{base_held});
    driven.set("DESP=0 MONP=1 BZ3=1");
    driven.wait("p3ok");
    EXPECT_EQ(driven.incidents(), texts{});
}

TEST(Press, MayComeDownAsSoonAsThePresenceIsSeen) {
    station_driver driven;
    driven.set("MTA=1 MT=1 BZ3=1");
    driven.wait("p3ok");
    driven.set("DESP=1");
    driven.wait("timer10_term");
    EXPECT_GE(driven.front_mm(), 895);
    EXPECT_LT(driven.front_mm(), 900);  // Caught on its last millimetres, it waits there ...
    EXPECT_EQ(driven.incidents(), texts{});
    driven.set("DESP=0 MONP=1");
    driven.wait("ph");
    driven.run_ms(100);
    EXPECT_EQ(driven.front_mm(), 900);  // ... and ends its way when the press lets it.
    EXPECT_EQ(driven.incidents(), texts{});
}

TEST(Press, ABaseThatWaitsBehindTheOneAtItsStopIsNotUnderIt) {
    station_driver driven;
    driven.set("MTA=1 MT=1 BZ3=1");
    driven.run_ms(40'000);
    const std::vector<workcell_base> bases = driven.model.state().bases;
    ASSERT_GE(bases.size(), 2u);
    EXPECT_EQ(bases[1].front_mm, 820);
    driven.set("DESP=1");
    driven.wait("timer10_term");
    EXPECT_EQ(driven.incidents(), texts{});
}

}  // namespace
