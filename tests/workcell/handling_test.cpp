// The magazine, the drawer and the suction cup.
#include "tests/workcell/station_driver.h"

namespace {

TEST(Magazine, DropsAPartHalfASecondAfterTheEmptyDrawerIsIn) {
    station_driver driven;
    driven.run_ms(499);
    EXPECT_EQ(driven.sensor("pp"), 0);
    driven.run_ms(1);
    EXPECT_EQ(driven.sensor("pp"), 1);
    EXPECT_EQ(driven.model.state().parts_in_magazine, 999);
    driven.run_ms(5000);
    EXPECT_EQ(driven.model.state().parts_in_magazine, 999);  // The drawer holds one.
}

TEST(Magazine, WaitsForTheDrawerAndStartsAgain) {
    station_driver driven;
    driven.run_ms(300);
    driven.set("SORT=1");
    driven.run_ms(2000);
    EXPECT_EQ(driven.sensor("pp"), 0);
    driven.set("SORT=0 RENT=1");
    driven.wait("te");
    driven.run_ms(498);
    EXPECT_EQ(driven.sensor("pp"), 0);
    driven.run_ms(1);
    EXPECT_EQ(driven.sensor("pp"), 1);
}

TEST(Magazine, GivesNoMoreThanItHas) {
    station_driver driven(1, {1, 1});
    driven.fetch_part();
    driven.run_ms(5000);
    EXPECT_EQ(driven.sensor("pp"), 0);
    EXPECT_EQ(driven.model.state().parts_in_magazine, 0);
    EXPECT_TRUE(driven.model.state().part_in_cup);
}

TEST(Drawer, CarriesItsPartOut) {
    station_driver driven;
    driven.play({{"", "pp=1"}, {"SORT=1", "ts=1"}});
    EXPECT_EQ(driven.sensor("pp"), 1);
    EXPECT_EQ(driven.sensor("te"), 0);
}

TEST(Drawer, DoesNotMoveWhileTheCupIsBelowAFifthOfItsHeight) {
    const struct {
        const char *start, *command, *off;
        double there;
    } ways[] = {{"", "SORT=1", "SORT=0", 0}, {"SORT=1", "SORT=0 RENT=1", "RENT=0", 1}};
    for (const auto& [start, command, off, there] : ways) {
        station_driver driven;
        driven.set(start);
        driven.run_ms(1000);
        driven.set("DESV=1");
        driven.run_ms(600);
        // A command that asks for no motion is not refused.
        EXPECT_EQ(driven.incidents(), texts{});
        driven.set(command);
        driven.run_ms(2000);
        EXPECT_EQ(driven.model.state().drawer_out, there);
        EXPECT_EQ(driven.incidents(), texts{drawer_refused});
        driven.set(off);
        driven.run_ms(10);
        driven.set(command);
        driven.run_ms(10);
        EXPECT_EQ(driven.incidents(), texts{drawer_refused});
        driven.set("DESV=0 MONV=1");
        driven.run_ms(119);
        EXPECT_EQ(driven.model.state().drawer_out, there);
        driven.run_ms(1);  // The cup is at 20 %: the drawer goes.
        EXPECT_NE(driven.model.state().drawer_out, there);
        driven.run_ms(800);
        EXPECT_EQ(driven.model.state().drawer_out, 1 - there);
        EXPECT_EQ(driven.incidents(), texts{});
    }
}

TEST(Drawer, StopsWhenTheCupComesDownOnItsWay) {
    station_driver driven;
    driven.set("SORT=1 DESV=1");
    driven.run_ms(2000);
    EXPECT_EQ(driven.model.state().drawer_out, 480.0 / 800);
    EXPECT_EQ(driven.sensor("vb"), 1);
    EXPECT_EQ(driven.incidents(), texts{drawer_refused});
}

TEST(Cup, HoldsThePartOfTheDrawerThatIsOutAndTheVacuumComesAfterAFifthOfASecond) {
    station_driver driven;
    driven.play({{"", "pp=1"}, {"SORT=1", "ts=1"}, {"SORT=0 DESV=1", "vb=1"}});
    EXPECT_EQ(driven.sensor("vide"), 0);
    driven.set("ASPI=1");
    driven.run_ms(1);
    EXPECT_TRUE(driven.model.state().part_in_cup);
    EXPECT_EQ(driven.sensor("pp"), 0);
    driven.run_ms(199);
    EXPECT_EQ(driven.sensor("vide"), 0);
    driven.run_ms(1);
    EXPECT_EQ(driven.sensor("vide"), 1);
    driven.play({{"DESV=0 MONV=1", "vh=1"}});
    driven.run_ms(10'000);
    EXPECT_EQ(driven.sensor("vide"), 1);
    EXPECT_EQ(driven.incidents(), texts{});
}

TEST(Cup, TakesNothingWhenHighOrWithTheDrawerInOrEmpty) {
    const struct {
        const char* what;
        std::vector<station_driver::move> moves;
    } cases[] = {
        {"high", {{"", "pp=1"}, {"SORT=1", "ts=1"}, {"ASPI=1", ""}}},
        {"drawer in", {{"", "pp=1"}, {"DESV=1", "vb=1"}, {"ASPI=1", ""}}},
        {"drawer empty", {{"SORT=1", "ts=1"}, {"DESV=1", "vb=1"}, {"ASPI=1", ""}}},
        {"not sucking", {{"", "pp=1"}, {"SORT=1", "ts=1"}, {"DESV=1", "vb=1"}}},
    };
    for (const auto& [what, moves] : cases) {
        station_driver driven;
        driven.play(moves);
        driven.run_ms(1000);
        EXPECT_FALSE(driven.model.state().part_in_cup) << what;
        EXPECT_EQ(driven.sensor("vide"), 0) << what;
        EXPECT_EQ(driven.incidents(), texts{}) << what;
    }
}

TEST(Cup, PlacesThePartOnTheBaseAtZoneTwoATenthOfASecondAfterItsSuctionEnds) {
    station_driver driven;
    driven.bring_to_zone(2);
    driven.fetch_part();
    driven.play({{"DESV=1", "vb=1"}});
    driven.set("ASPI=0");
    driven.run_ms(99);
    EXPECT_EQ(driven.sensor("vide"), 1);
    EXPECT_FALSE(driven.model.state().bases[0].part);
    driven.run_ms(1);
    EXPECT_EQ(driven.sensor("vide"), 0);
    EXPECT_TRUE(driven.model.state().bases[0].part);
    EXPECT_FALSE(driven.model.state().part_in_cup);
    EXPECT_EQ(driven.incidents(), texts{});
}

TEST(Cup, KeepsThePartWhenTheSuctionComesBackInTime) {
    station_driver driven;
    driven.fetch_part();
    driven.set("ASPI=0");
    driven.run_ms(99);
    driven.set("ASPI=1");
    driven.run_ms(1);
    driven.set("ASPI=0");
    driven.run_ms(99);
    EXPECT_EQ(driven.sensor("vide"), 1);
    EXPECT_TRUE(driven.model.state().part_in_cup);
}

TEST(Cup, APartLetGoAnywhereElseIsLost) {
    const struct {
        const char* what;
        int zone;
        std::vector<station_driver::move> moves;
    } cases[] = {
        {"high above a base", 2, {{"ASPI=0", ""}}},
        {"low with no base", 1, {{"DESV=1", "vb=1"}, {"ASPI=0", ""}}},
        {"low into the drawer that is out",
         2,
         {{"SORT=1", "ts=1"}, {"DESV=1", "vb=1"}, {"ASPI=0", ""}}},
        {"high above the drawer that is out", 2, {{"SORT=1", "ts=1"}, {"ASPI=0", ""}}},
    };
    for (const auto& [what, zone, moves] : cases) {
        station_driver driven;
        driven.bring_to_zone(zone);
        driven.fetch_part();
        driven.play(moves);
        driven.run_ms(99);
        EXPECT_FALSE(driven.model.state().part_in_cup) << what;
        EXPECT_FALSE(driven.model.state().bases[0].part) << what;
        EXPECT_EQ(driven.model.state().parts_lost, 1) << what;
        EXPECT_EQ(driven.incidents(), texts{part_lost}) << what;
    }
}

TEST(Cup, LosesThePartWhenTheSuctionEndsBeforeTheVacuum) {
    station_driver driven;
    driven.play({{"", "pp=1"}, {"SORT=1", "ts=1"}, {"DESV=1", "vb=1"}});
    driven.set("ASPI=1");
    driven.run_ms(50);
    driven.set("ASPI=0");
    driven.run_ms(100);
    EXPECT_EQ(driven.sensor("vide"), 0);
    EXPECT_EQ(driven.model.state().parts_lost, 1);
    EXPECT_EQ(driven.incidents(), texts{part_lost});
}

TEST(Cup, ASecondPartOnABaseIsLost) {
    station_driver driven;
    driven.bring_to_zone(2, false, true);
    driven.fetch_part();
    driven.place_part();
    EXPECT_EQ(driven.model.state().parts_lost, 1);
    EXPECT_TRUE(driven.model.state().bases[0].part);
    EXPECT_EQ(driven.incidents(), texts{second_part});
}

TEST(Cup, DoesNotLiftAPartOffABase) {
    station_driver driven;
    driven.bring_to_zone(2, false, true);
    driven.play({{"DESV=1", "vb=1"}, {"ASPI=1", ""}});
    driven.run_ms(1000);
    driven.play({{"DESV=0 MONV=1", "vh=1"}});
    EXPECT_EQ(driven.sensor("vide"), 0);
    EXPECT_TRUE(driven.model.state().bases[0].part);
}

}  // namespace
