// Places exactly at a limit, and the smallest step to either side of it: a belt moves a base 0.1 mm
// in a millisecond.
#include "tests/workcell/station_driver.h"

namespace {

// One base alone, standing with its leading edge there, every command off.
class standing_base : public station_driver {
public:
    explicit standing_base(double mm) : station_driver(1, {1, 1}) {
        set("MTA=1 MT=1");
        wait_front(mm);
        EXPECT_EQ(front_mm(), mm);
        set("MTA=0 MT=0");
    }
};

TEST(Limit, FiveMillimetresFromAStopIsThere) {
    const struct {
        double front_mm;
        const char* presence;
        int value;
    } cases[] = {{294.9, "p1ok", 0}, {295, "p1ok", 1}, {305, "p1ok", 1}, {305.1, "p1ok", 0},
                 {594.9, "p2ok", 0}, {595, "p2ok", 1}, {605, "p2ok", 1}, {605.1, "p2ok", 0},
                 {894.9, "p3ok", 0}, {895, "p3ok", 1}, {905, "p3ok", 1}, {905.1, "p3ok", 0}};
    for (const auto& [front_mm, presence, value] : cases)
        EXPECT_EQ(standing_base(front_mm).sensor(presence), value) << front_mm;
}

TEST(Limit, ABaseWithAnEdgeAtTheStopIsNotAboveTheBlocker) {
    const struct {
        double front_mm;
        bool above;
    } cases[] = {{300, false}, {300.1, true}, {379.9, true}, {380, false}};
    for (const auto& [front_mm, above] : cases) {
        standing_base driven(front_mm);
        driven.set("BZ1=1");
        driven.run_ms(300);
        EXPECT_EQ(driven.sensor("b1s"), !above) << front_mm;
        EXPECT_EQ(driven.incidents(), above ? texts{blocker_refused[0]} : texts{}) << front_mm;
    }
}

TEST(Limit, ABlockerAtHalfItsStrokeStopsBasesInTheMillisecondThatBringsItThere) {
    standing_base extending(300);
    extending.set("BZ1=1");
    extending.run_ms(149);
    extending.set("MT=1");
    extending.run_ms(1);
    EXPECT_EQ(extending.model.state().blockers_out[0], 0.5);
    EXPECT_EQ(extending.front_mm(), 300);
    extending.run_ms(1000);
    EXPECT_EQ(extending.front_mm(), 300);
    EXPECT_EQ(extending.incidents(), texts{});

    standing_base late(300);
    late.set("BZ1=1");
    late.run_ms(148);
    late.set("MT=1");
    late.run_ms(1);
    EXPECT_EQ(late.front_mm(), 300.1);
}

TEST(Limit, ABlockerThatReturnsStopsBasesUntilItIsBelowHalfItsStroke) {
    standing_base driven(300);
    driven.set("BZ1=1");
    driven.run_ms(300);
    driven.set("BZ1=0 MT=1");
    driven.run_ms(150);
    EXPECT_EQ(driven.model.state().blockers_out[0], 0.5);
    EXPECT_EQ(driven.front_mm(), 300);
    driven.run_ms(1);
    EXPECT_EQ(driven.front_mm(), 300.1);
}

TEST(Limit, TheCupAtAFifthOfItsHeightLeavesTheDrawerFree) {
    for (const int down_ms : {480, 481}) {
        station_driver driven;
        driven.set("DESV=1");
        driven.run_ms(down_ms);
        driven.set("DESV=0 SORT=1");
        driven.run_ms(10);
        EXPECT_EQ(driven.model.state().drawer_out > 0, down_ms == 480);
        EXPECT_EQ(driven.incidents(), down_ms == 480 ? texts{} : texts{drawer_refused});
    }
}

TEST(Limit, EightHundredAndThirtyAndNineHundredAndSeventyAreClearOfThePress) {
    const struct {
        double front_mm;
        bool clear;
    } cases[] = {{830, true}, {830.1, false}, {969.9, false}, {970, true}};
    for (const auto& [front_mm, clear] : cases) {
        standing_base driven(front_mm);
        driven.set("DESP=1");
        driven.run_ms(1000);
        EXPECT_EQ(driven.sensor("pb"), clear) << front_mm;
        EXPECT_EQ(driven.incidents(), clear ? texts{} : texts{press_stopped}) << front_mm;
    }
}

TEST(Limit, ABaseAtZeroIsStillOnTheWaitingBelt) {
    standing_base driven(0);
    driven.set("MT=1");
    driven.run_ms(1000);
    EXPECT_EQ(driven.front_mm(), 0);
    driven.set("MTA=1");
    driven.run_ms(1);
    EXPECT_EQ(driven.front_mm(), 0.1);
    driven.set("MTA=0");
    driven.run_ms(1);
    EXPECT_EQ(driven.front_mm(), 0.2);
}

TEST(Limit, ABaseHasLeftWhenItsTrailingEdgeReachesTheEnd) {
    standing_base driven(1279.9);
    EXPECT_EQ(driven.model.counts(), (station_counts{0, 0}));
    driven.set("MT=1");
    driven.run_ms(1);
    EXPECT_EQ(driven.model.counts(), (station_counts{0, 1}));
    EXPECT_TRUE(driven.model.state().bases.empty());
}

}  // namespace
