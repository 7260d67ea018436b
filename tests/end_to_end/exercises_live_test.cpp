// The bundled exercises live: zk4sim faster than real time, and the hands of tests/lesson/hands on
// its link, by quorin-io.
#include <gtest/gtest.h>

#include "lesson/bundled_exercises.h"
#include "tests/end_to_end/zk4sim_session.h"
#include "tests/support/pages.h"

namespace {

outcome play_live(const std::string& exercise, const std::string& hands, const std::string& speed) {
    return run_program(
        {built("zk4sim"), "--exercise", exercise, "--headless", "--speed", speed, "--exec",
         "exec " QUORIN_SOURCE "/tests/lesson/play " + exercise + " " + hands},
        {"PATH=" QUORIN_PROGRAMS ":" + std::string(getenv("PATH"))}, seconds(100));
}

struct live_row {
    std::string exercise, speed;
};

/// Five minutes of production take their time: at half the speed, so that a busy machine keeps up.
const live_row rows[] = {
    {"01_premiere_commande", "20"}, {"02_bloqueurs", "20"},      {"03_coller_un_support", "20"},
    {"04_poser_une_piece", "20"},   {"05_un_bon_support", "20"}, {"06_trois_bons_supports", "20"},
    {"07_arret_urgence", "20"},     {"08_cadence", "10"},        {"09_capteur_bloque", "20"},
    {"10_deux_pannes", "20"},
};

class LiveExercise : public testing::TestWithParam<live_row> {
protected:
    const runtime_folder folder_;
    leaves_nothing nothing_;
};

TEST_P(LiveExercise, IsPassedByHandsThatDoItRight) {
    const outcome end = play_live(GetParam().exercise, "reference", GetParam().speed);
    EXPECT_EQ(end.status, 0) << end.err;
    EXPECT_NE(end.err.find("\nExercice réussi à "), std::string::npos) << end.err;
}

INSTANTIATE_TEST_SUITE_P(All, LiveExercise, testing::ValuesIn(rows),
                         [](const auto& row) { return row.param.exercise; });

class LiveExercises : public Zk4sim {};

TEST_F(LiveExercises, AreAllThere) {
    std::vector<std::string> names;
    for (const live_row& each : rows) names.push_back(each.exercise);
    EXPECT_EQ(bundled_exercise_names(), names);
}

TEST_F(LiveExercises, AreNotPassedByHandsThatDoSomethingWrong) {
    const live_row wrong[] = {{"01_premiere_commande", "les_deux_ensemble"},
                              {"04_poser_une_piece", "tiroir_bloque"},
                              {"09_capteur_bloque", "actionneur_accuse"}};
    for (const auto& [exercise, hands] : wrong) {
        const outcome end = play_live(exercise, hands, "20");
        EXPECT_EQ(end.status, 3) << exercise << " " << hands << end.err;
        EXPECT_NE(end.err.find("\nExercice non réussi, terminé à "), std::string::npos) << end.err;
    }
}

// Whoever changes the hands, the exercise or the station makes the recordings again.
TEST_F(LiveExercises, RecordingsComeAgainByteForByteFromTheirHands) {
    const temporary_folder copy;
    std::filesystem::copy(QUORIN_SOURCE "/tests/lesson", copy / "lesson",
                          std::filesystem::copy_options::recursive);
    const std::string recordings[] = {
        "01_premiere_commande/reference.csv", "01_premiere_commande/les_deux_ensemble.csv",
        "02_bloqueurs/mauvais_bloqueur.csv", "09_capteur_bloque/reference.csv"};
    std::vector<std::string> words = {copy / "lesson/record", QUORIN_PROGRAMS};
    for (const std::string& each : recordings) {
        std::filesystem::remove(copy / ("lesson/" + each));
        words.push_back(each);
    }
    const outcome end = run_program(words, {}, seconds(100));
    EXPECT_EQ(end.status, 0) << end.err;
    for (const std::string& each : recordings)
        EXPECT_EQ(bytes_of(copy / ("lesson/" + each)), page("tests/lesson/" + each)) << end.out;
}

}  // namespace
