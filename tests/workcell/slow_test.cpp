// What moves at a quarter of its speed.
#include <random>

#include "session/faults.h"
#include "tests/workcell/station_driver.h"

namespace {

// A station driven from outside its faults.
class slow_driver : public station_driver {
public:
    explicit slow_driver(std::string_view actuator = "") {
        outside = &faulty;
        if (!actuator.empty()) slow_down(actuator);
    }
    void slow_down(std::string_view actuator) {
        EXPECT_TRUE(faulty.set_fault(actuator, fault_kind::slow)) << actuator;
    }
    void end(std::string_view actuator) { EXPECT_TRUE(faulty.end_fault(actuator)) << actuator; }

    faulty_station faulty{model};
};

TEST(SlowActuator, IsOneThatMoves) {
    workcell_model model(1);
    for (int output = -1; output <= place_of(station_output::count); ++output) {
        const bool exists = output >= 0 && output < place_of(station_output::count);
        const bool moves = exists && output != place_of(station_output::DEPOSE) &&
                           output != place_of(station_output::ASPI);
        EXPECT_EQ(model.can_be_slow(output), moves) << output;
        model.set_slow(output, true);
    }
    for (const std::string name : {"DEPOSE", "ASPI"}) {
        std::string reason;
        EXPECT_FALSE(parse_fault(name + "=slow", model, reason));
        EXPECT_EQ(reason,
                  name + "=slow: " + name + " ne peut pas être lent : sa seule panne est dead");
        EXPECT_FALSE(faulty_station(model).set_fault(name, fault_kind::slow));
    }
}

TEST(SlowActuator, TakesFourTimesAsLongForItsStrokeAndItsPairTakesItsOwnTime) {
    const struct {
        const char *forth, *back, *slow, *rest, *end;
        int forth_ms, back_ms;
    } strokes[] = {
        {"BZ1=1", "BZ1=0", "BZ1", "b1e", "b1s", 1200, 1200},
        {"BZ2=1", "BZ2=0", "BZ2", "b2e", "b2s", 1200, 1200},
        {"BZ3=1", "BZ3=0", "BZ3", "b3e", "b3s", 1200, 1200},
        {"SORT=1 RENT=0", "SORT=0 RENT=1", "SORT", "te", "ts", 3200, 800},
        {"SORT=1 RENT=0", "SORT=0 RENT=1", "RENT", "te", "ts", 800, 3200},
        {"DESV=1 MONV=0", "DESV=0 MONV=1", "DESV", "vh", "vb", 2400, 600},
        {"DESV=1 MONV=0", "DESV=0 MONV=1", "MONV", "vh", "vb", 600, 2400},
        {"DESP=1 MONP=0", "DESP=0 MONP=1", "DESP", "ph", "pb", 4000, 1000},
        {"DESP=1 MONP=0", "DESP=0 MONP=1", "MONP", "ph", "pb", 1000, 4000},
    };
    for (const auto& [forth, back, slow, rest, end, forth_ms, back_ms] : strokes) {
        slow_driver driven(slow);
        const struct {
            const char *command, *from, *to;
            int ms;
        } ways[] = {{forth, rest, end, forth_ms}, {back, end, rest, back_ms}};
        for (const auto& [command, from, to, ms] : ways) {
            driven.set(command);
            driven.run_ms(ms / 50);
            EXPECT_EQ(driven.sensor(from), 1) << slow << ' ' << from;
            driven.run_ms(1);
            EXPECT_EQ(driven.sensor(from), 0) << slow << ' ' << from;
            driven.run_ms(ms - 2 * (ms / 50) - 2);
            EXPECT_EQ(driven.sensor(to), 0) << slow << ' ' << to;
            driven.run_ms(1);
            EXPECT_EQ(driven.sensor(to), 1) << slow << ' ' << to;
            driven.run_ms(ms / 50);
        }
    }
}

TEST(SlowActuator, ABeltMovesAQuarterOfItsWayWithoutDrift) {
    slow_driver driven;
    driven.set("MTA=1 MT=1");
    driven.wait_front(100);
    const double from = driven.front_mm();
    driven.slow_down("MT");
    driven.run_ms(1);
    EXPECT_EQ(driven.front_mm(), from + 0.025);
    driven.run_ms(7999);
    EXPECT_EQ(driven.front_mm(), from + 200);
    driven.end("MT");
    driven.run_ms(1000);
    EXPECT_EQ(driven.front_mm(), from + 300);
}

TEST(SlowActuator, ASlowWaitingBeltLeavesTheMainBeltItsSpeed) {
    for (std::uint64_t seed = 0; seed < 20; ++seed) {
        workcell_model model(seed);
        const double start = model.state().bases[0].front_mm;
        model.set_slow(place_of(station_output::MTA), true);
        for (const auto belt : {station_output::MTA, station_output::MT})
            model.set_command(place_of(belt), 1);
        model.step(-start / 25);
        EXPECT_EQ(model.state().bases[0].front_mm, 0);
        model.step(0.001);
        EXPECT_EQ(model.state().bases[0].front_mm, 0.025);
        model.step(1);
        EXPECT_EQ(model.state().bases[0].front_mm, 100.025);
    }
}

TEST(SlowActuator, IsAsFastAsEverFromTheNextStepOnWhenTheFaultEnds) {
    slow_driver driven("SORT");
    driven.set("SORT=1");
    driven.run_ms(402);
    EXPECT_EQ(driven.model.state().drawer_out, 100.5 / 800);
    driven.end("SORT");
    driven.run_ms(300);
    EXPECT_EQ(driven.model.state().drawer_out, 400.5 / 800);
    EXPECT_TRUE(driven.faulty.set_fault("SORT", fault_kind::slow));
    EXPECT_TRUE(driven.faulty.set_fault("SORT", fault_kind::dead));
    driven.run_ms(10);
    EXPECT_EQ(driven.model.state().drawer_out, 400.5 / 800);
    driven.end("SORT");
    driven.run_ms(399);
    EXPECT_EQ(driven.model.state().drawer_out, 799.5 / 800);
    driven.run_ms(1);
    EXPECT_EQ(driven.model.state().drawer_out, 1);
}

// A cylinder that was slow for a while may come to a limit between two of its usual places.
TEST(SlowActuator, StopsExactlyAtItsLimitsWhereverItWasSlow) {
    for (int slow_ms = 0; slow_ms < 9; ++slow_ms) {
        slow_driver blocker;
        blocker.set("MTA=1 MT=1");
        blocker.wait_front(340);
        blocker.slow_down("BZ1");
        blocker.set("MT=0 BZ1=1");
        blocker.run_ms(slow_ms);
        blocker.end("BZ1");
        blocker.run_ms(1000);
        EXPECT_EQ(blocker.model.state().blockers_out[0], 0.5) << slow_ms;
        blocker.slow_down("BZ1");
        blocker.run_ms(1000);
        EXPECT_EQ(blocker.incidents(), texts{blocker_refused[0]}) << slow_ms;

        slow_driver press;
        press.set("MTA=1 MT=1");
        press.wait_front(860);
        press.slow_down("DESP");
        press.set("MT=0 DESP=1");
        press.run_ms(slow_ms);
        press.end("DESP");
        press.run_ms(2000);
        EXPECT_EQ(press.model.state().press_down, 0.9) << slow_ms;
        press.slow_down("DESP");
        press.run_ms(1000);
        EXPECT_EQ(press.incidents(), texts{press_stopped}) << slow_ms;
    }
}

TEST(SlowActuator, IsStillRefusedTheSameMotion) {
    slow_driver driven;
    driven.set("SORT=1 DESV=1");
    driven.run_ms(2000);  // The cup is low, the drawer half-way.
    EXPECT_EQ(driven.incidents(), texts{drawer_refused});
    driven.slow_down("SORT");
    driven.run_ms(100);
    driven.end("SORT");
    driven.run_ms(100);
    EXPECT_EQ(driven.incidents(), texts{});
}

TEST(SlowActuator, GivesTheSameHistoryHoweverTheTimeIsCut) {
    std::vector<double> ends[2];
    for (const int cut : {0, 1}) {
        workcell_model model(3);
        std::mt19937_64 random(5);
        for (int step = 0; step < 20'000; ++step) {
            if (random() % 20 == 0)
                model.set_command(static_cast<int>(random() % station_outputs.size()),
                                  static_cast<int>(random() % 2));
            if (random() % 50 == 0)
                model.set_slow(static_cast<int>(random() % station_outputs.size()),
                               random() % 2 == 0);
            for (int part = 0; part < (cut ? 8 : 1); ++part) model.step(cut ? 0.00125 : 0.010);
            const workcell_state now = model.state();
            ends[cut].insert(ends[cut].end(), {now.drawer_out, now.cup_down, now.press_down,
                                               now.blockers_out[1], double(now.incidents)});
            for (const workcell_base& each : now.bases) ends[cut].push_back(each.front_mm);
        }
    }
    EXPECT_EQ(ends[0], ends[1]);
}

}  // namespace
