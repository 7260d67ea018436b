// What happens in one millisecond, in which order, and from which one the station's times count.
#include "tests/workcell/station_driver.h"

namespace {

TEST(Millisecond, TheCupMovesBeforeTheDrawer) {
    station_driver driven;
    driven.set("SORT=1 DESV=1");
    driven.run_ms(480);
    EXPECT_EQ(driven.model.state().drawer_out, 480.0 / 800);
    driven.run_ms(1);
    EXPECT_EQ(driven.model.state().drawer_out, 480.0 / 800);
}

TEST(Millisecond, TheCupTakesHoldInTheOneInWhichItIsLow) {
    station_driver driven;
    driven.play({{"", "pp=1"}, {"SORT=1", "ts=1"}, {"ASPI=1 DESV=1", ""}});
    for (int ms = 0; ms < 600; ++ms) {
        EXPECT_NE(driven.sensor("pp"), driven.sensor("vb"));
        driven.run_ms(1);
    }
    EXPECT_TRUE(driven.model.state().part_in_cup);
}

// A base that is about to leave zone 2, under the cup that is low and holds a part.
void set_up_a_leaving_base(station_driver& driven) {
    driven.bring_to_zone(2);
    driven.fetch_part();
    driven.play({{"DESV=1", "vb=1"}});
    driven.set("BZ2=0 MT=1");
}

TEST(Millisecond, APartDropsBeforeTheBasesMove) {
    station_driver first;
    set_up_a_leaving_base(first);
    const int leaves_ms = first.wait("p2ok", 0);
    // The part drops in the millisecond before, in that one, and in the one after.
    for (const int late_ms : {-1, 0, 1}) {
        station_driver driven;
        set_up_a_leaving_base(driven);
        driven.run_ms(leaves_ms + late_ms - 100);
        driven.set("ASPI=0");
        driven.run_ms(99);
        EXPECT_TRUE(driven.model.state().part_in_cup);
        driven.run_ms(1);
        EXPECT_FALSE(driven.model.state().part_in_cup);
        EXPECT_EQ(driven.sensor("p2ok"), late_ms < 0);
        EXPECT_EQ(driven.model.state().bases[0].part, late_ms <= 0) << late_ms;
        EXPECT_EQ(driven.incidents(), late_ms <= 0 ? texts{} : texts{part_lost}) << late_ms;
    }
}

TEST(Millisecond, ABaseGoesInTheOneInWhichThePressIsHigh) {
    station_driver driven;
    driven.bring_to_zone(3);
    driven.play({{"DESP=1", "pb=1"}, {"BZ3=0 DESP=0", ""}});
    driven.run_ms(300);
    driven.set("MT=1 MONP=1");
    for (int ms = 0; ms < 1000; ++ms) {
        driven.run_ms(1);
        ASSERT_EQ(driven.front_mm() > 900, driven.sensor("ph") == 1) << ms;
    }
}

TEST(Millisecond, AClosedQueueMovesAsOne) {
    station_driver driven;
    driven.set("MTA=1 MT=1 BZ1=1");
    driven.run_ms(40'000);
    driven.set("BZ1=0 MTA=0");
    for (int ms = 0; ms < 500; ++ms) {
        driven.run_ms(1);
        EXPECT_NEAR(driven.front_mm(0) - driven.front_mm(1), 80, 1e-9);
        EXPECT_NEAR(driven.front_mm(1) - driven.front_mm(2), 80, 1e-9);
    }
}

TEST(Millisecond, TheLoaderSeesWhereTheBasesHaveMovedTo) {
    station_driver driven;
    driven.run_ms(60'000);  // It is ready, and waits for room.
    driven.set("MTA=1");
    const std::size_t lying = driven.model.state().bases.size();
    const auto room = [&] { return driven.front_mm(lying - 1) >= -220; };
    ASSERT_FALSE(room());
    while (!room()) {
        EXPECT_EQ(driven.model.state().bases.size(), lying);
        driven.run_ms(1);
    }
    EXPECT_EQ(driven.model.state().bases.size(), lying + 1);
}

TEST(Millisecond, TheDispenserSeesWhereTheBasesHaveMovedTo) {
    station_driver driven(1, {1, 0});
    driven.set("MTA=1 MT=1");
    driven.wait_front(294.9);
    driven.set("DEPOSE=1");
    driven.wait_front(305);
    EXPECT_EQ(driven.incidents(), texts{});
    driven.run_ms(1);
    EXPECT_EQ(driven.incidents(), texts{glue_spilled});
}

// A base above blocker 1, which stands half out, one askew under the press, which stands on it, and
// the cup low with a part.
void set_up_every_refusal(station_driver& driven) {
    driven.set("MTA=1");
    driven.run_ms(15'000);
    driven.set("MT=1");
    driven.wait_front(100);
    driven.set("MTA=0");
    driven.wait_front(520);
    driven.set("MTA=1");
    driven.run_ms(10);
    driven.set("MTA=0");
    driven.wait_front(860);
    driven.set("MT=0");
    EXPECT_EQ(driven.front_mm(1), 340);
    driven.fetch_part();
    driven.set("DESV=1 DESP=1 BZ1=1");
    driven.run_ms(1000);
    EXPECT_EQ(driven.incidents(), (texts{blocker_refused[0], press_stopped}));
    driven.set("DESP=0");
}

TEST(Millisecond, ItsIncidentsComeInTheStationsOrderAndCarryItsEnd) {
    station_driver driven;
    set_up_every_refusal(driven);
    driven.set("ASPI=0");
    driven.run_ms(97);
    driven.set("BZ1=0");
    driven.run_ms(1);
    driven.set("BZ1=1");
    driven.run_ms(1);
    driven.set("SORT=1 DESP=1 MT=1 DEPOSE=1");
    EXPECT_EQ(driven.incidents(), texts{});
    driven.run_ms(1);
    const std::vector<station_incident> all = driven.take_incidents();
    const texts expected = {drawer_refused,     part_lost, press_stopped,
                            blocker_refused[0], base_held, glue_spilled};
    ASSERT_EQ(all.size(), expected.size());
    for (std::size_t i = 0; i < all.size(); ++i) {
        EXPECT_EQ(all[i].text, expected[i]);
        EXPECT_EQ(static_cast<double>(all[i].ms) / 1000, driven.model.state().time_s);
    }
}

TEST(Times, ThePressCountsTheMillisecondInWhichItBecomesLow) {
    station_driver driven;
    driven.bring_to_zone(3);
    driven.play({{"DESP=1", "pb=1"}});
    EXPECT_EQ(driven.wait("timer10_term"), 10'000 - 1);
}

TEST(Times, TheMagazineCountsTheMillisecondInWhichTheDrawerIsIn) {
    station_driver driven;
    EXPECT_EQ(driven.wait("pp"), 500);
    station_driver again;
    again.play({{"SORT=1", "ts=1"}, {"SORT=0 RENT=1", "te=1"}});
    EXPECT_EQ(again.wait("pp"), 500 - 1);
}

TEST(Times, TheVacuumBeginsAfterTheMillisecondInWhichTheCupTakesHold) {
    station_driver driven;
    driven.play({{"", "pp=1"}, {"SORT=1", "ts=1"}, {"DESV=1", "vb=1"}, {"ASPI=1", "pp=0"}});
    EXPECT_EQ(driven.wait("vide"), 200);
}

TEST(Times, TheVacuumWaitsWhileTheSuctionIsOff) {
    station_driver driven;
    driven.play({{"", "pp=1"}, {"SORT=1", "ts=1"}, {"DESV=1", "vb=1"}, {"ASPI=1", "pp=0"}});
    driven.run_ms(120);
    driven.set("ASPI=0");
    driven.run_ms(99);
    EXPECT_EQ(driven.sensor("vide"), 0);
    driven.set("ASPI=1");
    EXPECT_EQ(driven.wait("vide"), 80);
}

TEST(Times, ThePartDropsInTheHundredthMillisecondWithoutSuction) {
    station_driver driven;
    driven.fetch_part();
    driven.set("ASPI=0");
    EXPECT_EQ(driven.wait("vide", 0), 100);
}

TEST(Times, TheLoaderBeginsAtTimeZeroAndAfterEachBase) {
    station_driver driven;
    driven.set("MTA=1 MT=1");
    for (int loaded = 1; loaded <= 5; ++loaded) {
        EXPECT_EQ(driven.model.state().bases_in_stock, 1000 - loaded);
        driven.run_ms(4999);
        EXPECT_EQ(driven.model.state().bases_in_stock, 1000 - loaded);
        driven.run_ms(1);
    }
}

TEST(Times, TheGlueCountsEveryMillisecondWithABaseAtTheZone) {
    station_driver driven;
    driven.bring_to_zone(1);
    driven.set("DEPOSE=1");
    EXPECT_EQ(driven.wait("colle"), 1000);
}

}  // namespace
