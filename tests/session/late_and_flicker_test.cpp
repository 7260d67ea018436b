// Sensors that tell late, and those that fail for a moment in each second.
#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <random>

#include "session/faults.h"
#include "tests/session/recorded_run.h"

namespace {

using kind = fault_kind;

constexpr int delay_steps = 50;

// A station whose first sensor is set by the test.
struct faulty_sensor {
    int told() const { return faulty.sensor(0); }
    void step(int truth) {
        inside.sensors[0] = truth;
        faulty.step(0.010);
    }
    void set(kind what) { EXPECT_TRUE(faulty.set_fault("s1", what)); }
    void end() { EXPECT_TRUE(faulty.end_fault("s1")); }

    fake_station inside;
    faulty_station faulty{inside};
};

TEST(LateSensor, TellsEachChangeHalfASecondLate) {
    faulty_sensor late;
    late.set(kind::late);
    std::string told;
    for (int step = 1; step <= 120; ++step) {
        late.step((step >= 5 && step < 8) || step >= 20);
        told += late.told() == 1 ? '1' : '0';
    }
    const auto zeros = [](std::size_t n) { return std::string(n, '0'); };
    EXPECT_EQ(told, zeros(54) + "111" + zeros(12) + std::string(51, '1'));
}

TEST(LateSensor, UntilThenTellsWhatItToldWhenTheFaultWasSet) {
    const struct {
        std::optional<kind> before;
        int truth, first_half_second;
    } table[] = {{std::nullopt, 1, 1},
                 {std::nullopt, 0, 0},
                 {kind::stuck1, 0, 1},
                 {kind::stuck0, 1, 0},
                 {kind::inverted, 1, 0}};
    for (const auto& [before, truth, first_half_second] : table) {
        faulty_sensor late;
        if (before) late.set(*before);
        late.step(truth);
        late.set(kind::late);
        EXPECT_EQ(late.told(), first_half_second);
        for (int step = 1; step <= delay_steps; ++step) {
            late.step(truth);
            EXPECT_EQ(late.told(), first_half_second) << step;
        }
        late.step(truth);
        EXPECT_EQ(late.told(), truth);
    }
}

TEST(LateSensor, IsLateByTimeHoweverItIsCutIntoSteps) {
    for (const int step_ms : {1, 10, 100, 500}) {
        faulty_sensor late;
        late.set(kind::late);
        late.inside.sensors[0] = 1;
        int ms = 0;
        for (; late.told() == 0 && ms < 2000; ms += step_ms) late.faulty.step(step_ms / 1000.0);
        EXPECT_EQ(ms, step_ms + 500);
    }
}

TEST(LateSensor, SetAgainGoesOnAsItIs) {
    faulty_sensor late;
    late.set(kind::late);
    for (int step = 0; step < delay_steps; ++step) late.step(1);
    late.set(kind::late);
    late.step(1);
    EXPECT_EQ(late.told(), 1);
}

TEST(LateSensor, TellsTheTruthAtOnceWhenTheFaultEnds) {
    faulty_sensor late;
    late.set(kind::late);
    late.step(1);
    EXPECT_EQ(late.told(), 0);
    late.end();
    EXPECT_EQ(late.told(), 1);
    late.set(kind::late);
    late.step(0);
    EXPECT_EQ(late.told(), 1) << "what it told when the second fault was set";
}

TEST(LateSensor, TakesNoNoticeOfStepsThatAreNone) {
    faulty_sensor late;
    late.set(kind::late);
    late.step(1);
    for (const double none : {0.0, -5.0, std::numeric_limits<double>::quiet_NaN(),
                              -std::numeric_limits<double>::infinity()})
        late.faulty.step(none);
    EXPECT_EQ(late.told(), 0);
    late.faulty.step(0.5);
    EXPECT_EQ(late.told(), 1);
}

TEST(FlickeringSensor, ReadsZeroInTheFirstTenthOfEachSecond) {
    faulty_sensor flickering;
    flickering.inside.sensors[0] = 1;
    flickering.set(kind::flicker);
    EXPECT_EQ(flickering.told(), 0) << "at time 0";
    for (int ms = 10; ms <= 5000; ms += 10) {
        flickering.step(1);
        EXPECT_EQ(flickering.told(), ms % 1000 >= 100) << ms;
    }
    flickering.end();
    EXPECT_EQ(flickering.told(), 1);
}

TEST(FlickeringSensor, ReadsTheTruthOtherwise) {
    faulty_sensor flickering;
    for (int ms = 10; ms <= 450; ms += 10) flickering.step(0);
    flickering.set(kind::flicker);
    for (int ms = 460; ms <= 990; ms += 10) {
        flickering.step(ms % 30 == 0);
        EXPECT_EQ(flickering.told(), ms % 30 == 0) << ms;
    }
}

TEST(FlickeringSensor, IsToldFromTheFirstBlockOn) {
    recorded_run test;
    test.model.sensors[0] = 1;
    EXPECT_TRUE(test.run.set_fault({"s1", kind::flicker}));
    test.run.begin("");
    EXPECT_NE(test.new_rows().find("0,panne,s1,flicker\n"), std::string::npos);
    std::string rows;
    for (int step = 1; step <= 111; ++step) test.step();
    EXPECT_EQ(test.new_rows(), "100,entree,s1,1\n1000,entree,s1,0\n1100,entree,s1,1\n");
}

// What each fault makes of a sensor's history, worked out from the whole of it.
struct reference {
    int told(std::size_t now) const {
        if (!fault) return truth[now];
        switch (*fault) {
            case kind::stuck0:
                return 0;
            case kind::stuck1:
                return 1;
            case kind::inverted:
                return 1 - truth[now];
            case kind::late:
                return now <= set_at + delay_steps ? said : truth[now - delay_steps];
            case kind::flicker:
                return now % 100 < 10 ? 0 : truth[now];
            default:
                return -1;
        }
    }
    void change(std::optional<kind> wanted) {
        if (wanted == fault) return;
        set_at = truth.size() - 1;
        said = told(set_at);
        fault = wanted;
    }

    std::vector<int> truth = {0};
    std::optional<kind> fault;
    std::size_t set_at = 0;
    int said = 0;
};

TEST(SensorFaults, AreThoseOfANaiveReferenceInAnyOrder) {
    constexpr kind kinds[] = {kind::stuck0, kind::stuck1,  kind::inverted,
                              kind::late,   kind::flicker, kind::late};
    std::mt19937 random(11);
    std::map<kind, int> lies;
    for (int run = 0; run < 40; ++run) {
        faulty_sensor real;
        reference naive;
        for (int step = 0; step < 3000; ++step) {
            if (random() % 60 == 0) {
                const bool ends = random() % 4 == 0;
                const kind wanted = kinds[random() % std::size(kinds)];
                if (!ends) real.set(wanted);
                if (ends) {
                    EXPECT_EQ(real.faulty.end_fault("s1"), naive.fault.has_value());
                }
                naive.change(ends ? std::nullopt : std::optional(wanted));
                ASSERT_EQ(real.told(), naive.told(naive.truth.size() - 1));
            }
            const int truth = random() % 15 == 0 ? 1 - naive.truth.back() : naive.truth.back();
            naive.truth.push_back(truth);
            real.step(truth);
            ASSERT_EQ(real.told(), naive.told(naive.truth.size() - 1)) << run << ' ' << step;
            if (naive.fault && real.told() != truth) ++lies[*naive.fault];
        }
    }
    EXPECT_GT(lies[kind::late], 100);
    EXPECT_GT(lies[kind::flicker], 100);
}

}  // namespace
