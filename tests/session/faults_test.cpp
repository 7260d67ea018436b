// Faults around any station: how they are written, and what they change.
#include "session/faults.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>

namespace {

using kind = fault_kind;
using enum fault_kind;

constexpr std::string_view input_names[] = {"door", "lamp", "both"};
constexpr std::string_view output_names[] = {"motor", "valve", "both"};
constexpr station_incident sad = {7, "triste"};

// Its sensors are set by the test, its commands are what it was given last.
class toy_station : public station_model {
public:
    std::array<int, 3> sensors{};
    std::array<std::int32_t, 3> commands{};
    std::vector<std::array<std::int32_t, 3>> stepped_with;
    station_desk desk;

    std::string_view name() const override { return "toy"; }
    name_span inputs() const override { return input_names; }
    name_span outputs() const override { return output_names; }
    void set_command(int output, std::int32_t value) override {
        commands.at(static_cast<std::size_t>(output)) = value;
    }
    void step(double) override { stepped_with.push_back(commands); }
    int sensor(int input) const override { return sensors.at(static_cast<std::size_t>(input)); }
    void set_desk(const station_desk& now) override { desk = now; }
    station_counts counts() const override { return {2, 3}; }
    std::span<const station_incident> incidents() const override { return {&sad, 1}; }
    std::vector<station_fact> facts() const override { return {{"graine", "29"}}; }
    // The motor alone can be slow.
    bool can_be_slow(int output) const override { return output == 0; }
    void set_slow(int output, bool slow) override {
        ASSERT_EQ(output, 0);
        motor_is_slow = slow;
    }
    bool motor_is_slow = false;
};

std::optional<station_fault> parsed(const std::string& text, std::string& reason) {
    return parse_fault(text, toy_station(), reason);
}

TEST(FaultText, IsANameOfTheStationAndAKindThatFits) {
    const station_fault faults[] = {{"door", stuck0}, {"door", stuck1}, {"lamp", inverted},
                                    {"both", stuck0}, {"door", late},   {"lamp", flicker},
                                    {"motor", dead},  {"motor", slow},  {"valve", dead}};
    for (const station_fault& each : faults) {
        std::string reason = "untouched";
        EXPECT_EQ(parsed(each.name + '=' + std::string(fault_kind_word(each.kind)), reason), each);
        EXPECT_EQ(reason, "untouched");
        EXPECT_TRUE(fault_fits(each.name, each.kind, toy_station()));
    }
}

TEST(FaultText, AnythingElseIsRefusedWithItsReason) {
    const std::string kinds = "stuck0, stuck1, inverted, late, flicker";
    const std::string door = "door est un capteur : ses pannes sont " + kinds;
    const std::string both = "both est un capteur : ses pannes sont " + kinds;
    const std::string motor = "motor est un actionneur : ses pannes sont dead, slow";
    const std::string valve = "valve est un actionneur : sa seule panne est dead";
    const std::string none = "la station n'a ni capteur ni actionneur nommé ";
    const struct {
        std::string text, why;
    } cases[] = {
        {"", "une panne s'écrit NOM=PANNE"},
        {"door", "une panne s'écrit NOM=PANNE"},
        {"door=dead", door},
        {"door=", door},
        {"door=stuck2", door},
        {"door=stuck0 ", door},
        {"door=stuck0=stuck1", none + "\"door=stuck0\""},
        {"both=dead", both},
        {"both=slow", both},
        {"door=slow", door},
        {"motor=late", motor},
        {"valve=flicker", valve},
        {"valve=slow", "valve ne peut pas être lent : sa seule panne est dead"},
        {"valve=Slow", valve},
        {"motor=stuck0", motor},
        {"motor=inverted", motor},
        {"motor=DEAD", motor},
        {"=stuck0", none + "\"\""},
        {"DOOR=stuck0", none + "\"DOOR\""},
        {" door=stuck0", none + "\" door\""},
    };
    for (const auto& [text, why] : cases) {
        std::string reason = "untouched";
        EXPECT_FALSE(parsed(text, reason)) << text;
        EXPECT_EQ(reason, text + ": " + why);
    }
}

TEST(FaultKinds, AreListedByWhatTheyBefall) {
    EXPECT_EQ(fault_kind_words(fault_place::sensor), "stuck0, stuck1, inverted, late, flicker");
    EXPECT_EQ(fault_kind_words(fault_place::actuator), "dead, slow");
}

TEST(FaultText, ANameMayHoldAnEqualsSign) {
    static constexpr std::string_view odd_names[] = {"a=b", "=", "a="};
    struct : toy_station {
        name_span inputs() const override { return odd_names; }
    } odd;
    for (const std::string_view name : odd_names) {
        std::string reason;
        EXPECT_EQ(parse_fault(std::string(name) + "=stuck1", odd, reason),
                  (station_fault{std::string(name), stuck1}))
            << reason;
    }
}

TEST(Fault, IsRefusedWhereItDoesNotFit) {
    toy_station toy;
    faulty_station faulty(toy);
    const station_fault misfits[] = {{"door", dead},      {"motor", stuck0}, {"both", dead},
                                     {"nothing", stuck0}, {"", dead},        {"motor", flicker},
                                     {"valve", slow},     {"both", slow},    {"door", slow}};
    for (const station_fault& each : misfits) {
        EXPECT_FALSE(fault_fits(each.name, each.kind, toy)) << each.name;
        EXPECT_FALSE(faulty.set_fault(each.name, each.kind)) << each.name;
        EXPECT_FALSE(faulty.end_fault(each.name)) << each.name;
    }
    EXPECT_TRUE(faulty.faults().empty());
}

TEST(Fault, TheLastOneOfANameHoldsUntilItIsEnded) {
    toy_station toy;
    faulty_station faulty(toy);
    EXPECT_TRUE(faulty.set_fault("motor", dead));
    EXPECT_TRUE(faulty.set_fault("lamp", inverted));
    EXPECT_TRUE(faulty.set_fault("door", stuck0));
    EXPECT_TRUE(faulty.set_fault("door", stuck1));
    const std::vector<station_fault> set = {{"door", stuck1}, {"lamp", inverted}, {"motor", dead}};
    EXPECT_EQ(faulty.faults(), set);  // In the order of the link.
    EXPECT_EQ(faulty.sensor(0), 1);
    EXPECT_TRUE(faulty.end_fault("door"));
    EXPECT_EQ(faulty.sensor(0), 0);
    EXPECT_FALSE(faulty.end_fault("door"));
}

TEST(SensorFault, ChangesAtOnceWhatThatSensorReads) {
    const struct {
        fault_kind kind;
        int reads_for_0, reads_for_1;
    } cases[] = {{stuck0, 0, 0}, {stuck1, 1, 1}, {inverted, 1, 0}};
    for (const auto& [kind, reads_for_0, reads_for_1] : cases) {
        toy_station toy;
        faulty_station faulty(toy);
        EXPECT_TRUE(faulty.set_fault("lamp", kind));
        for (const int value : {0, 1}) {
            toy.sensors.fill(value);
            EXPECT_EQ(faulty.sensor(0), value);
            EXPECT_EQ(faulty.sensor(1), value == 0 ? reads_for_0 : reads_for_1);
            EXPECT_EQ(faulty.sensor(2), value);
        }
    }
}

TEST(SensorFault, OfANameThatAnOutputBearsTooLeavesTheOutputAlone) {
    toy_station toy;
    faulty_station faulty(toy);
    EXPECT_TRUE(faulty.set_fault("both", stuck1));
    EXPECT_EQ(faulty.sensor(2), 1);
    faulty.set_command(2, 5);
    faulty.step(0.010);
    EXPECT_EQ(toy.stepped_with.back()[2], 5);
}

TEST(DeadActuator, IsGivenZeroFromTheNextStepOnThenTheLastCommandAgain) {
    toy_station toy;
    faulty_station faulty(toy);
    faulty.set_command(0, 1);
    faulty.set_command(1, 3);
    faulty.step(0.010);
    EXPECT_TRUE(faulty.set_fault("motor", dead));
    faulty.step(0.010);
    faulty.set_command(0, 2);
    faulty.step(0.010);
    EXPECT_TRUE(faulty.end_fault("motor"));
    faulty.step(0.010);
    const std::vector<std::array<std::int32_t, 3>> expected = {
        {1, 3, 0}, {0, 3, 0}, {0, 3, 0}, {2, 3, 0}};
    EXPECT_EQ(toy.stepped_with, expected);
}

TEST(SlowActuator, IsWhatTheModelIsToldAndStillGetsItsCommand) {
    toy_station toy;
    faulty_station faulty(toy);
    EXPECT_TRUE(faulty.set_fault("motor", slow));
    EXPECT_TRUE(toy.motor_is_slow);
    faulty.set_command(0, 7);
    EXPECT_EQ(toy.commands[0], 7);
    EXPECT_TRUE(faulty.set_fault("motor", dead));
    EXPECT_FALSE(toy.motor_is_slow);
    EXPECT_EQ(toy.commands[0], 0);
    EXPECT_TRUE(faulty.set_fault("motor", slow));
    EXPECT_TRUE(faulty.end_fault("motor"));
    EXPECT_FALSE(toy.motor_is_slow);
    EXPECT_EQ(toy.commands[0], 7);
}

TEST(SlowActuator, OfAStationAroundAnotherIsTheOneInside) {
    toy_station toy;
    faulty_station inner(toy), outer(inner);
    EXPECT_TRUE(inner.set_fault("motor", slow));
    outer.set_command(0, 1);
    EXPECT_TRUE(outer.set_fault("valve", dead));
    EXPECT_TRUE(toy.motor_is_slow);
    EXPECT_TRUE(outer.can_be_slow(0));
    EXPECT_FALSE(outer.can_be_slow(1));
}

TEST(FaultyStation, IsOtherwiseTheOneInside) {
    toy_station toy;
    faulty_station faulty(toy);
    EXPECT_EQ(faulty.name(), "toy");
    EXPECT_EQ(faulty.inputs().data(), toy.inputs().data());
    EXPECT_EQ(faulty.outputs().data(), toy.outputs().data());
    faulty.set_desk({.ac = true, .atu = true});
    EXPECT_EQ(toy.desk, (station_desk{.ac = true, .atu = true}));
    EXPECT_EQ(faulty.counts(), (station_counts{2, 3}));
    ASSERT_EQ(faulty.incidents().size(), 1u);
    EXPECT_EQ(faulty.incidents()[0].ms, 7);
    EXPECT_EQ(faulty.incidents()[0].text, "triste");
    ASSERT_EQ(faulty.facts().size(), 1u);
    EXPECT_EQ(faulty.facts()[0].value, "29");
}

TEST(FaultyStation, PlacesThatDoNotExistReadZeroAndSetNothing) {
    toy_station toy;  // It throws for such a place.
    faulty_station faulty(toy);
    for (const int place : {-1, 3, INT32_MIN, INT32_MAX}) {
        faulty.set_command(place, 1);
        EXPECT_EQ(faulty.sensor(place), 0) << place;
    }
    EXPECT_EQ(toy.commands, (std::array<std::int32_t, 3>{}));
}

}  // namespace
