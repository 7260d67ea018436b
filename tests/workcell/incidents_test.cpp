// When a refusal is told, and when it is told again.
#include "tests/workcell/station_driver.h"

namespace {

TEST(Refusal, OfTheOppositeCommandIsAnotherOne) {
    station_driver driven;
    driven.set("SORT=1 DESV=1");
    driven.run_ms(2000);  // The cup is low, the drawer half-way.
    EXPECT_EQ(driven.incidents(), texts{drawer_refused});
    for (const char* next : {"SORT=0 RENT=1", "SORT=1 RENT=0", "SORT=0 RENT=1"}) {
        driven.set(next);
        driven.run_ms(1000);
        EXPECT_EQ(driven.incidents(), texts{drawer_refused}) << next;
    }
    driven.set("SORT=1");  // Both: it stays, which nothing refuses.
    driven.run_ms(1000);
    EXPECT_EQ(driven.incidents(), texts{});
    driven.set("SORT=0");
    driven.run_ms(1000);
    EXPECT_EQ(driven.incidents(), texts{drawer_refused});
}

TEST(Refusal, IsNoneForADrawerThatIsInOrOutByItsSensor) {
    const struct {
        const char* start;
        int start_ms;
        const char *sensor, *command;
        bool refused;
    } cases[] = {
        {"SORT=1", 16, "te", "SORT=0 RENT=1", false}, {"SORT=1", 17, "te", "SORT=0 RENT=1", true},
        {"SORT=1", 783, "ts", "SORT=1", true},        {"SORT=1", 784, "ts", "SORT=1", false},
        {"SORT=1", 16, "te", "SORT=1", true},         {"SORT=1", 784, "ts", "SORT=0 RENT=1", true}};
    for (const auto& [start, start_ms, sensor, command, refused] : cases) {
        station_driver driven;
        driven.set(start);
        driven.run_ms(start_ms);
        driven.set("SORT=0 DESV=1");
        driven.run_ms(600);
        const double there = driven.model.state().drawer_out;
        driven.set(command);
        driven.run_ms(1000);
        EXPECT_EQ(driven.model.state().drawer_out, there) << start_ms << command;
        EXPECT_EQ(driven.incidents(), refused ? texts{drawer_refused} : texts{})
            << start_ms << command;
    }
}

TEST(Refusal, OfOneCommandIsOneHoweverManyBasesItShouldMove) {
    station_driver driven;
    driven.set("MTA=1");
    driven.run_ms(15'000);
    driven.set("MT=1");
    driven.wait_front(960);
    EXPECT_EQ(driven.front_mm(1), 800);
    driven.set("MT=0 DESP=1");
    driven.run_ms(100);
    driven.set("DESP=0 MT=1 MTA=0");
    driven.run_ms(2000);
    EXPECT_EQ(driven.front_mm(0), 960);
    EXPECT_EQ(driven.front_mm(1), 830);  // Held too, before it comes under the press.
    EXPECT_EQ(driven.incidents(), texts{base_held});
    driven.set("MT=0");
    driven.run_ms(1);
    driven.set("MT=1");
    driven.run_ms(2000);
    EXPECT_EQ(driven.incidents(), texts{base_held});
}

TEST(Refusal, IsTheSameWhenItsCommandWasTakenBackAndGivenAgainUnderAnEmergencyStop) {
    station_driver driven;
    driven.set("DESV=1");
    driven.run_ms(600);
    driven.set("SORT=1 DEPOSE=1");
    driven.run_ms(10);
    EXPECT_EQ(driven.incidents(), (texts{drawer_refused, glue_spilled}));
    driven.stop(true);
    driven.run_ms(10);
    driven.set("SORT=0 DEPOSE=0");
    driven.run_ms(1000);
    driven.set("SORT=1 DEPOSE=1");
    driven.run_ms(10);
    driven.stop(false);
    driven.run_ms(1000);
    EXPECT_EQ(driven.incidents(), texts{});
}

TEST(Refusal, DoesNotTellOfABaseThatThePressCatchesBeforeItsStop) {
    const struct {
        double front_mm;
        bool told;
    } cases[] = {{894.9, true}, {895, false}, {899.9, false}};
    for (const auto& [front_mm, told] : cases) {
        station_driver driven(1, {1, 0});
        driven.set("MTA=1 MT=1 BZ3=1");
        driven.wait_front(front_mm);
        driven.set("MT=0 DESP=1");
        driven.run_ms(21);
        driven.set("DESP=0 MT=1");
        driven.run_ms(1000);
        EXPECT_EQ(driven.front_mm(), front_mm);
        EXPECT_EQ(driven.incidents(), told ? texts{base_held} : texts{}) << front_mm;
    }
}

TEST(Refusal, TellsOfACaughtBaseOnceItsBlockerIsNoLongerHalfOut) {
    station_driver driven(1, {1, 0});
    driven.set("MTA=1 MT=1 BZ3=1");
    driven.wait("p3ok");
    driven.set("DESP=1");
    driven.run_ms(200);
    driven.set("BZ3=0");
    driven.run_ms(150);
    EXPECT_EQ(driven.incidents(), texts{});
    driven.run_ms(1);
    EXPECT_EQ(driven.incidents(), texts{base_held});
}

TEST(Refusal, TellsOfABaseThatIsPastItsStop) {
    station_driver driven(1, {1, 0});
    driven.set("MTA=1 MT=1");
    driven.wait_front(902);
    driven.set("DESP=1 BZ3=1");
    driven.run_ms(10);
    EXPECT_EQ(driven.incidents(), texts{});
    driven.run_ms(20);
    EXPECT_EQ(driven.incidents(), texts{base_held});
}

}  // namespace
