// What went wrong with a session, in the window's language.
#include <gtest/gtest.h>

#include <set>

#include "session/system_errors.h"
#include "station_view/told_trouble.h"

namespace {

TEST(ToldTrouble, IsInTheWindowsLanguage) {
    const struct {
        std::string french, english;
    } cases[] = {{"a.csv: plus de place sur le disque; la suite n'est pas enregistrée",
                  "a.csv: no space left on the disk; the rest is not recorded"},
                 {"a: b.csv: fichier trop grand; la suite n'est pas enregistrée",
                  "a: b.csv: file too large; the rest is not recorded"},
                 {"a.csv: erreur 121; la suite n'est pas enregistrée",
                  "a.csv: error 121; the rest is not recorded"},
                 {"a.csv: personne ne lit; la suite attend, puis sera perdue",
                  "a.csv: nobody reads; the rest waits, and will be lost"},
                 {"a.csv: la fin n'a pas pu être écrite à temps",
                  "a.csv: the end could not be written in time"},
                 {"a.csv: à 50 ms, entree b1e: rien dans l'enregistrement, 0 à la station",
                  "a.csv: at 50 ms, input b1e: nothing in the recording, 0 at the station"},
                 {"f: à 40 ms, sortie MT: 1 dans l'enregistrement, rien à la station",
                  "f: at 40 ms, output MT: 1 in the recording, nothing at the station"},
                 {"f: à 90 ms, session bonnes: 3 dans l'enregistrement, 2 à la station",
                  "f: at 90 ms, session good: 3 in the recording, 2 at the station"},
                 {"f: à 2007 ms, incident 1: rien dans l'enregistrement, "
                  "colle répandue : pas de support en zone 1 à la station",
                  "f: at 2007 ms, incident 1: nothing in the recording, "
                  "glue spilled: no base at zone 1 at the station"},
                 {"x: à y ms, z: à 7 ms, panne te: late dans l'enregistrement, rien à la station",
                  "x: à y ms, z: at 7 ms, fault te: late in the recording, nothing at the station"},
                 {"journal prog: mémoire insuffisante", "journal prog: not enough memory"},
                 {"journal: trop de fichiers ouverts", "journal: too many open files"},
                 {"autre chose", "autre chose"},
                 {"", ""}};
    for (const auto& [french, english] : cases) {
        EXPECT_EQ(told_trouble(french, language::english), english);
        EXPECT_EQ(told_trouble(french, language::french), french);
    }
}

TEST(ToldTrouble, EveryWordOfTheSystemHasAnEnglishOne) {
    std::set<std::string> seen;
    for (int number = 1; number < 200; ++number) {
        const std::string french = system_error_words(number),
                          english = english_system_words(french);
        EXPECT_NE(english, french) << number;
        EXPECT_TRUE(seen.insert(english).second) << english;
    }
}

}  // namespace
