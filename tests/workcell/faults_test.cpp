#include "workcell/faults.h"

#include <random>

#include "tests/workcell/station_driver.h"

namespace {

using kind = workcell_fault_kind;

TEST(FaultText, IsANameOfTheStationAndAKindThatFits) {
    for (const char* sensor : station_inputs)
        for (const kind each : {kind::stuck0, kind::stuck1, kind::inverted}) {
            std::string reason;
            const auto fault =
                parse_fault(std::string(sensor) + '=' + fault_kind_name(each), reason);
            ASSERT_TRUE(fault) << sensor;
            EXPECT_EQ(fault->name, sensor);
            EXPECT_EQ(fault->kind, each);
            EXPECT_EQ(reason, "");
        }
    for (const char* actuator : station_outputs) {
        std::string reason;
        const auto fault = parse_fault(std::string(actuator) + "=dead", reason);
        ASSERT_TRUE(fault) << actuator;
        EXPECT_EQ(fault->name, actuator);
        EXPECT_EQ(fault->kind, kind::dead);
    }
}

TEST(FaultText, AnythingElseIsRefusedWithItsReason) {
    const char* sensor_kinds = "te est un capteur : ses pannes sont stuck0, stuck1, inverted";
    const char* actuator_kinds = "MT est un actionneur : sa seule panne est dead";
    const struct {
        std::string text, why;
    } cases[] = {
        {"", "une panne s'écrit NOM=PANNE"},
        {"te", "une panne s'écrit NOM=PANNE"},
        {"te=dead", sensor_kinds},
        {"te=", sensor_kinds},
        {"te=stuck2", sensor_kinds},
        {"te=stuck0 ", sensor_kinds},
        {"te=stuck0=stuck1", sensor_kinds},
        {"MT=stuck0", actuator_kinds},
        {"MT=inverted", actuator_kinds},
        {"MT=DEAD", actuator_kinds},
        {"=stuck0", "la station n'a ni capteur ni actionneur nommé \"\""},
        {"TE=stuck0", "la station n'a ni capteur ni actionneur nommé \"TE\""},
        {" te=stuck0", "la station n'a ni capteur ni actionneur nommé \" te\""},
    };
    for (const auto& [text, why] : cases) {
        std::string reason = "untouched";
        EXPECT_FALSE(parse_fault(text, reason)) << text;
        EXPECT_EQ(reason, text + ": " + why);
    }
}

TEST(Fault, IsRefusedWhereItDoesNotFit) {
    workcell_model model(1);
    EXPECT_FALSE(model.add_fault("te", kind::dead));
    EXPECT_FALSE(model.add_fault("MT", kind::stuck0));
    EXPECT_FALSE(model.add_fault("nothing", kind::stuck0));
    EXPECT_FALSE(model.add_fault("", kind::dead));
    EXPECT_TRUE(model.faults().empty());
    EXPECT_FALSE(model.remove_fault("te"));
    EXPECT_FALSE(model.remove_fault("nothing"));
}

TEST(Fault, TheLastOneOfANameHoldsUntilItIsRemoved) {
    workcell_model model(1);
    const int te = input_index("te");
    EXPECT_TRUE(model.add_fault("MT", kind::dead));
    EXPECT_TRUE(model.add_fault("te", kind::stuck0));
    EXPECT_EQ(model.sensor(te), 0);
    EXPECT_TRUE(model.add_fault("te", kind::stuck1));
    EXPECT_EQ(model.sensor(te), 1);
    ASSERT_EQ(model.faults().size(), 2u);
    EXPECT_EQ(model.faults()[0].name, "te");
    EXPECT_EQ(model.faults()[0].kind, kind::stuck1);
    EXPECT_EQ(model.faults()[1].name, "MT");
    EXPECT_TRUE(model.add_fault("te", kind::inverted));
    EXPECT_EQ(model.sensor(te), 0);
    EXPECT_TRUE(model.remove_fault("te"));
    EXPECT_EQ(model.sensor(te), 1);
    EXPECT_FALSE(model.remove_fault("te"));
}

// Two stations under the same restless hand, one of them with faults; `each_step` compares them
// every 10 ms.
template <typename EachStep>
void compare(workcell_model& plain, workcell_model& faulty, int never, EachStep each_step) {
    std::mt19937_64 random(7);
    for (int step = 0; step < 12'000; ++step) {
        if (step % 20 == 0) {
            const int index = static_cast<int>(random() % station_outputs.size());
            const int value = static_cast<int>(random() % 2);
            faulty.set_command(index, value);
            plain.set_command(index, index == never ? 0 : value);
            for (workcell_model* each : {&plain, &faulty}) {
                each->set_dc(step % 200 == 0);
                each->set_ac(step % 300 == 0);
                each->set_atu(step % 2000 == 0);
            }
        }
        plain.step(0.010);
        faulty.step(0.010);
        each_step();
    }
}

TEST(SensorFault, ChangesWhatThatSensorReportsAndNothingElse) {
    for (std::size_t name = 0; name < station_inputs.size(); ++name)
        for (const kind each : {kind::stuck0, kind::stuck1, kind::inverted}) {
            workcell_model plain(5), faulty(5);
            ASSERT_TRUE(faulty.add_fault(station_inputs[name], each));
            int differences = 0;
            compare(plain, faulty, -1, [&] {
                for (std::size_t i = 0; i < station_inputs.size(); ++i) {
                    const int value = plain.sensor(static_cast<int>(i));
                    const int lie = each == kind::stuck0 ? 0 : each == kind::stuck1 ? 1 : 1 - value;
                    differences += faulty.sensor(static_cast<int>(i)) != (i == name ? lie : value);
                }
            });
            EXPECT_EQ(differences, 0) << station_inputs[name] << ' ' << fault_kind_name(each);
        }
}

TEST(DeadActuator, BehavesAsIfItWereNotCommanded) {
    for (int name = 0; name < static_cast<int>(station_outputs.size()); ++name) {
        workcell_model plain(5), faulty(5);
        ASSERT_TRUE(faulty.add_fault(station_outputs[static_cast<std::size_t>(name)], kind::dead));
        int differences = 0;
        compare(plain, faulty, name, [&] {
            for (int i = 0; i < static_cast<int>(station_inputs.size()); ++i)
                differences += faulty.sensor(i) != plain.sensor(i);
        });
        EXPECT_EQ(differences, 0) << station_outputs[static_cast<std::size_t>(name)];
        EXPECT_EQ(faulty.state().incidents, plain.state().incidents);
    }
}

TEST(DeadActuator, ABlockerReturnsAndACylinderStays) {
    station_driver driven;
    driven.set("BZ1=1 SORT=1");
    driven.run_ms(400);
    EXPECT_EQ(driven.sensor("b1s"), 1);
    driven.model.add_fault("BZ1", kind::dead);
    driven.model.add_fault("SORT", kind::dead);
    driven.run_ms(400);
    EXPECT_EQ(driven.sensor("b1e"), 1);
    EXPECT_EQ(driven.model.state().drawer_out, 0.5);
    driven.model.remove_fault("BZ1");
    driven.model.remove_fault("SORT");
    driven.run_ms(400);
    EXPECT_EQ(driven.sensor("b1s"), 1);
    EXPECT_EQ(driven.sensor("ts"), 1);
}

TEST(SensorFault, DoesNotReachInit) {
    station_driver driven;
    for (const char* sensor : {"te", "vh", "ph", "b1e", "b2e", "b3e"})
        driven.model.add_fault(sensor, kind::stuck0);
    EXPECT_EQ(driven.sensor("init"), 1);
    driven.model.add_fault("init", kind::stuck0);
    EXPECT_EQ(driven.sensor("init"), 0);
}

}  // namespace
