// zk4sim --exercise: a session with a task, from its start to its verdict, and what becomes of its
// recording.
#include "tests/end_to_end/zk4sim_exercise.h"

namespace {

TEST_F(Zk4simExercise, OneThatIsPassedLiveIsPassedInItsRecording) {
    const std::string exercise = task(hidden + goal + ban + diagnosis);
    const outcome end =
        run_task(exercise, {"--csv", file("a.csv"), "--exec",
                            io + "status && " + io + "diagnose te=late && " + io +
                                "diagnose vb=stuck1 && " + io + "set BZ1=1 && sleep 60"});
    EXPECT_EQ(end.status, 0) << end.err;
    const std::string before = end.err.substr(0, end.err.find("zk4sim: exercice terminé"));
    EXPECT_EQ(before.find("vb=stuck1"), std::string::npos) << "told before the verdict";
    EXPECT_NE(before.find("\npannes=te=late\nexercice=La butée\nbut=1\npoints=0/7\n"),
              std::string::npos)
        << before;
    for (const char* const each :
         {"zk4sim: exercice terminé\nExercice : La butée\nBut 1, la butée 1 est sortie : atteint "
          "à ",
          "\nPannes cachées : vb=stuck1.\nDiagnostic : vb=stuck1, juste, répondu à ",
          "\nPoints : 7 sur 7.\nExercice réussi à "})
        EXPECT_NE(end.err.find(each), std::string::npos) << each << end.err;
    EXPECT_TRUE(end.err.ends_with(nothing_made));
    const std::string recording = bytes_of(file("a.csv"));
    EXPECT_NE(recording.find(",exercice,diagnostic,te=late\n"), std::string::npos) << recording;
    EXPECT_NE(recording.find(",exercice,points,7/7\n"), std::string::npos) << recording;
    EXPECT_TRUE(recording.ends_with(",session,fin,exercice terminé\n"));
    EXPECT_LT(recording.find("exercice,verdict,reussi"),
              recording.find("vb=stuck1\n", recording.size() - 100));
    expect_it_comes_again(file("a.csv"));
    const outcome marked = mark(exercise, file("a.csv"));
    EXPECT_EQ(marked.status, 0) << marked.err;
    EXPECT_EQ(marked.out.substr(0, marked.out.rfind('\t')), file("a.csv") + "\treussi\t7\t7");
}

TEST_F(Zk4simExercise, ItsStatusIsThatOfTheVerdictWhateverElseEnds) {
    const std::string lone = task(goal + ban),
                      short_one = task("[station]\nduree_s = 2\n" + goal, "b.toml");
    const struct {
        std::string exercise, command, words, verdict;
        int status;
    } rows[] = {
        {lone, io + "set BZ1=1; sleep 60", "exercice terminé",
         "Points : 2 sur 2.\nExercice réussi à ", 0},
        {lone, io + "set BZ1=1 && " + io + "wait b1s=1 && sleep 1; exit 7", "exercice terminé",
         "Exercice réussi à ", 0},
        {lone, io + "set DESP=1 BZ1=1; sleep 60", "exercice terminé",
         "Points : 1 sur 2.\nExercice non réussi, terminé à ", 3},
        {lone, "true", "commande terminée", "Points : 0 sur 2.\nExercice non réussi, terminé à ",
         3},
        {lone, io + "end; sleep 60", "fin demandée", "Exercice non réussi, terminé à ", 3},
        {short_one, "sleep 60", "exercice terminé",
         "Points : 0 sur 2.\nExercice non réussi, terminé à 2.000 s.\n", 3},
    };
    for (const auto& [exercise, command, words, verdict, status] : rows) {
        const outcome end = run_task(exercise, {"--csv", file("a.csv"), "--exec", command});
        EXPECT_EQ(end.status, status) << command << end.err;
        EXPECT_NE(end.err.find("zk4sim: " + words + "\n"), std::string::npos) << end.err;
        EXPECT_NE(end.err.find(verdict), std::string::npos) << verdict << end.err;
        expect_it_comes_again(file("a.csv"));
        const outcome marked = mark(exercise, file("a.csv"));
        EXPECT_EQ(marked.status, status) << command << marked.out << marked.err;
    }
}

TEST_F(Zk4simExercise, TheDiagnosisAndTheFaultsAreAskedForThroughTheSocket) {
    const std::string exercise = task(hidden + goal + diagnosis);
    controlled_station running({"--exercise", exercise, "--no-panel", "--paused"});
    EXPECT_EQ(running.told("pannes"), "te=late");
    EXPECT_EQ(running.value("vb"), "1") << "it is hidden, and there";
    const struct {
        std::vector<std::string> words;
        int status;
    } rows[] = {
        {{"diagnose", "te"}, 2},
        {{"diagnose", "te=dead"}, 1},
        {{"diagnose", "xx=dead"}, 1},
        {{"diagnose", "te=late"}, 0},
        {{"fault", "te="}, 1},
        {{"fault", "vb=stuck0"}, 1},
        {{"diagnose", "vb=stuck1", "MT=dead"}, 0},
    };
    for (const auto& [words, status] : rows)
        EXPECT_EQ(running.io(words).status, status) << words[1];
    EXPECT_EQ(running.ask("step 0.01"), "0\n");
    EXPECT_EQ(running.told("pannes"), "te=late");
    EXPECT_EQ(running.told("but"), "1");
    EXPECT_EQ(running.end(), 3);
    const outcome without = run_task(task(goal, "b.toml"), {"--exec", io + "diagnose te=late"});
    EXPECT_NE(without.err.find("quorin-io: cet exercice ne demande pas de diagnostic\n"),
              std::string::npos)
        << without.err;
}

TEST_F(Zk4simExercise, WhatTheExerciseSetsIsMisuseBesideIt) {
    const std::string exercise = task(goal);
    const std::vector<std::string> others[] = {
        {"--seed", "1"},     {"--bases", "1"},         {"--parts", "1"},
        {"--duration", "1"}, {"--fault", "te=stuck0"}, {"--manual"},
    };
    for (const std::string& file_name : {exercise, file("nowhere.toml")})
        for (const auto& other : others) {
            std::vector<std::string> words = {"--exercise", file_name};
            words.insert(words.end(), other.begin(), other.end());
            const outcome end = run_zk4sim(words);
            EXPECT_EQ(end.status, 2) << other[0];
            EXPECT_EQ(end.err, "zk4sim: --exercise et " + other[0] + " s'excluent\n");
        }
    const outcome nowhere = run_zk4sim({"--exercise", file("nowhere.toml"), "--no-panel"});
    EXPECT_EQ(nowhere.status, 1);
    EXPECT_EQ(lines_in(nowhere.err), 1) << nowhere.err;
    EXPECT_EQ(nowhere.out, "");
    const outcome broken = run_zk4sim({"--exercise", task("[[but]]\nquand = [\"x=1\"]\n"),
                                       "--no-panel", "--csv", file("never.csv")});
    EXPECT_EQ(broken.status, 1);
    EXPECT_FALSE(std::filesystem::exists(file("never.csv")));
}

TEST_F(Zk4simExercise, ARecordingCutBeforeItsEndTakesHiddenFaultsFromTheExercise) {
    const std::string exercise = task(hidden + goal + diagnosis);
    const outcome end = run_task(exercise, {"--csv", file("a.csv"), "--exec",
                                            io + "set BZ1=1 && " + io + "wait b1s=1 && " + io +
                                                "diagnose vb=stuck1 && sleep 60"});
    ASSERT_EQ(end.status, 0) << end.err;
    const std::string whole = bytes_of(file("a.csv"));
    const std::string cut = whole.substr(0, whole.find(",exercice,points,"));
    write_bytes(file("cut.csv"), cut);
    const outcome without = run_zk4sim({"--play", file("cut.csv"), "--headless"});
    EXPECT_EQ(without.status, 1);
    EXPECT_EQ(without.err, "zk4sim: " + file("cut.csv") +
                               ": ses pannes cachées manquent, qu'un --exercise peut donner\n");
    const outcome with = run_zk4sim({"--play", file("cut.csv"), "--headless", "--exercise",
                                     exercise, "--csv", file("out.csv")});
    EXPECT_EQ(with.status, 0) << with.err;
    EXPECT_EQ(bytes_of(file("out.csv")), cut.substr(0, cut.rfind('\n') + 1));
    const outcome piped = run_program({"sh", "-c",
                                       "cat " + file("a.csv") + " | " + built("zk4sim") +
                                           " --play - --headless --exercise " + exercise +
                                           " --csv " + file("out.csv")});
    EXPECT_EQ(piped.status, 0) << piped.err;
    EXPECT_EQ(bytes_of(file("out.csv")), whole);
    EXPECT_EQ(mark(exercise, file("cut.csv")).out.substr(0, file("cut.csv").size() + 7),
              file("cut.csv") + "\treussi");
}

TEST_F(Zk4simExercise, AKilledSessionIsMarkedToItsLastWholeStep) {
    const std::string exercise = task(hidden + goal + diagnosis);
    controlled_station running(
        {"--exercise", exercise, "--no-panel", "--paused", "--csv", file("a.csv")});
    EXPECT_EQ(running.io({"set", "BZ1=1"}).status, 0);
    EXPECT_EQ(running.ask("step 2"), "0\n");
    EXPECT_EQ(running.ask("diagnose vb=stuck1"), "0\n");
    EXPECT_EQ(running.told("points"), "2/7");
    EXPECT_TRUE(wait_until(
        [&] { return bytes_of(file("a.csv")).find(",exercice,but,1\n") != std::string::npos; }));
    running.process->signal(SIGKILL);
    (void)running.process->wait();
    const outcome marked = mark(exercise, file("a.csv"));
    EXPECT_EQ(marked.status, 3);
    EXPECT_EQ(marked.out.substr(0, marked.out.rfind('\t')), file("a.csv") + "\techoue\t2\t7");
}

TEST_F(Zk4simExercise, AForgedRecordingIsRefusedAndTheOthersAreMarked) {
    const std::string exercise = task(goal);
    ASSERT_EQ(
        run_task(exercise, {"--csv", file("a.csv"), "--exec", io + "set BZ1=1; sleep 60"}).status,
        0);
    std::string forged = bytes_of(file("a.csv"));
    const std::size_t row = forged.find(",entree,b1s,1\n");
    ASSERT_NE(row, std::string::npos);
    const std::size_t begin = forged.rfind('\n', row) + 1;
    forged.replace(begin, forged.find('\n', row) + 1 - begin, "");
    write_bytes(file("f.csv"), forged);
    const outcome end =
        run_program({built("quorin-lesson"), "mark", exercise, file("f.csv"), file("a.csv"),
                     "--csv", file("m.csv"), "--pdf", file("m.pdf"), "--verbose"});
    EXPECT_EQ(end.status, 3);
    EXPECT_TRUE(end.out.starts_with(file("f.csv") + "\trefuse\t\t\t\n" + file("a.csv") +
                                    "\treussi\t2\t2\t"))
        << end.out;
    EXPECT_NE(end.out.find("\nExercice réussi à "), std::string::npos) << end.out;
    EXPECT_TRUE(end.err.starts_with("quorin-lesson: " + file("f.csv") + ": à ")) << end.err;
    EXPECT_EQ(lines_in(end.err), 1) << end.err;
    const std::string table = bytes_of(file("m.csv"));
    EXPECT_TRUE(table.starts_with("fichier,resultat,points,total,secondes\n" + file("f.csv") +
                                  ",refuse,,,\n" + file("a.csv") + ",reussi,2,2,"))
        << table;
    const outcome text = run_program({"pdftotext", "-layout", file("m.pdf"), "-"});
    EXPECT_EQ(text.status, 0) << text.err;
    for (const char* const each :
         {"Enregistrements : 2, réussis : 1, non réussis : 0, refusés : 1", "résultat", " réussi ",
          " refusé", "Refusé", "But 1, la butée 1 est sortie"})
        EXPECT_NE(text.out.find(each), std::string::npos) << each << text.out;
}

TEST_F(Zk4simExercise, AReplayTakesNoOtherNumberOfHiddenFaultsThanWasAnnounced) {
    const std::string exercise = task(hidden + goal), none = task(goal, "b.toml");
    ASSERT_EQ(run_task(exercise, {"--csv", file("a.csv"), "--exec", "true"}).status, 3);
    const std::string whole = bytes_of(file("a.csv"));
    write_bytes(file("cut.csv"), whole.substr(0, whole.find(",exercice,points,")));
    const outcome end = run_zk4sim({"--play", file("cut.csv"), "--headless", "--exercise", none});
    EXPECT_EQ(end.status, 1);
    EXPECT_EQ(end.err, "zk4sim: " + file("cut.csv") +
                           ": pannes cachées: 1 dans l'enregistrement, 0 dans l'exercice\n");
    EXPECT_EQ(run_zk4sim({"--play", file("a.csv"), "--headless", "--exercise", file("no")}).status,
              1);
}

TEST_F(Zk4simExercise, ItsVerdictIsInEnglishWhereItIsAskedFor) {
    const outcome end = run_task(task(goal), {"--english", "--exec", "true"});
    EXPECT_EQ(end.status, 3);
    EXPECT_NE(end.err.find("\nExercise: The stop\nGoal 1, la butée 1 est sortie: not reached; "),
              std::string::npos)
        << end.err;
}

}  // namespace
