// Recordings that are refused, or marked whatever they say of themselves.
#include <gtest/gtest.h>

#include "lesson/examiner.h"
#include "tests/lesson/marked_files.h"
#include "tests/recording/recorded_session.h"

namespace {

/// A small exercise whose station hides a fault, and a recording of it.
struct lamp_lesson {
    lamp_lesson() {
        task.title.french = "La butée";
        task.digest = "0";
        task.station.seed = 29;
        task.station.faults = {{"te", fault_kind::late}};
        task.station.hidden_faults = {{"b2s", fault_kind::stuck1}};
        task.goals.push_back(
            {{}, {{condition_place::output, "BZ1", 1, place_of(station_output::BZ1)}}, 0, {}, 2});
        task.balances.push_back({{}, session_count::bad, {}, 0, 1});
    }
    /// BZ1 is put out at 40 ms, and the session ends at 100 ms.
    std::string recording(bool with_exercise, const std::vector<station_fault>& told,
                          const station_fault* change = nullptr) const {
        workcell_model model(task.station.seed);
        station_run run(model);
        csv_keeper kept;
        exercise_examiner examiner(task, language::french);
        run.add_reader(kept);
        if (with_exercise) run.set_examiner(examiner);
        for (const station_fault& each : told) EXPECT_TRUE(run.set_fault(each));
        run.begin("");
        for (int i = 0; i < 10; ++i) {
            if (i == 5 && change) {
                EXPECT_TRUE(run.set_fault(*change));
            }
            run.step([&](int output) { return i >= 4 && output == place_of(station_output::BZ1); });
        }
        run.finish("fin demandée");
        return kept.text;
    }
    std::string recording() const { return recording(true, task.station.faults); }

    exercise task;
};

std::string changed(std::string text, const std::string& from, const std::string& to) {
    const std::size_t place = text.find(from);
    EXPECT_NE(place, std::string::npos) << from;
    return text.replace(place, from.size(), to);
}

TEST_F(Marking, ARecordingWithoutTheExerciseCountsWhereItWasSetUpAlike) {
    const lamp_lesson lesson;
    std::vector<station_fault> all = lesson.task.station.faults;
    all.push_back(lesson.task.station.hidden_faults[0]);
    for (const std::string& each : {lesson.recording(), lesson.recording(false, all)}) {
        const marked_recording found = marked(lesson.task, each);
        ASSERT_TRUE(found.standing) << found.refusal;
        EXPECT_EQ(found.result(), "reussi");
        EXPECT_EQ(found.standing->over_ms, 50);
        EXPECT_EQ(found.standing->points, 3);
    }
}

TEST_F(Marking, WhatTheRecordingSaysOfItsVerdictCountsForNothing) {
    const lamp_lesson lesson;
    std::string text = lesson.recording();
    for (const auto& [from, to] : {std::pair("50,exercice,but,1\n", ""),
                                   {"points,3/3", "points,0/9"},
                                   {"verdict,reussi", "verdict,echoue"},
                                   {"empreinte,0", "empreinte,1"}})
        text = changed(text, from, to);
    EXPECT_EQ(marked(lesson.task, text).result(), "reussi");
}

TEST_F(Marking, AStepWhoseBeginningAloneIsRecordedIsNotWhole) {
    lamp_lesson lesson;
    lesson.task.goals = {
        {{}, {{condition_place::output, "MTA", 1, place_of(station_output::MTA)}}, 0, {}, 2}};
    const std::string full = lesson.recording();
    const std::string head = full.substr(0, full.find("100,exercice,"));
    // No sensor notices the belts at once.
    const struct {
        std::string rows;
        std::int64_t over_ms, reached_ms;
    } cuts[] = {
        {"", 50, -1},
        {"60,sortie,MTA,1\n", 60, -1},
        {"60,sortie,MTA,1\n60,sortie,MT,1\n", 60, -1},
        {"60,sortie,MTA,1\n60,sortie,MT,1\n80,sor", 60, -1},
        {"60,sortie,MTA,1\n70,sortie,MT,1\n", 70, 70},
    };
    for (const auto& [rows, over_ms, reached_ms] : cuts) {
        const marked_recording found = marked(lesson.task, head + rows);
        ASSERT_TRUE(found.standing) << found.refusal;
        EXPECT_EQ(found.standing->over_ms, over_ms) << rows;
        EXPECT_EQ(found.standing->goals[0].reached_ms.value_or(-1), reached_ms) << rows;
    }
}

class MarkingRefusals : public Marking {
protected:
    struct row {
        std::string recording, why;
    };

    void expect_refused(const lamp_lesson& lesson, const std::vector<row>& rows) {
        for (const auto& [recording, why] : rows) {
            const marked_recording found = marked(lesson.task, recording);
            EXPECT_EQ(found.result(), "refuse") << why;
            EXPECT_EQ(found.refusal, "a.csv: " + why);
        }
    }
};

TEST_F(MarkingRefusals, WhatWasSetUpOtherwise) {
    const lamp_lesson lesson;
    const std::string good = lesson.recording();
    const station_fault other = {"b2s", fault_kind::stuck0}, more = {"ph", fault_kind::stuck0};
    const std::vector<station_fault>& told = lesson.task.station.faults;
    expect_refused(
        lesson, {
                    {changed(good, "graine,29", "graine,3"),
                     "graine: 3 dans l'enregistrement, 29 dans l'exercice"},
                    {changed(good, "bases,1000", "bases,999"),
                     "bases: 999 dans l'enregistrement, 1000 dans l'exercice"},
                    {changed(good, "station,zk4", "station,zk5"),
                     "station: zk5 dans l'enregistrement, zk4 dans l'exercice"},
                    {lesson.recording(true, {}),
                     "pannes: aucune dans l'enregistrement, te=late dans l'exercice"},
                    {lesson.recording(false, told),
                     "pannes: te=late dans l'enregistrement, te=late et 1 cachée dans l'exercice"},
                    {lesson.recording(false, {told[0], other}),
                     "pannes: b2s=stuck0 te=late dans l'enregistrement, te=late et 1 cachée dans "
                     "l'exercice"},
                    {changed(good, "pannes_cachees,1", "pannes_cachees,2"),
                     "pannes cachées: 2 dans l'enregistrement, 1 dans l'exercice"},
                    {changed(good, "panne,b2s=stuck1", "panne,b2s=stuck0"),
                     "ses pannes cachées ne sont pas celles de l'exercice"},
                    {lesson.recording(true, told, &more), "la panne de ph change à 0.050 s"},
                });
}

TEST_F(MarkingRefusals, WhatTheStationCouldNotHaveAnsweredAndWhatIsNoRecording) {
    const lamp_lesson lesson;
    const std::string good = lesson.recording();
    expect_refused(lesson, {{changed(good, "40,sortie,BZ1,1\n", ""),
                             "à 50 ms, entree b1e: 0 dans l'enregistrement, rien à la station"},
                            {changed(good, "ms,genre", "ms,genres"),
                             "ligne 1: \"ms,genre,nom,valeur\" est attendu"},
                            {changed(good, "0,exercice,titre", "0,exercices,titre"),
                             "ligne 8: \"exercices\" n'est pas un genre"},
                            {good.substr(0, good.find("0,entree,") + 60),
                             "ligne 18: le fichier est coupé dans le premier bloc"},
                            {"", "ligne 1: \"ms,genre,nom,valeur\" est attendu"}});
    EXPECT_EQ(mark_recording(lesson.task, files / "nowhere").refusal,
              (files / "nowhere").string() + ": fichier ou dossier introuvable");
}

}  // namespace
