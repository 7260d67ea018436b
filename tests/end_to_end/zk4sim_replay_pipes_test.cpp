// Replays from pipes and into pipes: slow ones, and ones that stand still.
#include <sys/stat.h>

#include <chrono>
#include <thread>

#include "tests/end_to_end/recorded_hands.h"

namespace {

class Zk4simReplayPipes : public Zk4sim {
protected:
    const temporary_folder files;

    std::string file(const std::string& name) const { return files / name; }
};

using namespace std::chrono_literals;

/// A recording of more than a pipe holds.
std::string longer_than_a_pipe(const std::string& file) {
    std::vector<std::string> words = {"--no-panel", "--speed", "100", "--duration",
                                      "800",        "--csv",   file};
    for (const std::string name : {"te", "b1e", "b1s", "b2s", "p1ok", "p3ok", "init"})
        words.insert(words.end(), {"--fault", name + "=flicker"});
    EXPECT_EQ(run_zk4sim(words).status, 0);
    EXPECT_GT(std::filesystem::file_size(file), 90000U);
    return bytes_of(file);
}

TEST_F(Zk4simReplayPipes, TheStandardInputIsAFileLikeOthers) {
    const std::string recording = longer_than_a_pipe(file("a.csv"));
    const std::string again = built("zk4sim") + " --headless --play - --csv ";
    const auto shell = [&](const std::string& command) {
        return run_program({"sh", "-c", command}, {}, seconds(60));
    };
    const outcome piped = shell(again + "- <" + file("a.csv"));
    EXPECT_EQ(piped.status, 0) << piped.err;
    EXPECT_EQ(piped.out, recording);
    EXPECT_EQ(shell("cat " + file("a.csv") + " | " + again + file("b.csv")).status, 0);
    EXPECT_EQ(bytes_of(file("b.csv")), recording);
    const outcome itself = shell(again + file("a.csv") + " <" + file("a.csv"));
    EXPECT_EQ(itself.status, 1);
    EXPECT_EQ(itself.err, "zk4sim: " + file("a.csv") + ": c'est l'enregistrement qui est rejoué\n");
    EXPECT_EQ(bytes_of(file("a.csv")), recording);
}

// Nothing depends on its pace: whoever reads it may take the time that it takes.
TEST_F(Zk4simReplayPipes, AsFastAsItCanStillWaitsForItsReader) {
    const std::string recording = longer_than_a_pipe(file("a.csv"));
    const outcome end = run_program(
        {"bash", "-o", "pipefail", "-c",
         built("zk4sim") + " --headless --play " + file("a.csv") + " --csv - | (sleep 7; cat)"},
        {}, seconds(60));
    EXPECT_EQ(end.status, 0);
    EXPECT_EQ(end.out, recording);
    EXPECT_EQ(end.err, nothing_made);
}

// The session waits for its recording, and ends all the same when it is asked to.
TEST_F(Zk4simReplayPipes, APipeThatStandsStillDoesNotKeepASessionFromItsEnd) {
    (void)longer_than_a_pipe(file("a.csv"));
    ASSERT_EQ(mkfifo(file("pipe").c_str(), 0600), 0);
    const program writer(
        {"sh", "-c",
         "exec >" + file("pipe") + "; head -c 3000 " + file("a.csv") + "; exec sleep 30"});
    station shown({"--play", file("pipe"), "--no-panel", "--speed", "100"});
    std::this_thread::sleep_for(500ms);
    const auto asked = std::chrono::steady_clock::now();
    shown.process->signal(SIGTERM);
    EXPECT_EQ(shown.process->wait(seconds(10)), 0) << shown.process->err();
    EXPECT_LT(std::chrono::steady_clock::now() - asked, 5s);
}

TEST_F(Zk4simReplayPipes, ControlBytesOfAPathAreShownAsTheyAre) {
    const std::string name = file("a\nb\x1B.csv"), shown = file("a\\x0Ab\\x1B.csv");
    const outcome missing = run_zk4sim({"--play", name});
    EXPECT_EQ(missing.err, "zk4sim: " + shown + ": fichier ou dossier introuvable\n");
    write_bytes(name, "bonjour\n");
    EXPECT_EQ(run_zk4sim({"--play", name}).err,
              "zk4sim: " + shown + ": ligne 1: moins de quatre champs\n");
    std::filesystem::remove(name);
    std::filesystem::create_directory(name);
    EXPECT_EQ(run_zk4sim({"--csv", name}).err, "zk4sim: " + shown + ": c'est un dossier\n");
}

}  // namespace
