// Texts of exercise files, and what their reader says to them.
#pragma once
#include <gtest/gtest.h>

#include "lesson/exercise_file.h"
#include "workcell/workcell_model.h"

/// Three lines; nothing to do yet.
inline const std::string begun = "format = 1\ntitre = \"T\"\nenonce = \"E\"\n";
/// Lines 4 to 6 of a file that begins so: all that a file needs.
inline const std::string goal = "[[but]]\ntexte = \"G\"\nquand = [\"b1s=1\"]\n";
inline const std::string whole = begun + goal;

/// Every table and every key.
inline const std::string every_key = R"(# A comment.
format = 1
titre = "Coller une base"
enonce = """
Amenez une base en zone 1
et collez-la.
"""
titre_en = "Glue a base"
enonce_en = "Bring a base to zone 1."

[station]
graine = 29
bases = 12
pieces = 0
duree_s = 120
pannes = ["te=stuck0", "BZ2=slow"]
pannes_cachees = ["b2s=stuck1", "DEPOSE=dead"]

[[but]]
texte = "une base attend en zone 1"
texte_en = "a base waits at zone 1"
quand = ["p1ok=1", "b1s=1", "MTA=-2147483648", "atu=0"]
tenir_s = 0.5
avant_s = 20
points = 2

[[but]]
texte = "collée"
quand = ["colle=1"]

[[jamais]]
texte = "la presse descend sans base"
texte_en = "the press comes down without a base"
quand = ["DESP=1", "p3ok=0"]
moins = 3

[[indice]]
texte = "MTA est resté à 1"
texte_en = "MTA stayed at 1"
quand = ["MTA=1", "p1ok=1"]
tenir_s = 2

[[bilan]]
texte = "une bonne base"
texte_en = "a good base"
compte = "bonnes"
au_moins = 1
au_plus = 4
points = 3

[[bilan]]
texte = "aucun incident"
compte = "incidents"
au_plus = 0

[diagnostic]
pannes = ["b2s=stuck1", "DEPOSE=dead"]
points = 5
)";

/// What is wrong with a file for the ZK4 station, as "LINE: reason"; empty when nothing is.
inline std::vector<std::string> problems_in(const std::string& text) {
    std::vector<std::string> told;
    const auto read = read_exercise(text, workcell_model(0));
    if (const auto* problems = std::get_if<exercise_problems>(&read))
        for (const exercise_problem& each : *problems)
            told.push_back(std::to_string(each.line) + ": " + each.reason);
    return told;
}

/// A file in which nothing is wrong.
inline exercise exercise_in(const std::string& text) {
    auto read = read_exercise(text, workcell_model(0));
    if (std::holds_alternative<exercise_problems>(read)) {
        ADD_FAILURE() << text << testing::PrintToString(problems_in(text));
        return {};
    }
    return std::get<exercise>(read);
}
