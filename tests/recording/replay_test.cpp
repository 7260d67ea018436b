// Recordings run again: honest ones to the last bit, changed ones to the first difference.
#include <gtest/gtest.h>

#include "tests/recording/recorded_session.h"

namespace {

/// The rows of a session in which BZ1 is put out at 40 ms, and that ends at 1000 ms.
std::string blocker_session() {
    workcell_model model(29);
    station_run run(model);
    csv_keeper kept;
    run.add_reader(kept);
    run.begin("");
    for (int i = 0; i < 100; ++i)
        run.step([&](int output) { return i >= 4 && output == place_of(station_output::BZ1); });
    run.finish("panneau fermé");
    return kept.text;
}

std::string changed(std::string text, const std::string& from, const std::string& to) {
    const std::size_t place = text.find(from);
    EXPECT_NE(place, std::string::npos) << from;
    return text.replace(place, from.size(), to);
}

TEST(Replay, AnHonestRecordingComesAgain) {
    const std::string recording = blocker_session();
    const replayed result = replay_of(recording);
    EXPECT_EQ(result.complaint, "");
    EXPECT_EQ(result.out, recording);
    EXPECT_EQ(result.end, "panneau fermé");
    EXPECT_NE(recording.find("\n40,sortie,BZ1,1\n50,entree,b1e,0\n50,entree,init,0\n"),
              std::string::npos)
        << recording;
}

TEST(Replay, EveryRandomSessionComesAgain) {
    for (std::uint32_t seed = 0; seed < 100; ++seed) {
        const std::string recording = recorded_session(seed, 3000, seed % 2 ? "poste, \"7\"" : "");
        const replayed result = replay_of(recording);
        ASSERT_EQ(result.complaint, "") << "seed " << seed;
        ASSERT_EQ(result.out, recording) << "seed " << seed;
        ASSERT_EQ(result.end, "fin demandée") << "seed " << seed;
    }
}

struct forgery {
    std::string from, to, told;
};

void expect_told(const std::vector<forgery>& cases) {
    const std::string recording = blocker_session();
    for (const auto& [from, to, told] : cases) {
        const std::string forged = changed(recording, from, to);
        const replayed result = replay_of(forged);
        EXPECT_EQ(result.complaint, told) << "'" << from << "' as '" << to << "'";
        EXPECT_EQ(forged.compare(0, result.out.size(), result.out), 0) << "what agreed comes first";
    }
}

TEST(Replay, AnswersThatDifferAreToldWithTimeNameAndBothValues) {
    expect_told({
        {"0,entree,te,1\n", "0,entree,te,0\n",
         "f: à 0 ms, entree te: 0 dans l'enregistrement, 1 à la station"},
        {"50,entree,b1e,0\n", "",
         "f: à 50 ms, entree b1e: rien dans l'enregistrement, 0 à la station"},
        {"50,entree,b1e,0\n", "50,entree,b1e,7\n",
         "f: à 50 ms, entree b1e: 7 dans l'enregistrement, 0 à la station"},
        {"50,entree,init,0\n", "50,entree,init,0\n50,entree,te,0\n",
         "f: à 50 ms, entree te: 0 dans l'enregistrement, rien à la station"},
        {"50,entree,init,0\n", "50,entree,init,0\n60,entree,te,0\n",
         "f: à 60 ms, entree te: 0 dans l'enregistrement, rien à la station"},
        {"50,entree,b1e,0\n50,entree,init,0\n", "50,entree,init,0\n50,entree,b1e,0\n",
         "f: à 50 ms, entree b1e: rien dans l'enregistrement, 0 à la station"},
        {"50,entree,init,0\n", "50,entree,init,0\n50,incident,1,x\n",
         "f: à 50 ms, incident 1: x dans l'enregistrement, rien à la station"},
        {"50,entree,init,0\n", "50,entree,init,0\n50,session,bonnes,1\n",
         "f: à 50 ms, session bonnes: 1 dans l'enregistrement, rien à la station"},
    });
}

TEST(Replay, ChangedCausesAreToldByWhatTheyCause) {
    expect_told({
        {"40,sortie,BZ1,1\n", "45,sortie,BZ1,1\n",
         "f: à 45 ms, sortie BZ1: 1 dans l'enregistrement, rien à la station"},
        {"40,sortie,BZ1,1\n", "30,sortie,BZ1,1\n",
         "f: à 40 ms, entree b1e: rien dans l'enregistrement, 0 à la station"},
        {"40,sortie,BZ1,1\n", "",
         "f: à 50 ms, entree b1e: 0 dans l'enregistrement, rien à la station"},
        {"40,sortie,BZ1,1\n", "40,sortie,BZ1,2\n",
         "f: à 50 ms, entree b1e: 0 dans l'enregistrement, rien à la station"},
        {"40,sortie,BZ1,1\n", "40,sortie,BZ1,1\n40,pupitre,dc,1\n",
         "f: à 40 ms, pupitre dc: rien dans l'enregistrement, 1 à la station"},
        {"1000,session,fin", "1000,sortie,BZ1,0\n1000,session,fin",
         "f: à 1000 ms, sortie BZ1: 0 dans l'enregistrement, rien à la station"},
        {"1000,session,fin", "1005,session,fin",
         "f: à 1005 ms, session fin: panneau fermé dans l'enregistrement, rien à la station"},
        {"0,session,graine,29\n", "0,session,graine,029\n",
         "f: à 0 ms, session graine: 029 dans l'enregistrement, 29 à la station"},
        {"0,session,graine,29\n", "0,session,graine,29\n0,session,couleur,bleu\n",
         "f: à 0 ms, session couleur: bleu dans l'enregistrement, rien à la station"},
        {"0,entree,timer10_term,0\n", "",
         "f: à 0 ms, entree timer10_term: rien dans l'enregistrement, 0 à la station"},
        {"0,entree,timer10_term,0\n", "0,entree,timer10_term,0\n0,entree,x,0\n",
         "f: à 0 ms, entree x: 0 dans l'enregistrement, rien à la station"},
        {"0,sortie,BZ3,0\n", "",
         "f: à 0 ms, sortie BZ3: rien dans l'enregistrement, 0 à la station"},
    });
}

TEST(Replay, WhatCannotBeSetUpIsRefused) {
    const struct {
        std::string from, to, told;
    } cases[] = {
        {"0,session,graine,29\n", "", "l'enregistrement ne dit pas \"graine\""},
        {"0,session,bases,1000\n", "0,session,bases,mille\n",
         "bases: \"mille\" n'est pas un nombre"},
        {"0,session,pieces,1000\n", "0,session,pieces,99999999999\n",
         "pieces: \"99999999999\" n'est pas un nombre"},
        {"0,session,bases,1000\n", "0,session,bases,1000001\n",
         "bases: un entier de 0 à 1000000 est attendu"},
        {"0,session,pieces,1000\n", "0,session,pieces,-1\n",
         "pieces: un entier de 0 à 1000000 est attendu"},
    };
    for (const auto& [from, to, told] : cases)
        EXPECT_EQ(replay_of(changed(blocker_session(), from, to)).complaint, told) << to;
}

TEST(Replay, ACutRecordingComesAgainToItsLastWholeRow) {
    const std::string recording = recorded_session(3, 1500);
    const std::size_t block = recording.rfind("\n0,sortie,BZ3,0\n") + 16;
    for (std::size_t length = 0; length < recording.size();
         length += length < block + 200 ? 1 : 17) {
        const std::string cut = recording.substr(0, length);
        const replayed result = replay_of(cut);
        if (length < block) {
            EXPECT_NE(result.complaint, "") << length;
            EXPECT_EQ(result.out, "") << length;
        } else {
            EXPECT_EQ(result.complaint, "") << length;
            EXPECT_EQ(result.out, cut.substr(0, cut.rfind('\n') + 1)) << length;
        }
    }
}

TEST(Replay, WhatAnExerciseSaidGoesThroughAsItIs) {
    std::string recording =
        changed(blocker_session(), "0,pupitre,dc,0\n",
                "0,exercice,titre,Coller\n0,exercice,empreinte,ab\n0,pupitre,dc,0\n");
    recording = changed(recording, "50,entree,init,0\n", "50,entree,init,0\n50,exercice,but,1\n");
    recording = changed(recording, "1000,session,fin",
                        "1000,exercice,points,1/1\n1000,exercice,verdict,reussi\n1000,session,fin");
    const replayed result = replay_of(recording);
    EXPECT_EQ(result.complaint, "");
    EXPECT_EQ(result.out, recording);
}

// It speaks of the look behind a step, before the next step takes anything.
TEST(Replay, WhatAnExerciseSaidBehindACauseIsTold) {
    const std::string said = "exercice but: 1 dans l'enregistrement, rien à la station";
    expect_told({
        {"40,sortie,BZ1,1\n", "40,sortie,BZ1,1\n40,exercice,but,1\n", "f: à 40 ms, " + said},
        {"40,sortie,BZ1,1\n", "40,pupitre,dc,1\n40,exercice,but,1\n40,sortie,BZ1,1\n",
         "f: à 40 ms, " + said},
        {"50,entree,b1e,0\n", "45,exercice,but,1\n50,entree,b1e,0\n", "f: à 45 ms, " + said},
    });
}

TEST(Replay, ADifferenceIsOneLineWhateverTheTexts) {
    const std::string many(600, 'x');
    expect_told({
        {"40,sortie,BZ1,1\n", "35,incident,1,\"a\nb\"\n40,sortie,BZ1,1\n",
         "f: à 35 ms, incident 1: a\\x0Ab dans l'enregistrement, rien à la station"},
        {"40,sortie,BZ1,1\n", "35,incident,1," + many + "\n40,sortie,BZ1,1\n",
         "f: à 35 ms, incident 1: " + many.substr(0, 500) +
             "... dans l'enregistrement, rien à la station"},
    });
}

std::vector<std::string> lines_of(const std::string& text) {
    std::vector<std::string> lines;
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);) lines.push_back(line);
    return lines;
}

/// Another time, kind, name or value in the place of one.
std::string another(const std::string& field, std::size_t which, std::mt19937& random) {
    static const std::string kinds[] = {"session", "panne",  "pupitre",
                                        "entree",  "sortie", "incident"};
    static const std::string names[] = {"te", "ts",   "b1e", "p1ok", "MT",     "BZ1",
                                        "dc", "RENT", "1",   "atu",  "bonnes", "incidents"};
    static const std::string values[] = {"0", "1", "2", "-1", "", "stuck0", "late", "slow", "x"};
    if (which == 1) return kinds[random() % 6];
    if (which == 2) return names[random() % 12];
    if (which == 3) return values[random() % 9];
    const int step = static_cast<int>(random() % 5) - 2;
    const int unit = random() % 3 ? 10 : 1;
    return std::to_string(std::atoi(field.c_str()) + step * unit);
}

std::string with_one_change(const std::vector<std::string>& lines, std::mt19937& random,
                            std::size_t& changed_line) {
    std::string text;
    changed_line = 1 + random() % (lines.size() - 1);
    for (std::size_t i = 0; i < lines.size(); ++i) {
        if (i != changed_line) {
            text += lines[i] + "\n";
            continue;
        }
        std::vector<std::string> fields;
        std::istringstream stream(lines[i]);
        for (std::string field; std::getline(stream, field, ',');) fields.push_back(field);
        fields.resize(4);
        const std::size_t which = random() % 4;
        fields[which] = another(fields[which], which, random);
        text += fields[0] + "," + fields[1] + "," + fields[2] + "," + fields[3] + "\n";
    }
    return text;
}

/// Whether a complaint says where: a line, or a time and a name.
bool says_where(const std::string& complaint) {
    const bool line = complaint.rfind("f: ligne ", 0) == 0 && std::isdigit(complaint[9]);
    const bool time =
        complaint.rfind("f: à ", 0) == 0 && complaint.find(" ms, ") != std::string::npos;
    const bool set_up = complaint.find("l'enregistrement ne dit pas") == 0 ||
                        complaint.find("n'est pas un nombre") != std::string::npos;
    return line || time || set_up;
}

/// Everything but one line of a text.
std::string without_line(const std::string& text, std::size_t line) {
    std::string rest;
    const std::vector<std::string> lines = lines_of(text);
    for (std::size_t i = 0; i < lines.size(); ++i)
        if (i != line) rest += lines[i] + "\n";
    return rest;
}

// A change is told, or it changes nothing: the station answers in every other row as it did.
TEST(Replay, OneChangedFieldIsToldOrChangesNothing) {
    std::mt19937 random(41);
    int told = 0, harmless = 0;
    for (int i = 0; i < 500; ++i) {
        const std::string recording = recorded_session(random() % 1000, 800);
        std::size_t line = 0;
        const std::string forged = with_one_change(lines_of(recording), random, line);
        if (forged == recording) continue;
        const replayed result = replay_of(forged);
        if (!result.complaint.empty()) {
            EXPECT_TRUE(says_where(result.complaint)) << result.complaint;
            ++told;
            continue;
        }
        ++harmless;
        ASSERT_EQ(result.out, forged);
        ASSERT_EQ(without_line(forged, line), without_line(recording, line));
    }
    EXPECT_GT(told, 250);
    EXPECT_GT(harmless, 0) << "a title, or a value of no effect";
}

}  // namespace
