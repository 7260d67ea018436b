// The task as the student gets it, in both languages, without what is hidden.
#include "lesson/exercise_task.h"

#include "tests/lesson/exercise_texts.h"

namespace {

using lines = std::vector<std::string>;

std::string task(const std::string& text, language in) {
    std::string shown;
    for (const std::string& line : task_lines(exercise_in(text), in)) shown += line + "\n";
    return shown;
}

TEST(ExerciseTask, TellsAllThatTheStudentMayKnow) {
    EXPECT_EQ(task(every_key, language::french),
              "Coller une base\n"
              "\n"
              "Amenez une base en zone 1\n"
              "et collez-la.\n"
              "\n"
              "Buts, dans cet ordre :\n"
              "  1. une base attend en zone 1 (à tenir 0.5 s, en 20 s, 2 points)\n"
              "  2. collée (1 point)\n"
              "\n"
              "À ne jamais faire :\n"
              "  - la presse descend sans base (-3 points)\n"
              "\n"
              "À la fin :\n"
              "  - une bonne base (3 points)\n"
              "  - aucun incident (1 point)\n"
              "\n"
              "Diagnostic : trouver ce qui est en panne, et de quelle panne (5 points)\n"
              "Pannes : te=stuck0, BZ2=slow\n"
              "Durée : 120 s\n"
              "Total : 12 points\n");
}

TEST(ExerciseTask, InEnglishWhereTheFileHasIt) {
    const std::string shown = task(every_key, language::english);
    EXPECT_TRUE(
        shown.starts_with("Glue a base\n\nBring a base to zone 1.\n\nGoals, in this order:\n"
                          "  1. a base waits at zone 1 (to be held for 0.5 s, within 20 s, "
                          "2 points)\n  2. collée (1 point)\n"))
        << shown;
    EXPECT_NE(shown.find("\nFaults: te=stuck0, BZ2=slow\nDuration: 120 s\nTotal: 12 points\n"),
              std::string::npos)
        << shown;
}

TEST(ExerciseTask, HidesWhatIsHidden) {
    for (const language in : {language::french, language::english}) {
        const std::string shown = task(every_key, in);
        for (const char* const word : {"b2s", "stuck1", "DEPOSE", "dead", "MTA", "p1ok", "DESP"})
            EXPECT_EQ(shown.find(word), std::string::npos) << word;
    }
}

TEST(ExerciseTask, ASmallOneHasNoEmptyParts) {
    EXPECT_EQ(task(whole + "points = 0\n", language::french),
              "T\n\nE\n\nButs, dans cet ordre :\n  1. G (0 point)\n\nTotal : 0 point\n");
    EXPECT_EQ(task(begun + "[[jamais]]\ntexte = \"J\"\nquand = [\"te=0\"]\n" +
                       "[diagnostic]\npannes = [\"te=late\"]\npoints = 0\n",
                   language::english),
              "T\n\nE\n\nNever:\n  - J\n\nDiagnosis: find what is faulty, and with which fault (0 "
              "points)\nTotal: 0 points\n");
}

}  // namespace
