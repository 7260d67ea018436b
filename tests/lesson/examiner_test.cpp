// A session with an exercise: what it tells, what it hides, when it ends.
#include "lesson/examiner.h"

#include <gtest/gtest.h>

#include "recording/event_rows.h"
#include "session/station_run.h"
#include "tests/session/fake_station.h"

namespace {

exercise_condition input(std::string name, int index) {
    return {condition_place::input, std::move(name), 1, index};
}

/// Two goals, a ban, a count, a diagnosis; s3 hides a fault.
exercise small_task() {
    exercise task;
    task.title = {"Un essai, \"court\"", "A try"};
    task.digest = std::string(64, 'a');
    task.station.hidden_faults = {{"s3", fault_kind::stuck1}, {"C2", fault_kind::dead}};
    task.goals.push_back({{"s1", ""}, {input("s1", 0)}, 10, {}, 2});
    task.goals.push_back(
        {{"C1 et s2", ""}, {{condition_place::output, "C1", 7, 0}, input("s2", 1)}, 0, {}, 3});
    task.bans.push_back({{"pas les deux", ""}, {input("s1", 0), input("s2", 1)}, 1});
    task.balances.push_back({{"une bonne", ""}, session_count::good, 1, {}, 4});
    task.diagnosis = exercise_diagnosis{task.station.hidden_faults, 5};
    return task;
}

struct examined_run {
    explicit examined_run(const exercise& task) : examiner(task, language::french), run(station) {
        run.add_reader(rows);
        run.set_examiner(examiner);
    }
    void step(std::array<int, 3> sensors, std::int32_t command = 0) {
        station.sensors = sensors;
        run.step([command](int output) { return output == 0 ? command : 0; });
    }

    fake_station station;
    exercise_examiner examiner;
    station_run run;
    row_collector rows;
};

TEST(Examiner, TellsTheExerciseAmongTheEvents) {
    const exercise task = small_task();
    examined_run session(task);
    ASSERT_TRUE(session.run.set_fault({"s2", fault_kind::late}));
    session.run.begin("");
    session.step({1, 0, 0});
    session.step({1, 0, 0}, 7);
    session.examiner.take_answer({{"s1", fault_kind::stuck0}});
    session.examiner.take_answer({{"C2", fault_kind::dead}, {"s3", fault_kind::stuck1}});
    EXPECT_FALSE(session.examiner.over());
    ASSERT_TRUE(session.run.end_fault("s2"));
    session.station.made.good = 1;
    session.step({1, 1, 0}, 7);
    EXPECT_TRUE(session.examiner.over());
    session.run.finish("exercice terminé");
    EXPECT_EQ(session.rows.rows(),
              "0,session,format,1\n0,session,station,essai\n0,panne,s2,late\n"
              "0,exercice,titre,\"Un essai, \"\"court\"\"\"\n"
              "0,exercice,empreinte," +
                  std::string(64, 'a') +
                  "\n0,exercice,pannes_cachees,2\n"
                  "0,pupitre,dc,0\n0,pupitre,ac,0\n0,pupitre,atu,0\n"
                  "0,entree,s1,0\n0,entree,s2,0\n0,entree,s3,1\n0,sortie,C1,0\n0,sortie,C2,0\n"
                  "10,entree,s1,1\n"
                  "10,sortie,C1,7\n20,exercice,but,1\n"
                  "20,panne,s2,\n30,entree,s2,1\n30,session,bonnes,1\n"
                  "30,exercice,diagnostic,s1=stuck0\n"
                  "30,exercice,diagnostic,C2=dead s3=stuck1\n"
                  "30,exercice,but,2\n30,exercice,jamais,1\n"
                  "30,exercice,points,13/14\n30,exercice,verdict,echoue\n"
                  "30,exercice,panne,s3=stuck1\n30,exercice,panne,C2=dead\n"
                  "30,session,fin,exercice terminé\n");
    EXPECT_FALSE(session.examiner.passed()) << "what must never happen did";
}

TEST(Examiner, WhatItHidesIsToldToNobody) {
    const exercise task = small_task();
    examined_run session(task);
    session.run.begin("");
    EXPECT_TRUE(session.run.faults().empty());
    session.step({0, 0, 0});
    EXPECT_EQ(session.run.model().sensor(2), 1) << "but it is there";
    EXPECT_EQ(session.rows.rows().find("stuck1"), std::string::npos);
    EXPECT_EQ(session.rows.rows().find("dead"), std::string::npos);
}

TEST(Examiner, TellsHowTheTaskStands) {
    const exercise task = small_task();
    examined_run session(task);
    session.run.begin("");
    const auto told = [&] {
        const auto now = session.examiner.standing();
        return now.title + "|" + now.goal + "|" + now.points;
    };
    EXPECT_EQ(told(), "Un essai, \"court\"|1|0/14");
    session.step({1, 0, 0});
    session.step({1, 0, 0});
    EXPECT_EQ(told(), "Un essai, \"court\"|2|2/14");
    session.examiner.take_answer(task.diagnosis->faults);
    session.step({0, 1, 0}, 7);
    EXPECT_EQ(told(), "Un essai, \"court\"||5/14")
        << "whether the answer is right is not told before the end";
    session.run.finish("fin demandée");
    EXPECT_EQ(told(), "Un essai, \"court\"||10/14") << "no good base";
}

TEST(Examiner, AnExerciseThatIsThereAtOnceIsOverBeforeAnyStep) {
    exercise task;
    task.title.french = "Rien";
    task.digest = "b";
    task.goals.push_back({{}, {{condition_place::input, "s1", 0, 0}}, 0, 0, 1});
    examined_run session(task);
    session.run.begin("");
    EXPECT_TRUE(session.examiner.over());
    session.run.finish("exercice terminé");
    EXPECT_TRUE(session.rows.rows().ends_with(
        "0,sortie,C2,0\n0,exercice,but,1\n0,exercice,points,1/1\n0,exercice,verdict,reussi\n"
        "0,session,fin,exercice terminé\n"))
        << session.rows.rows();
    EXPECT_TRUE(session.examiner.passed());
}

TEST(Examiner, AnAnswerThatNoStepSawIsNone) {
    const exercise task = small_task();
    examined_run session(task);
    session.run.begin("");
    session.step({0, 0, 0});
    session.examiner.take_answer(task.diagnosis->faults);
    session.run.finish("fin demandée");
    EXPECT_EQ(session.rows.rows().find("diagnostic"), std::string::npos);
    EXPECT_EQ(session.examiner.standing().points, "0/14");
}

}  // namespace
