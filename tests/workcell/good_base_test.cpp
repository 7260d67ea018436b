// A whole base made by hand, and what each thing left out makes of it.
#include "tests/workcell/station_driver.h"

namespace {

using moves = std::vector<station_driver::move>;

// The sequence of docs/workcell.md, a command and the sensor that tells that it is done.
const moves good_base = {
    {"", "pp=1"},
    {"BZ1=1 BZ2=1 BZ3=1 MT=1 MTA=1", "p1ok=1"},
    {"MTA=0 DEPOSE=1", "colle=1"},
    {"DEPOSE=0 BZ1=0", "p2ok=1"},
    {"SORT=1", "ts=1"},
    {"SORT=0 DESV=1", "vb=1"},
    {"ASPI=1", "vide=1"},
    {"DESV=0 MONV=1", "vh=1"},
    {"MONV=0 RENT=1", "te=1"},
    {"RENT=0 DESV=1", "vb=1"},
    {"ASPI=0", "vide=0"},
    {"DESV=0 MONV=1", "vh=1"},
    {"MONV=0 BZ2=0", "p3ok=1"},
    {"DESP=1", "timer10_term=1"},
    {"DESP=0 MONP=1", "ph=1"},
    {"MONP=0 BZ3=0", "p3ok=0"},
};

void let_it_leave(station_driver& driven) {
    driven.run_ms(3800);
    driven.play({{"MT=0", ""}});
}

TEST(GoodBase, ComesOutOfTheDocumentedSequenceForEverySeed) {
    for (std::uint64_t seed = 0; seed < 50; ++seed) {
        station_driver driven(seed);
        driven.play(good_base);
        const workcell_base made = driven.model.state().bases[0];
        EXPECT_TRUE(made.glued && made.part && made.pressed) << seed;
        let_it_leave(driven);
        const workcell_state end = driven.model.state();
        EXPECT_EQ(end.good, 1) << seed;
        EXPECT_EQ(end.bad, 0) << seed;
        EXPECT_EQ(end.parts_left, 1) << seed;
        EXPECT_EQ(end.incidents, 0) << seed;
        EXPECT_EQ(driven.sensor("init"), 1) << seed;
        EXPECT_LT(end.time_s, 45) << seed;
    }
}

TEST(GoodBase, ComesOutOfStepsOfTenMillisecondsToo) {
    station_driver driven;
    for (const auto& [commands, then_wait] : good_base) {
        driven.set(commands);
        const int index = checked_place(station_inputs, then_wait.substr(0, then_wait.find('=')));
        int steps = 0;
        do driven.step(0.010);
        while (driven.model.sensor(index) != then_wait.back() - '0' && ++steps < 6000);
    }
    let_it_leave(driven);
    EXPECT_EQ(driven.model.state().good, 1);
    EXPECT_EQ(driven.model.state().incidents, 0);
}

// However late the sequence starts, its own base is good; one that follows it unglued is not.
TEST(GoodBase, ComesFirstAlsoWhenOthersWaitBehindIt) {
    station_driver driven;
    driven.run_ms(60'000);
    driven.play(good_base);
    let_it_leave(driven);
    EXPECT_EQ(driven.model.state().good, 1);
    EXPECT_EQ(driven.model.state().incidents, 0);
}

// One base at a time: they gather at the end of the waiting belt, and a second of both belts lets
// one step over.
TEST(GoodBase, FollowsAnother) {
    station_driver driven;
    for (int i = 0; i < 10; ++i) {
        driven.play({{"BZ1=1 BZ2=1 BZ3=1 MT=0 MTA=1", ""}});
        driven.run_ms(4000);
        driven.play({{"MT=1", ""}});
        driven.run_ms(1000);
        driven.play({{"MTA=0", "p1ok=1"}});
        driven.play(moves(good_base.begin() + 2, good_base.end()));
        let_it_leave(driven);
        EXPECT_EQ(driven.model.state().good, i + 1);
        EXPECT_EQ(driven.model.state().bad, 0);
        EXPECT_EQ(driven.model.state().incidents, 0);
    }
}

TEST(BadBase, IsOneThatMissesAnything) {
    const struct {
        const char* missing;
        bool glue, part;
        int press_ms;
    } cases[] = {{"glue", false, true, 10'000},
                 {"part", true, false, 10'000},
                 {"press", true, true, 0},
                 {"half a second of the press", true, true, 9'500},
                 {"everything", false, false, 0}};
    for (const auto& [missing, glue, part, press_ms] : cases) {
        station_driver driven;
        driven.bring_to_zone(3, glue, part);
        if (press_ms > 0) {
            driven.play({{"DESP=1", "pb=1"}});
            driven.run_ms(press_ms - 1);
        }
        driven.play({{"DESP=0 MONP=1", "ph=1"}, {"MONP=0 MT=1 BZ3=0", "p3ok=0"}});
        let_it_leave(driven);
        EXPECT_EQ(driven.model.state().good, 0) << missing;
        EXPECT_EQ(driven.model.state().bad, 1) << missing;
        EXPECT_EQ(driven.model.state().parts_left, part) << missing;
    }
}

TEST(BadBase, IsOneThatWasNotGluedLongEnough) {
    station_driver driven;
    driven.bring_to_zone(1);
    driven.set("DEPOSE=1");
    driven.run_ms(999);
    driven.play({{"DEPOSE=0 MT=1 BZ1=0", "p2ok=1"}});
    EXPECT_FALSE(driven.model.state().bases[0].glued);
}

}  // namespace
