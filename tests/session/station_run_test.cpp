// The history of a station: which events each step tells, at which time, in which order.
#include <gtest/gtest.h>

#include <limits>

#include "tests/session/recorded_run.h"

namespace {

const std::string rest_of_first_block =
    "0,pupitre,dc,0\n0,pupitre,ac,0\n0,pupitre,atu,0\n"
    "0,entree,s1,0\n0,entree,s2,1\n0,entree,s3,0\n"
    "0,sortie,C1,0\n0,sortie,C2,0\n";

/// A run that has begun: its first block is behind it.
struct begun_run : recorded_run {
    begun_run() {
        run.begin("");
        new_rows();
    }
};

TEST(StationRun, TheFirstBlockIsTheStateBeforeTheFirstStep) {
    recorded_run test;
    test.model.set_up = {{"graine", "29"}, {"bases", "1000"}};
    test.model.sensors = {0, 1, 0};
    test.given = {1, 1};
    test.run.set_desk({true, true, true});
    test.run.begin("poste 7");
    EXPECT_EQ(test.kept.rows(),
              "0,session,format,1\n0,session,station,essai\n0,session,titre,poste 7\n"
              "0,session,graine,29\n0,session,bases,1000\n" +
                  rest_of_first_block);
    EXPECT_TRUE(test.model.stepped_s.empty());
}

TEST(StationRun, ASessionWithoutATitleTellsNone) {
    recorded_run test;
    test.model.sensors = {0, 1, 0};
    test.run.begin("");
    EXPECT_EQ(test.kept.rows(),
              "0,session,format,1\n0,session,station,essai\n" + rest_of_first_block);
}

TEST(StationRun, FaultsFromTheStartAreToldSensorsFirstAndInputsAsTheyShowThem) {
    recorded_run test;
    EXPECT_TRUE(test.run.set_fault({"C2", fault_kind::dead}));
    EXPECT_TRUE(test.run.set_fault({"s3", fault_kind::inverted}));
    EXPECT_TRUE(test.run.set_fault({"s1", fault_kind::stuck1}));
    test.run.begin("");
    EXPECT_EQ(test.kept.rows(),
              "0,session,format,1\n0,session,station,essai\n"
              "0,panne,s1,stuck1\n0,panne,s3,inverted\n0,panne,C2,dead\n"
              "0,pupitre,dc,0\n0,pupitre,ac,0\n0,pupitre,atu,0\n"
              "0,entree,s1,1\n0,entree,s2,0\n0,entree,s3,1\n"
              "0,sortie,C1,0\n0,sortie,C2,0\n");
    test.new_rows();
    test.step();
    EXPECT_EQ(test.new_rows(), "") << "the first step tells none of it again";
}

TEST(StationRun, WhatTheFirstStepTakesFollowsWithTheTimeZero) {
    begun_run test;
    test.run.set_desk({.atu = true});
    test.given = {1, 0};
    EXPECT_TRUE(test.run.set_fault({"s2", fault_kind::stuck1}));
    test.step();
    EXPECT_EQ(test.new_rows(),
              "0,panne,s2,stuck1\n0,pupitre,atu,1\n0,sortie,C1,1\n10,entree,s2,1\n");
}

TEST(StationRun, WithinAStepTheCausesComeFirstEachInTheOrderOfTheLink) {
    begun_run test;
    test.step();
    EXPECT_EQ(test.new_rows(), "");
    test.given = {5, -1};
    test.run.set_desk({true, true, true});
    EXPECT_TRUE(test.run.set_fault({"C1", fault_kind::dead}));
    EXPECT_TRUE(test.run.set_fault({"s3", fault_kind::stuck0}));
    EXPECT_TRUE(test.run.set_fault({"s1", fault_kind::inverted}));
    test.model.happens = [](fake_station& model) {
        model.wrong = {{13, "choc"}, {13, "fuite"}, {20, "casse, vis"}};
        model.sensors = {1, 1, 1};
        model.made = {2, 3};
    };
    test.step();
    EXPECT_EQ(test.new_rows(),
              "10,panne,s1,inverted\n10,panne,s3,stuck0\n10,panne,C1,dead\n"
              "10,pupitre,dc,1\n10,pupitre,ac,1\n10,pupitre,atu,1\n"
              "10,sortie,C1,5\n10,sortie,C2,-1\n"
              "13,incident,1,choc\n13,incident,2,fuite\n20,incident,3,\"casse, vis\"\n"
              "20,entree,s2,1\n"
              "20,session,bonnes,2\n20,session,mauvaises,3\n20,session,incidents,3\n");
    EXPECT_EQ(test.run.ms(), 20);
}

TEST(StationRun, OnlyWhatChangesIsTold) {
    begun_run test;
    test.given = {1, 1};
    test.model.happens = [](fake_station& model) {
        model.sensors = {1, 0, 0};
        model.made = {1, 0};
        if (model.stepped_s.size() == 3) model.wrong = {{30, "choc"}};
    };
    test.step();
    EXPECT_EQ(test.new_rows(),
              "0,sortie,C1,1\n0,sortie,C2,1\n10,entree,s1,1\n10,session,bonnes,1\n");
    test.step();
    EXPECT_EQ(test.new_rows(), "");
    test.given = {1, 0};
    test.step();
    EXPECT_EQ(test.new_rows(), "20,sortie,C2,0\n30,incident,1,choc\n30,session,incidents,1\n");
    test.step();
    EXPECT_EQ(test.new_rows(), "") << "the incident was the last step's";
}

TEST(StationRun, AFaultIsToldWhenAStepTakesItAndAsItIsThen) {
    using calls = std::vector<station_fault>;  // of kind `count`: it is ended
    constexpr fault_kind over = fault_kind::count;
    const struct {
        calls before, between;
        std::string rows;
    } table[] = {
        {{}, {{"s1", fault_kind::stuck1}, {"s1", over}}, ""},
        {{}, {{"s1", over}}, ""},
        {{}, {{"s2", fault_kind::stuck1}, {"s2", fault_kind::stuck0}}, "10,panne,s2,stuck0\n"},
        {{{"s1", fault_kind::stuck0}}, {{"s1", over}}, "10,panne,s1,\n"},
        {{{"s1", fault_kind::stuck0}}, {{"s1", over}, {"s1", fault_kind::stuck0}}, ""},
        {{{"s1", fault_kind::stuck0}},
         {{"s1", fault_kind::inverted}},
         "10,panne,s1,inverted\n20,entree,s1,1\n"},
        {{{"s1", fault_kind::stuck0}},
         {{"s1", fault_kind::stuck1}, {"s1", fault_kind::stuck0}},
         ""},
        {{{"C2", fault_kind::dead}}, {{"C2", over}}, "10,panne,C2,\n"},
    };
    for (const auto& [before, between, rows] : table) {
        begun_run test;
        const auto make = [&test](const calls& all) {
            for (const station_fault& each : all)
                EXPECT_TRUE(each.kind == over ? test.run.end_fault(each.name)
                                              : test.run.set_fault(each));
        };
        make(before);
        test.step();
        test.new_rows();
        make(between);
        test.step();
        EXPECT_EQ(test.new_rows(), rows);
    }
}

TEST(StationRun, AFaultThatDoesNotFitIsRefusedAndChangesNothing) {
    begun_run test;
    EXPECT_FALSE(test.run.set_fault({"s1", fault_kind::dead}));
    EXPECT_FALSE(test.run.set_fault({"C1", fault_kind::stuck0}));
    EXPECT_FALSE(test.run.set_fault({"none", fault_kind::stuck0}));
    EXPECT_FALSE(test.run.end_fault("none"));
    EXPECT_TRUE(test.run.faults().empty());
    test.step();
    EXPECT_EQ(test.new_rows(), "");
}

TEST(StationRun, KnowsTheFaultsSetAlsoThoseThatNoStepHasTaken) {
    begun_run test;
    EXPECT_TRUE(test.run.set_fault({"C1", fault_kind::dead}));
    EXPECT_TRUE(test.run.set_fault({"s2", fault_kind::stuck1}));
    const std::vector<station_fault> both = {{"s2", fault_kind::stuck1}, {"C1", fault_kind::dead}};
    EXPECT_EQ(test.run.faults(), both);
    test.step();
    EXPECT_EQ(test.run.faults(), both);
    EXPECT_TRUE(test.run.end_fault("s2"));
    EXPECT_EQ(test.run.faults(), std::vector<station_fault>({{"C1", fault_kind::dead}}));
}

TEST(StationRun, ACommandIsToldAsItWasGivenAndADeadActuatorDoesNotGetIt) {
    begun_run test;
    EXPECT_TRUE(test.run.set_fault({"C2", fault_kind::dead}));
    constexpr auto least = std::numeric_limits<std::int32_t>::min();
    constexpr auto most = std::numeric_limits<std::int32_t>::max();
    test.given = {least, most};
    test.step();
    EXPECT_EQ(test.new_rows(),
              "0,panne,C2,dead\n0,sortie,C1,-2147483648\n0,sortie,C2,2147483647\n");
    EXPECT_EQ(test.model.commands, (std::array<std::int32_t, 2>{least, 0}));
    EXPECT_TRUE(test.run.end_fault("C2"));
    test.step();
    EXPECT_EQ(test.model.commands, (std::array<std::int32_t, 2>{least, most}));
    EXPECT_EQ(test.new_rows(), "10,panne,C2,\n");
}

TEST(StationRun, TheModelIsGivenItsCommandsAndItsDeskBeforeItSteps) {
    begun_run test;
    station_desk seen_desk;
    std::array<std::int32_t, 2> seen_commands = {};
    test.model.happens = [&](fake_station& model) {
        seen_desk = model.desk;
        seen_commands = model.commands;
    };
    test.given = {3, 4};
    test.run.set_desk({.dc = true});
    test.step();
    EXPECT_EQ(seen_desk, station_desk{.dc = true});
    EXPECT_EQ(seen_commands, (std::array<std::int32_t, 2>{3, 4}));
    EXPECT_EQ(test.model.stepped_s, std::vector<double>{0.010});
}

TEST(StationRun, TheEndIsLastWithTheTimeOfTheLastStepsEnd) {
    for (const int steps : {0, 1, 1200}) {
        begun_run test;
        for (int i = 0; i < steps; ++i) test.step();
        test.run.set_desk({true, true, true});
        EXPECT_TRUE(test.run.set_fault({"s1", fault_kind::stuck1}));
        test.given = {1, 1};
        test.run.finish("panneau fermé");
        EXPECT_EQ(test.new_rows(), std::to_string(10 * steps) + ",session,fin,panneau fermé\n")
            << "what no step took is no row";
    }
}

TEST(StationRun, CountsItsIncidentsAndKeepsTheLast) {
    begun_run test;
    EXPECT_EQ(test.run.incidents(), 0);
    EXPECT_EQ(test.run.last_incident(), "");
    test.model.happens = [](fake_station& model) { model.wrong = {{1, "choc"}, {2, "fuite"}}; };
    test.step();
    test.model.happens = nullptr;
    test.step();
    EXPECT_EQ(test.run.incidents(), 2);
    EXPECT_EQ(test.run.last_incident(), "fuite");
}

TEST(StationRun, RestsWhenNothingHasHappenedForASecond) {
    begun_run test;
    EXPECT_FALSE(test.run.resting());
    for (int step = 1; step <= 300; ++step) {
        if (step == 150) test.model.sensors = {0, 0, 1};
        test.step();
        EXPECT_EQ(test.run.resting(), (step >= 100 && step < 150) || step >= 250) << step;
    }
    EXPECT_EQ(test.new_rows(), "1500,entree,s3,1\n");
}

TEST(StationRun, DoesNotRestWhileSomethingIsCommanded) {
    begun_run test;
    test.given = {0, -7};
    for (int step = 0; step < 300; ++step) {
        test.step();
        EXPECT_FALSE(test.run.resting()) << step;
    }
    test.given = {};
    for (int step = 0; step <= 100; ++step) {
        EXPECT_FALSE(test.run.resting()) << step;
        test.step();
    }
    EXPECT_TRUE(test.run.resting());
    test.given = {1, 0};
    test.step();
    EXPECT_FALSE(test.run.resting()) << "with the step that takes it";
}

}  // namespace
