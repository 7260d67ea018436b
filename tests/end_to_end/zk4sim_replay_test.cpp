// Sessions that were worked through the real link, run again to the last bit; and those that were
// killed, to the last row that they have.
#include <future>
#include <thread>

#include "tests/end_to_end/recorded_hands.h"
#include "tests/support/sanitizers.h"

namespace {

class Zk4simReplay : public Zk4sim {
protected:
    const temporary_folder files;

    std::string file(const std::string& name) const { return files / name; }
};

using namespace std::chrono_literals;

constexpr int sessions = 200, at_once = 25;

std::vector<std::unique_ptr<handled_session>> begin_some(const temporary_folder& files, int first) {
    std::vector<std::unique_ptr<handled_session>> running;
    for (int i = first; i < first + at_once; ++i)
        running.push_back(std::make_unique<handled_session>(i, files / (std::to_string(i) + ".csv"),
                                                            files / (std::to_string(i) + ".vcd")));
    return running;
}

TEST_F(Zk4simReplay, EverySessionComesAgainByteForByte) {
    std::size_t rows = 0;
    for (int first = 0; first < sessions; first += at_once) {
        auto running = begin_some(files, first);
        for (int i = 0; i < 30; ++i) {
            for (const auto& each : running)
                if (each->lives()) each->work();
            std::this_thread::sleep_for(10ms);
        }
        for (const auto& each : running) each->station().process->signal(SIGTERM);
        for (const auto& each : running) {
            ASSERT_EQ(each->station().process->wait(), 0) << each->station().process->err();
            const std::string recording = bytes_of(each->csv());
            rows += static_cast<std::size_t>(lines_in(recording));
            const outcome end = run_again(each->csv());
            ASSERT_EQ(end.status, 0) << end.err;
            ASSERT_EQ(end.out, recording) << each->csv();
            ASSERT_TRUE(recording.ends_with(",session,fin,fin demandée\n"));
        }
    }
    EXPECT_GT(rows, sessions * 60U) << "hands did something";
}

/// A killed session's last row is at most a second of real time old: what was written to the link
/// before that is there.
void check_killed(const std::string& csv, int written_a_second_ago) {
    const std::string recording = bytes_of(csv);
    const outcome end = run_again(csv);
    ASSERT_EQ(end.status, 0) << csv << ": " << end.err;
    ASSERT_EQ(end.out, whole_rows(recording)) << csv;
    const std::size_t last = recording.rfind(",sortie,BZ3,");
    ASSERT_NE(last, std::string::npos);
    EXPECT_GE(std::atoi(recording.c_str() + last + 12), written_a_second_ago) << csv;
}

TEST_F(Zk4simReplay, AKilledSessionIsWholeUpToItsLastSecond) {
    std::mt19937 random(9);
    for (int first = 0; first < sessions; first += at_once) {
        auto running = begin_some(files, first);
        const auto kill_from = std::chrono::steady_clock::now() + 1200ms;
        std::vector<int> second_ago(running.size());
        int value = 10;
        // A value for each twentieth of a second.
        for (auto alive = running.size(); alive > 0; ++value, std::this_thread::sleep_for(50ms)) {
            for (std::size_t i = 0; i < running.size(); ++i) {
                handled_session& each = *running[i];
                if (!each.station().process->running()) continue;
                each.link().write("BZ3", value);
                if (random() % 3 == 0 && value % 2) each.link().write("MT", value % 3);
                if (std::chrono::steady_clock::now() < kill_from || random() % 4) continue;
                each.station().process->signal(SIGKILL);
                (void)each.station().process->wait();
                second_ago[i] = value - 21;
                --alive;
            }
        }
        for (std::size_t i = 0; i < running.size(); ++i)
            check_killed(running[i]->csv(), second_ago[i]);
    }
}

TEST_F(Zk4simReplay, TheDumpOfAKilledSessionIsOneToo) {
    handled_session session(4, file("a.csv"), file("a.vcd"));
    for (int i = 0; i < 40; ++i) {
        session.work();
        std::this_thread::sleep_for(10ms);
    }
    session.station().process->signal(SIGKILL);
    (void)session.station().process->wait();
    const outcome end = run_program({"vcd2fst", file("a.vcd"), file("a.fst")});
    EXPECT_EQ(end.status, 0) << end.err;
    EXPECT_GT(std::filesystem::file_size(file("a.fst")), 0U);
}

// A hundred megabytes of recording under a limit of a hundred megabytes of addresses.
TEST_F(Zk4simReplay, ALongRecordingNeedsNoMoreMemoryThanAShortOne) {
    if (address_sanitizer) GTEST_SKIP() << "it needs addresses of its own";
    const std::string rows =
        "awk 'BEGIN { print \"ms,genre,nom,valeur\\n0,session,format,1\\n0,session,station,x\";"
        " print \"0,entree,un_nom_assez_long_pour_une_entree,0\\n0,sortie,C,0\";"
        " for (i = 1; i < 2000000; i++) print i \",entree,un_nom_assez_long_pour_une_entree,\" i;"
        " print i \",session,fin,x\" }'";
    const outcome end =
        run_program({"sh", "-c",
                     rows + " | (ulimit -v 100000; MALLOC_ARENA_MAX=1 exec " + built("zk4sim") +
                         " --play - --headless --csv " + file("out.csv") + "); echo status=$?; " +
                         rows + " | cmp - " + file("out.csv") + " && echo same"});
    EXPECT_EQ(end.out, "status=0\nsame\n") << end.err;
    EXPECT_EQ(end.err, nothing_made);
}

TEST_F(Zk4simReplay, WhatExcludesAReplayIsMisuse) {
    write_bytes(file("a.csv"), "");
    const struct {
        std::vector<std::string> options;
        std::string why;
    } cases[] = {
        {{"--seed", "1"}, "--play et --seed s'excluent"},
        {{"--bases", "1"}, "--play et --bases s'excluent"},
        {{"--parts", "1"}, "--play et --parts s'excluent"},
        {{"--fault", "te=stuck0"}, "--play et --fault s'excluent"},
        {{"--duration", "1"}, "--play et --duration s'excluent"},
        {{"--exec", "true"}, "--play et --exec s'excluent"},
    };
    for (const auto& [options, why] : cases) {
        std::vector<std::string> words = {"--play", file("a.csv")};
        words.insert(words.end(), options.begin(), options.end());
        const outcome end = run_zk4sim(words);
        EXPECT_EQ(end.status, 2) << why;
        EXPECT_EQ(end.err, "zk4sim: " + why + "\n");
    }
    const outcome alone = run_zk4sim({"--at", "3"});
    EXPECT_EQ(alone.status, 2);
    EXPECT_EQ(alone.err, "zk4sim: --at demande --play\n");
}

TEST_F(Zk4simReplay, ARecordingOnItselfIsRefusedAndUntouched) {
    ASSERT_EQ(run_zk4sim({"--headless", "--no-panel", "--speed", "100", "--duration", "1", "--csv",
                          file("a.csv")})
                  .status,
              0);
    const std::string before = bytes_of(file("a.csv"));
    std::filesystem::create_symlink(file("a.csv"), file("b.csv"));
    for (const std::string out : {"a.csv", "b.csv"}) {
        for (const std::string option : {"--csv", "--vcd"}) {
            const outcome end =
                run_zk4sim({"--play", file("a.csv"), "--headless", option, file(out)});
            EXPECT_EQ(end.status, 1);
            EXPECT_EQ(end.err,
                      "zk4sim: " + file(out) + ": c'est l'enregistrement qui est rejoué\n");
            EXPECT_EQ(bytes_of(file("a.csv")), before);
        }
    }
}

TEST_F(Zk4simReplay, AStationThatCannotBeSetUpIsToldWithItsFile) {
    write_bytes(file("a.csv"),
                "ms,genre,nom,valeur\n0,session,format,1\n0,session,station,zk4\n"
                "0,session,graine,1\n0,session,bases,1000001\n0,session,pieces,1\n"
                "0,entree,te,1\n0,sortie,MT,0\n0,sortie,MT,1\n");
    const outcome end = run_zk4sim({"--play", file("a.csv")});
    EXPECT_EQ(end.status, 1);
    EXPECT_EQ(end.err,
              "zk4sim: " + file("a.csv") + ": bases: un entier de 0 à 1000000 est attendu\n");
}

TEST_F(Zk4simReplay, WhatIsNoRecordingIsToldInOneLine) {
    std::filesystem::create_directory(file("folder"));
    write_bytes(file("text"), "bonjour\n");
    write_bytes(file("cut"), "ms,genre,nom,valeur\n0,session,format,1\n");
    const struct {
        std::string name, why;
    } cases[] = {
        {"folder", "c'est un dossier"},
        {"nowhere", "fichier ou dossier introuvable"},
        {"text", "ligne 1: moins de quatre champs"},
        {"cut", "ligne 3: le fichier est coupé dans le premier bloc"},
    };
    for (const auto& [name, why] : cases) {
        const outcome end =
            run_zk4sim({"--play", file(name), "--headless", "--csv", file("out.csv")});
        EXPECT_EQ(end.status, 1) << name;
        EXPECT_EQ(end.err, "zk4sim: " + file(name) + ": " + why + "\n");
        EXPECT_FALSE(std::filesystem::exists(file("out.csv"))) << name;
    }
}

TEST_F(Zk4simReplay, AForgedRecordingIsToldInOneLine) {
    handled_session session(29, file("a.csv"));
    session.link().write("BZ1", 1);
    EXPECT_TRUE(wait_until([&] { return session.station().value("b1s") == "1"; }));
    ASSERT_EQ(session.station().end(), 0);
    std::string forged = bytes_of(file("a.csv"));
    const std::size_t row = forged.find(",entree,b1s,1\n");
    ASSERT_NE(row, std::string::npos);
    const std::string ms =
        forged.substr(forged.rfind('\n', row) + 1, row - forged.rfind('\n', row) - 1);
    forged.erase(forged.rfind('\n', row) + 1, forged.find('\n', row) - forged.rfind('\n', row));
    write_bytes(file("f.csv"), forged);
    const outcome end = run_zk4sim({"--play", file("f.csv"), "--headless"});
    EXPECT_EQ(end.status, 1);
    EXPECT_EQ(end.err, "zk4sim: " + file("f.csv") + ": à " + ms +
                           " ms, entree b1s: rien dans l'enregistrement, 1 à la station\n");
}

TEST_F(Zk4simReplay, AnIncidentIsOneLine) {
    write_bytes(file("a.csv"),
                "ms,genre,nom,valeur\n0,session,format,1\n0,session,station,x\n0,entree,a,0\n"
                "0,sortie,b,0\n10,incident,1,\"c\nbilan: d\"\n20,session,fin,e\n");
    const outcome end = run_zk4sim({"--play", file("a.csv"), "--no-panel", "--speed", "100"});
    EXPECT_EQ(end.status, 0);
    EXPECT_EQ(end.err,
              "0.010 s: incident: c\\x0Abilan: d\nzk4sim: e\n"
              "bilan: bonnes=0 mauvaises=0 incidents=1\n");
}

TEST_F(Zk4simReplay, OnTheLinkItTakesNoCommands) {
    {
        handled_session session(29, file("a.csv"));
        session.link().write("BZ1", 1);
        EXPECT_TRUE(wait_until([&] { return session.station().value("b1s") == "1"; }));
        std::this_thread::sleep_for(300ms);
        ASSERT_EQ(session.station().end(), 0);
    }
    controlled_station shown({"--play", file("a.csv"), "--headless", "--no-panel", "--speed", "20",
                              "--csv", file("b.csv"), "--at", "5"});
    ASSERT_FALSE(shown.ident.empty()) << shown.process->err();
    EXPECT_EQ(shown.io({"set", "DESP=1"}).status, 0) << "anybody may write";
    EXPECT_EQ(shown.ask("desk atu=1"), "1\nun rejeu est en cours\n");
    EXPECT_EQ(shown.ask("fault te=stuck0"), "1\nun rejeu est en cours\n");
    EXPECT_TRUE(wait_until([&] { return shown.simulated_s() > 5; }));
    EXPECT_EQ(shown.value("b1s"), "1");
    EXPECT_EQ(shown.value("ph"), "1") << "the press did not move";
    EXPECT_EQ(shown.process->wait(), 0) << shown.process->err();
    EXPECT_EQ(bytes_of(file("b.csv")), bytes_of(file("a.csv")));
}

}  // namespace
