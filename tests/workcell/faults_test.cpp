// The station with faults around it, as the panel then sees it.
#include "session/faults.h"

#include <random>

#include "tests/workcell/station_driver.h"

namespace {

using kind = fault_kind;

// Two stations under the same restless hand, one of them with faults, the other one never given
// the command `never`; `each_step` compares them every 10 ms.
template <typename EachStep>
void compare(station_model& plain, station_model& faulty, int never, EachStep each_step) {
    std::mt19937_64 random(7);
    for (int step = 0; step < 12'000; ++step) {
        if (step % 20 == 0) {
            const int index = static_cast<int>(random() % station_outputs.size());
            const int value = static_cast<int>(random() % 2);
            faulty.set_command(index, value);
            plain.set_command(index, index == never ? 0 : value);
            const station_desk desk = {step % 200 == 0, step % 300 == 0, step % 2000 == 0};
            for (station_model* each : {&plain, &faulty}) each->set_desk(desk);
        }
        plain.step(0.010);
        faulty.step(0.010);
        each_step();
    }
}

int lie(kind how, int value) {
    return how == kind::stuck0 ? 0 : how == kind::stuck1 ? 1 : 1 - value;
}

TEST(SensorFault, ChangesWhatThatSensorReportsAndNothingElse) {
    for (int name = 0; name < place_of(station_input::count); ++name)
        for (const kind each : {kind::stuck0, kind::stuck1, kind::inverted}) {
            workcell_model plain(5), inside(5);
            faulty_station faulty(inside);
            const std::string_view sensor = station_inputs[static_cast<std::size_t>(name)];
            ASSERT_TRUE(faulty.set_fault(sensor, each));
            int differences = 0;
            compare(plain, faulty, -1, [&] {
                for (int i = 0; i < place_of(station_input::count); ++i) {
                    const int value = plain.sensor(i);
                    differences += faulty.sensor(i) != (i == name ? lie(each, value) : value);
                }
            });
            EXPECT_EQ(differences, 0) << sensor << ' ' << fault_kind_word(each);
        }
}

TEST(DeadActuator, BehavesAsIfItWereNotCommanded) {
    for (int name = 0; name < place_of(station_output::count); ++name) {
        workcell_model plain(5), inside(5);
        faulty_station faulty(inside);
        const std::string_view actuator = station_outputs[static_cast<std::size_t>(name)];
        ASSERT_TRUE(faulty.set_fault(actuator, kind::dead));
        int differences = 0;
        compare(plain, faulty, name, [&] {
            for (int i = 0; i < place_of(station_input::count); ++i)
                differences += faulty.sensor(i) != plain.sensor(i);
        });
        EXPECT_EQ(differences, 0) << actuator;
        EXPECT_EQ(inside.state().incidents, plain.state().incidents) << actuator;
    }
}

// A station driven from outside its faults.
class faulty_driver : public station_driver {
public:
    faulty_driver() { outside = &faulty; }
    void set_fault(std::string_view name, kind what) {
        EXPECT_TRUE(faulty.set_fault(name, what)) << name;
    }
    void end_fault(std::string_view name) { EXPECT_TRUE(faulty.end_fault(name)) << name; }

    faulty_station faulty{model};
};

TEST(DeadActuator, ABlockerReturnsAndACylinderStays) {
    faulty_driver driven;
    driven.set("BZ1=1 SORT=1");
    driven.run_ms(400);
    EXPECT_EQ(driven.sensor("b1s"), 1);
    driven.set_fault("BZ1", kind::dead);
    driven.set_fault("SORT", kind::dead);
    driven.run_ms(400);
    EXPECT_EQ(driven.sensor("b1e"), 1);
    EXPECT_EQ(driven.model.state().drawer_out, 0.5);
    driven.end_fault("BZ1");
    driven.end_fault("SORT");
    driven.run_ms(400);
    EXPECT_EQ(driven.sensor("b1s"), 1);
    EXPECT_EQ(driven.sensor("ts"), 1);
}

TEST(DeadActuator, ADeadSuctionLetsGoOfItsPart) {
    faulty_driver driven;
    driven.fetch_part();
    driven.set_fault("ASPI", kind::dead);
    driven.run_ms(100);
    EXPECT_EQ(driven.sensor("vide"), 0);
    EXPECT_EQ(driven.incidents(), texts{part_lost});
}

TEST(SensorFault, DoesNotReachInit) {
    faulty_driver driven;
    for (const char* sensor : {"te", "vh", "ph", "b1e", "b2e", "b3e"})
        driven.set_fault(sensor, kind::stuck0);
    EXPECT_EQ(driven.sensor("init"), 1);
    driven.set_fault("init", kind::stuck0);
    EXPECT_EQ(driven.sensor("init"), 0);
}

}  // namespace
