// Exercise files: what each key becomes, its defaults, and the files themselves.
#include <sys/stat.h>

#include "tests/lesson/exercise_texts.h"
#include "tests/support/files.h"

namespace {

using conditions = std::vector<exercise_condition>;
using faults = std::vector<station_fault>;
using enum condition_place;

TEST(ExerciseFile, GivesEveryKey) {
    const exercise read = exercise_in(every_key);
    EXPECT_EQ(read.title, (lesson_text{"Coller une base", "Glue a base"}));
    EXPECT_EQ(read.task, (lesson_text{"Amenez une base en zone 1\net collez-la.\n",
                                      "Bring a base to zone 1.\n"}));
    const exercise_station& station = read.station;
    EXPECT_EQ(station.seed, 29u);
    EXPECT_EQ(station.bases, 12);
    EXPECT_EQ(station.parts, 0);
    EXPECT_EQ(station.duration_ms, 120'000);
    EXPECT_EQ(station.faults, (faults{{"te", fault_kind::stuck0}, {"BZ2", fault_kind::slow}}));
    const faults hidden = {{"b2s", fault_kind::stuck1}, {"DEPOSE", fault_kind::dead}};
    EXPECT_EQ(station.hidden_faults, hidden);
    ASSERT_EQ(read.goals.size(), 2u);
    EXPECT_EQ(read.goals[0],
              (exercise_goal{{"une base attend en zone 1", "a base waits at zone 1"},
                             {{input, "p1ok", 1, place_of(station_input::p1ok)},
                              {input, "b1s", 1, place_of(station_input::b1s)},
                              {output, "MTA", -2147483647 - 1, place_of(station_output::MTA)},
                              {desk, "atu", 0, 2}},
                             500,
                             20'000,
                             2}));
    EXPECT_EQ(read.bans,
              (std::vector<exercise_ban>{
                  {{"la presse descend sans base", "the press comes down without a base"},
                   {{output, "DESP", 1, place_of(station_output::DESP)},
                    {input, "p3ok", 0, place_of(station_input::p3ok)}},
                   3}}));
    EXPECT_EQ(read.hints,
              (std::vector<exercise_hint>{{{"MTA est resté à 1", "MTA stayed at 1"},
                                           {{output, "MTA", 1, place_of(station_output::MTA)},
                                            {input, "p1ok", 1, place_of(station_input::p1ok)}},
                                           2000}}));
    EXPECT_EQ(read.balances, (std::vector<exercise_balance>{
                                 {{"une bonne base", "a good base"}, session_count::good, 1, 4, 3},
                                 {{"aucun incident", ""}, session_count::incidents, {}, 0, 1}}));
    EXPECT_EQ(read.diagnosis, (exercise_diagnosis{hidden, 5}));
    EXPECT_EQ(total_points(read), 2 + 1 + 3 + 1 + 5);
}

TEST(ExerciseFile, WhatIsNotThereHasItsDefault) {
    const exercise read = exercise_in(whole);
    EXPECT_EQ(read.station, (exercise_station{0, 1000, 1000, {}, {}, {}}));
    const conditions out = {{input, "b1s", 1, place_of(station_input::b1s)}};
    EXPECT_EQ(read.goals, (std::vector<exercise_goal>{{{"G", ""}, out, 0, {}, 1}}));
    EXPECT_TRUE(read.bans.empty() && read.hints.empty() && read.balances.empty());
    EXPECT_FALSE(read.diagnosis);
    EXPECT_EQ(read.task.in(language::english), "E\n");
    const exercise more = exercise_in(whole +
                                      "[[jamais]]\ntexte = \"J\"\nquand = [\"te=1\"]\n"
                                      "[[indice]]\ntexte = \"I\"\nquand = [\"te=1\"]\n"
                                      "[diagnostic]\npannes = [\"te=late\"]\n");
    EXPECT_EQ(more.bans[0].penalty, 0);
    EXPECT_EQ(more.hints[0].hold_ms, 0);
    EXPECT_EQ(more.diagnosis->points, 1);
}

TEST(ExerciseFile, TimesAreMillisecondsHalfOnesUp) {
    const struct {
        std::string seconds;
        std::int64_t ms;
    } rows[] = {{"0", 0},
                {"0.0", 0},
                {"-0.0", 0},
                {"2", 2000},
                {"0.5", 500},
                {"1.0004999", 1000},
                {"1.0005", 1001},
                {"1.0235", 1024},
                {"1.0245", 1025},
                {"0.0005", 1},
                {"0.0004", 0},
                {"1e-9", 0},
                {"5e-324", 0},
                {"1e3", 1'000'000},
                {"0.9995", 1000},
                {"4.0015", 4002},
                {"1_000", 1'000'000},
                {"1000000000", 1'000'000'000'000},
                {"1e9", 1'000'000'000'000}};
    for (const auto& [seconds, ms] : rows)
        EXPECT_EQ(exercise_in(whole + "tenir_s = " + seconds + "\n").goals[0].hold_ms, ms)
            << seconds;
}

TEST(ExerciseFile, TimesAreRoundedAsTheyAreWritten) {
    for (int parts = 5; parts < 200'000; parts += 10) {  // 0.0005 s, 0.0015 s, ...
        const std::string digits = std::to_string(100'000 + parts % 10'000).substr(2);
        const std::string seconds = std::to_string(parts / 10'000) + "." + digits;
        ASSERT_EQ(exercise_in(whole + "tenir_s = " + seconds + "\n").goals[0].hold_ms,
                  parts / 10 + 1)
            << seconds;
    }
}

TEST(ExerciseFile, TheDeskComesBeforeInputsOfItsNames) {
    const exercise read = exercise_in(
        begun + "[[but]]\ntexte = \"G\"\nquand = [\"dc=1\", \"ac=0\", \"atu=1\", \"MT=7\"]\n");
    EXPECT_EQ(read.goals[0].conditions,
              (conditions{{desk, "dc", 1, 0},
                          {desk, "ac", 0, 1},
                          {desk, "atu", 1, 2},
                          {output, "MT", 7, place_of(station_output::MT)}}));
    EXPECT_EQ(text_of(read.goals[0].conditions[3]), "MT=7");
}

TEST(ExerciseFile, AConditionThatIsThereTwiceIsThereOnce) {
    std::string many = "\"b1s=1\"";
    for (int i = 0; i < 100'000; ++i) many += ",\"b1s=1\"";
    EXPECT_EQ(exercise_in(begun + "[[but]]\ntexte = \"G\"\nquand = [" + many + "]\n").goals,
              exercise_in(whole).goals);
}

TEST(ExerciseFile, AllFormsOfTomlAreTheSameFile) {
    exercise wanted = exercise_in(begun + "[station]\ngraine = 29\nduree_s = 2.5\n" + goal);
    const std::string rows[] = {
        begun + "station.graine = 29\nstation.duree_s = 2.5\n" + goal,
        begun + "station = {graine = 0x1D, duree_s = 2.5e0}\n" + goal,
        begun + "station = {graine = 29, duree_s = 2.5}\nbut = [{texte = 'G', quand = ['b1s=1']}]",
        begun + goal + "[station]\n\"graine\" = +2_9\nduree_s = 2.50\n",
        "\xEF\xBB\xBF" + begun + "[ station ] # heading\ngraine = 0b11101\nduree_s = 2.5\n" + goal,
        begun +
            "[[but]]\nquand = [ # a list\n  \"b1s=1\",\n]\ntexte = \"\"\"\nG\"\"\"\n"
            "[station]\nduree_s = 2.5\ngraine = 0o35\n",
        "titre = \"\\u0054\"\r\nenonce = \"\"\"\r\nE\r\n\"\"\"\r\nformat = 1\r\n"
        "[station]\r\ngraine = 29\r\nduree_s = 2.5\r\n[[but]]\r\n"
        "texte = \"G\"\r\nquand = [\"b1s=1\"]\r\n"};
    for (const std::string& text : rows) {
        exercise read = exercise_in(text);
        EXPECT_NE(read.digest, wanted.digest) << text;
        read.digest = wanted.digest;
        EXPECT_EQ(read, wanted) << text;
    }
}

TEST(ExerciseFile, TheDigestIsThatOfTheBytes) {
    // printf 'format = 1\ntitre = "T"\n...' | sha256sum
    EXPECT_EQ(exercise_in(whole).digest,
              "58210fe4cc83a53a72616815e082818b960e4ea22a89836ca5e593e538cbb5c3");
    EXPECT_NE(exercise_in(whole + "\n").digest, exercise_in(whole).digest);
}

TEST(ExerciseFile, WhatNeedsNoEndOfItsOwn) {
    const std::string balance = "[[bilan]]\ntexte = \"B\"\ncompte = \"mauvaises\"\nau_plus = 0\n";
    for (const std::string& text :
         {begun + balance + "[station]\nduree_s = 1\n", whole + balance,
          begun + "[diagnostic]\npannes = [\"te=late\"]\n", whole + "[station]\npannes = []\n",
          whole + "points = 0\n", whole + "points = 1000000000\n",
          whole + "[station]\ngraine = 9223372036854775807\n",
          whole + "[station]\nbases = 0\npieces = 1000000\n"})
        (void)exercise_in(text);
}

/// How reading a file ends: "" when it is an exercise.
std::string refusal_of(const std::string& path) {
    try {
        (void)read_exercise_file(path, workcell_model(0));
        return "";
    } catch (const failure& why) {
        EXPECT_EQ(why.status, exit_status::refused);
        return why.why;
    }
}

TEST(ExerciseFile, AFileIsReadOrRefusedInALineOrMore) {
    const current_folder here;
    write_bytes("good.toml", whole);
    write_bytes("bad\n.toml", "format = 2\n" + goal);
    write_bytes("long.toml", whole + std::string(1 << 20, '\n'));
    write_bytes("longest.toml", whole + std::string((1 << 20) - whole.size(), '\n'));
    std::filesystem::create_directory("folder");
    const struct {
        std::string path, why;
    } rows[] = {{"good.toml", ""},
                {"longest.toml", ""},
                {"none.toml", "none.toml: fichier ou dossier introuvable"},
                {"folder", "folder: c'est un dossier"},
                {"long.toml", "long.toml: plus de 1048576 octets, ce n'est pas un exercice"},
                {"/dev/zero", "/dev/zero: plus de 1048576 octets, ce n'est pas un exercice"},
                {"bad\n.toml",
                 "bad\\x0A.toml:1: format: 1 est attendu\n"
                 "bad\\x0A.toml:1: il manque titre\n"
                 "bad\\x0A.toml:1: il manque enonce"}};
    for (const auto& [path, why] : rows) EXPECT_EQ(refusal_of(path), why) << path;
}

TEST(ExerciseFile, ARefusalHasItsProblems) {
    const current_folder here;
    write_bytes("f.toml", whole + "points = -1\n");
    try {
        (void)read_exercise_file("f.toml", workcell_model(0));
        FAIL();
    } catch (const exercise_refusal& why) {
        ASSERT_EQ(why.problems.size(), 1u);
        EXPECT_EQ(why.problems[0].line, 7);
        EXPECT_EQ(why.why, "f.toml:7: " + why.problems[0].reason);
    }
}

}  // namespace
