// Files that are no exercise, each with all the lines that are told of it.
#include "tests/lesson/broken_exercises.h"

namespace {

const std::string ban = "[[jamais]]\ntexte = \"J\"\nquand = [\"te=1\"]\n";
const std::string balance = "[[bilan]]\ntexte = \"B\"\ncompte = \"bonnes\"\n";

TEST(BrokenExercises, TheHeadIsThere) {
    const std::string file_keys =
        "inconnu ici; il y a format, titre, titre_en, enonce, enonce_en, station, but, jamais, "
        "indice, bilan, diagnostic, cache";
    expect_told({
        {"",
         {"1: il manque format", "1: il manque titre", "1: il manque enonce",
          "1: il manque un but, un bilan ou un diagnostic"}},
        {goal, {"1: il manque format", "1: il manque titre", "1: il manque enonce"}},
        {"format = 2\ntitre = \"T\"\nenonce = \"E\"\n" + goal, {"1: format: 1 est attendu"}},
        {"format = 1.0\ntitre = \"T\"\nenonce = \"E\"\n" + goal, {"1: format: 1 est attendu"}},
        {"titre = \"T\"\nformat = \"1\"\nenonce = \"E\"\n" + goal, {"2: format: 1 est attendu"}},
        {"format = 1\ntitre = 5\nenonce = [\"E\"]\n" + goal,
         {"2: titre: un texte entre guillemets est attendu",
          "3: enonce: un texte entre guillemets est attendu"}},
        {"format = 1\ntitre = \"\"\nenonce = \" \\n\\t\"\n" + goal,
         {"2: titre: ce texte est vide", "3: enonce: ce texte est vide"}},
        {"format = 1\nenonce = \"E\"\ntitre = \"\"\"\nT\nU\"\"\"\n" + goal,
         {"3: titre: une seule ligne est attendue, sans caractère de contrôle"}},
        {begun + "titre_en = \"a\\tb\"\nenonce_en = \"\\u001b[31m\"\n" + goal,
         {"4: titre_en: une seule ligne est attendue, sans caractère de contrôle",
          "5: enonce_en: caractère de contrôle dans le texte"}},
        {begun + "titre_en = \"\"\nenonce_en = \"\"\n" + goal,
         {"4: titre_en: ce texte est vide", "5: enonce_en: ce texte est vide"}},
        {begun + "titel = \"T\"\n" + goal, {"4: titel: " + file_keys}},
        {begun + "\"a\\nb\" = 1\n" + goal, {"4: a\\x0Ab: " + file_keys}},
        {begun + goal + "[[but2]]\n[[but2]]\n[x.y.z]\n",
         {"7: but2: " + file_keys, "9: x: " + file_keys}},
        {begun + "points = 3\n" + goal, {"4: points: " + file_keys}},
    });
}

TEST(BrokenExercises, TheStationCanBeSetUp) {
    const std::string supplies = "un nombre entier de 0 à 1000000 est attendu";
    const std::string duration =
        "duree_s: un nombre de secondes au-dessus de 0, jusqu'à 1000000000, est attendu";
    const std::string list = "une liste de textes est attendue: [\"NOM=...\"]";
    const auto station = [](const std::string& text) { return whole + "[station]\n" + text; };
    expect_told({
        {begun + "station = 3\n" + goal, {"4: station: une table est attendue: [station]"}},
        {whole + "[[station]]\n", {"7: station: une table est attendue: [station]"}},
        {station("graine = -1\n"), {"8: graine: un nombre entier 0 ou plus est attendu"}},
        {station("graine = 1.5\n"), {"8: graine: un nombre entier 0 ou plus est attendu"}},
        {station("bases = 1000001\npieces = -1\n"),
         {"8: bases: " + supplies, "9: pieces: " + supplies}},
        {station("bases = \"9\"\npieces = true\n"),
         {"8: bases: " + supplies, "9: pieces: " + supplies}},
        {station("duree_s = 0\n"), {"8: " + duration}},
        {station("duree_s = 0.0004\n"), {"8: " + duration}},
        {station("duree_s = -1\n"), {"8: " + duration}},
        {station("duree_s = nan\n"), {"8: " + duration}},
        {station("duree_s = inf\n"), {"8: " + duration}},
        {station("duree_s = 1000000001\n"), {"8: " + duration}},
        {station("duree_s = 1e300\n"), {"8: " + duration}},
        {station("duree_s = \"60\"\n"), {"8: " + duration}},
        {station("duree_s = 07:32:00\n"), {"8: " + duration}},
        {station("pannes = \"te=stuck0\"\n"), {"8: pannes: " + list}},
        {station("pannes = [\"te=stuck0\", 3]\n"), {"8: pannes: " + list}},
        {station("pannes = [\"te\"]\n"), {"8: pannes: te: une panne s'écrit NOM=PANNE"}},
        {station("pannes = [\n\"te=stuck0\",\n\"te=late\"]\n"),
         {"8: pannes: te=late: te a déjà une panne dans la liste"}},
        {station("pannes = [\"te=stuck0\"]\npannes_cachees = [\"te=stuck1\"]\n"),
         {"9: pannes_cachees: te est aussi dans pannes"}},
        {station("pannes_cachees = [\"zz=stuck0\", \"DEPOSE=slow\"]\n"),
         {"8: pannes_cachees: zz=stuck0: la station n'a ni capteur ni actionneur nommé \"zz\"",
          "8: pannes_cachees: DEPOSE=slow: DEPOSE ne peut pas être lent : sa seule panne est "
          "dead"}},
        {station("graines = 1\n"),
         {"8: graines: inconnu ici; il y a graine, bases, pieces, duree_s, pannes, "
          "pannes_cachees"}},
    });
}

TEST(BrokenExercises, GoalsBansAndHintsHaveConditions) {
    const auto when = [](const std::string& conditions) {
        return begun + "[[but]]\ntexte = \"G\"\nquand = " + conditions + "\n";
    };
    const std::string list = "6: quand: une liste de textes est attendue: [\"NOM=...\"]";
    expect_told({
        {begun + "[but]\ntexte = \"G\"\nquand = [\"b1s=1\"]\n",
         {"1: il manque un but, un bilan ou un diagnostic",
          "4: but: des tables sont attendues: [[but]]"}},
        {begun + "but = [1]\n",
         {"1: il manque un but, un bilan ou un diagnostic",
          "4: but: des tables sont attendues: [[but]]"}},
        {begun + "[[but]]\n", {"4: il manque texte", "4: il manque quand"}},
        {when("[]"), {"6: quand: au moins une condition est attendue"}},
        {when("\"b1s=1\""), {list}},
        {when("[1, \"b1s=1\"]"), {list}},
        {when("[[\"b1s=1\"]]"), {list}},
        {when("[\"b1s\"]"), {"6: quand: b1s: une condition s'écrit NOM=VALEUR"}},
        {when("[\"b1s=2\"]"), {"6: quand: b1s=2: une entrée vaut 0 ou 1"}},
        {when("[\"b1s=-1\"]"), {"6: quand: b1s=-1: une entrée vaut 0 ou 1"}},
        {when("[\"b1s=\"]"), {"6: quand: b1s=: une entrée vaut 0 ou 1"}},
        {when("[\"dc=2\"]"), {"6: quand: dc=2: le pupitre vaut 0 ou 1"}},
        {when("[\"MT=2147483648\"]"),
         {"6: quand: MT=2147483648: une sortie vaut un entier de 32 bits"}},
        {when("[\"MT= 1\"]"), {"6: quand: MT= 1: une sortie vaut un entier de 32 bits"}},
        {when("[\"MT!=1\"]"),
         {"6: quand: MT!=1: la station n'a ni entrée ni sortie nommée \"MT!\""}},
        {when("[\"B1S=1\", \"=1\", \"b1s=1\", \"mt=1\"]"),
         {"6: quand: B1S=1: la station n'a ni entrée ni sortie nommée \"B1S\"",
          "6: quand: =1: la station n'a ni entrée ni sortie nommée \"\"",
          "6: quand: mt=1: la station n'a ni entrée ni sortie nommée \"mt\""}},
        {when("[\"b1s=1\", \"te=0\", \"b1s=0\"]"), {"6: quand: b1s=0: b1s=1 est déjà demandé"}},
        {when("[\n\"b1s=1\",\n\"te\\u0007=0\"]"),
         {"6: quand: te\\x07=0: la station n'a ni entrée ni sortie nommée \"te\\x07\""}},
    });
}

TEST(BrokenExercises, GoalsBansAndHintsHaveTimesAndPoints) {
    const std::string seconds = "un nombre de secondes de 0 à 1000000000 est attendu";
    const std::string points = "un nombre entier de 0 à 1000000000 est attendu";
    expect_told({
        {whole + "tenir_s = -1\navant_s = -0.5\n",
         {"7: tenir_s: " + seconds, "8: avant_s: " + seconds}},
        {whole + "tenir_s = nan\navant_s = inf\n",
         {"7: tenir_s: " + seconds, "8: avant_s: " + seconds}},
        {whole + "tenir_s = 1000000000.1\navant_s = true\n",
         {"7: tenir_s: " + seconds, "8: avant_s: " + seconds}},
        {whole + "points = -1\n", {"7: points: " + points}},
        {whole + "points = 2.0\n", {"7: points: " + points}},
        {whole + "points = 9223372036854775807\n", {"7: points: " + points}},
        {whole + "texte_en = \"a\\nb\"\n",
         {"7: texte_en: une seule ligne est attendue, sans caractère de contrôle"}},
        {whole + "moins = 1\n",
         {"7: moins: inconnu ici; il y a texte, texte_en, quand, tenir_s, avant_s, points"}},
        {whole + ban + "moins = -3\n", {"10: moins: " + points}},
        {whole + ban + "points = 3\n",
         {"10: points: inconnu ici; il y a texte, texte_en, quand, moins"}},
        {whole + "[[indice]]\ntexte = \"I\"\nquand = [\"te=1\"]\navant_s = 3\n",
         {"10: avant_s: inconnu ici; il y a texte, texte_en, quand, tenir_s"}},
        {whole + "[[indice]]\nquand = [\"te=3\"]\n" + ban + "[[jamais]]\ntexte = 3\n",
         {"7: il manque texte", "8: quand: te=3: une entrée vaut 0 ou 1", "12: il manque quand",
          "13: texte: un texte entre guillemets est attendu"}},
    });
}

TEST(BrokenExercises, BalancesAndDiagnosesCanBeJudged) {
    const std::string any = "un nombre entier 0 ou plus est attendu";
    expect_told({
        {whole + balance, {"7: il manque au_moins ou au_plus"}},
        {whole + "[[bilan]]\ntexte = \"B\"\nau_plus = 1\n", {"7: il manque compte"}},
        {whole + "[[bilan]]\ntexte = \"B\"\nau_plus = 1\ncompte = \"bonne\"\n",
         {"10: compte: \"bonnes\", \"mauvaises\" ou \"incidents\" est attendu"}},
        {whole + "[[bilan]]\ntexte = \"B\"\nau_plus = 1\ncompte = 3\n",
         {"10: compte: \"bonnes\", \"mauvaises\" ou \"incidents\" est attendu"}},
        {whole + balance + "au_moins = 3\nau_plus = 2\n", {"10: au_moins: dépasse au_plus"}},
        {whole + balance + "au_moins = -1\nau_plus = 1.5\n",
         {"10: au_moins: " + any, "11: au_plus: " + any}},
        {whole + balance + "au_moins = 1\n" + balance, {"11: il manque au_moins ou au_plus"}},
        {whole + "[diagnostic]\n", {"7: il manque pannes"}},
        {whole + "[diagnostic]\npannes = []\n", {"8: pannes: au moins une panne est attendue"}},
        {whole + "[diagnostic]\npannes = [\"te=late\", \"te=stuck0\"]\n",
         {"8: pannes: te=stuck0: te a déjà une panne dans la liste"}},
        {whole + "[diagnostic]\npannes = [\"te=dead\"]\npoints = -1\n",
         {"8: pannes: te=dead: te est un capteur : ses pannes sont stuck0, stuck1, inverted, late, "
          "flicker",
          "9: points: un nombre entier de 0 à 1000000000 est attendu"}},
        {whole + "[[diagnostic]]\n", {"7: diagnostic: une table est attendue: [diagnostic]"}},
    });
}

TEST(BrokenExercises, ThereIsSomethingToDoAndAnEnd) {
    const std::string endless =
        "il manque duree_s: sans but ni diagnostic l'exercice ne finit pas de lui-même";
    expect_told({
        {begun, {"1: il manque un but, un bilan ou un diagnostic"}},
        {begun + ban + "[station]\nduree_s = 3\n",
         {"1: il manque un but, un bilan ou un diagnostic"}},
        {begun + "but = []\nbilan = []\n", {"1: il manque un but, un bilan ou un diagnostic"}},
        {begun + balance + "au_plus = 0\n", {"1: " + endless}},
        {begun + "[station]\ngraine = 1\n" + balance + "au_plus = 0\n", {"4: " + endless}},
        {begun + balance + "au_plus = 0\n[station]\nduree_s = 0\n",
         {"9: duree_s: un nombre de secondes au-dessus de 0, jusqu'à 1000000000, est attendu"}},
    });
}

TEST(BrokenExercises, AllIsToldByLines) {
    const std::string text =
        "titre = \"\"\n[diagnostic]\n[[but]]\ntexte = 1\nquand = [\"x=1\", "
        "\"y\"]\n[station]\nbases = -1\n";
    EXPECT_EQ(problems_in(text),
              (lines{"1: il manque format", "1: titre: ce texte est vide", "1: il manque enonce",
                     "2: il manque pannes", "4: texte: un texte entre guillemets est attendu",
                     "5: quand: x=1: la station n'a ni entrée ni sortie nommée \"x\"",
                     "5: quand: y: une condition s'écrit NOM=VALEUR",
                     "7: bases: un nombre entier de 0 à 1000000 est attendu"}));
}

}  // namespace
