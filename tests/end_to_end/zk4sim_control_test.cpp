// A session driven through its control socket, and what becomes of the socket.
#include <signal.h>
#include <sys/stat.h>

#include <fstream>
#include <list>
#include <thread>

#include "tests/end_to_end/zk4sim_session.h"

namespace {

namespace files = std::filesystem;

TEST_F(Zk4sim, TellsItsStatus) {
    controlled_station running({"--no-panel", "--paused", "--title", "poste 7", "--speed", "2.5",
                                "--fault", "BZ1=dead", "--fault", "te=stuck0"});
    EXPECT_EQ(running.ask("status"),
              "0\nstation=zk4\ntitre=poste 7\nsecondes=0.000\netat=pause\nvitesse=2.5\nbonnes=0\n"
              "mauvaises=0\nincidents=0\ndernier_incident=\npannes=te=stuck0 BZ1=dead\n"
              "exercice=\nbut=\npoints=\n");
}

TEST_F(Zk4sim, PausesStepsAndGoesOn) {
    controlled_station running({"--no-panel", "--speed", "50"});
    EXPECT_EQ(running.ask("step 1").substr(0, 2), "1\n") << "only in a pause";
    ASSERT_TRUE(wait_until([&] { return running.simulated_s() > 0; }));
    EXPECT_EQ(running.ask("pause"), "0\n");
    const double paused_s = running.simulated_s();
    for (const char* const seconds : {"0.01", "0.5", "1000"})
        EXPECT_EQ(running.ask(std::string("step ") + seconds), "0\n");
    EXPECT_NEAR(running.simulated_s(), paused_s + 1000.51, 1e-6);
    EXPECT_EQ(running.told("etat"), "pause");
    EXPECT_EQ(running.ask("resume"), "0\n");
    EXPECT_EQ(running.told("etat"), "marche");
    EXPECT_TRUE(wait_until([&] { return running.simulated_s() > paused_s + 1001; }));
}

TEST_F(Zk4sim, TheDeskAndFaultsActFromTheNextStepOn) {
    controlled_station running({"--no-panel", "--paused"});
    EXPECT_EQ(running.ask("desk atu=1 dc=1"), "0\n");
    EXPECT_EQ(running.ask("fault te=stuck0"), "0\n");
    EXPECT_EQ(running.value("atu"), "0");
    EXPECT_EQ(running.ask("step 0.01"), "0\n");
    for (const auto& [name, value] : {std::pair("atu", "1"), {"dc", "1"}, {"te", "0"}})
        EXPECT_EQ(running.value(name), value) << name;
    EXPECT_EQ(running.ask("fault te="), "0\n");
    EXPECT_EQ(running.ask("desk atu=0"), "0\n");
    EXPECT_EQ(running.ask("step 0.01"), "0\n");
    for (const auto& [name, value] : {std::pair("atu", "0"), {"dc", "1"}, {"te", "1"}})
        EXPECT_EQ(running.value(name), value) << name;
}

TEST_F(Zk4sim, ItsSpeedChangesWhileItRuns) {
    controlled_station running({"--no-panel", "--speed", "0.1"});
    EXPECT_EQ(running.ask("speed 100"), "0\n");
    EXPECT_EQ(running.told("vitesse"), "100");
    EXPECT_TRUE(wait_until([&] { return running.simulated_s() > 10; }))
        << "a hundred seconds at the speed that it had";
}

TEST_F(Zk4sim, EndsWhenItIsAsked) {
    controlled_station running({"--no-panel"});
    const attached_segment segment(running.ident);
    EXPECT_EQ(running.ask("end"), "0\n");
    EXPECT_EQ(running.process->wait(), 0);
    EXPECT_TRUE(segment.session_over());
    EXPECT_EQ(running.process->err(), "zk4sim: fin demandée\n" + nothing_made);
}

TEST_F(Zk4sim, WhoeverWaitsForItsStepsIsToldWhenTheyCannotBeMade) {
    const struct {
        std::vector<std::string> options;
        const char *instead, *answer;
    } rows[] = {{{"--duration", "5"}, "", "4\n"}, {{}, "end", "4\n"}, {{}, "resume", "1\n"}};
    for (const auto& [more, instead, answer] : rows) {
        std::vector<std::string> options = {"--no-panel", "--paused"};
        options.insert(options.end(), more.begin(), more.end());
        controlled_station running(options);
        const control_client waiting(running.socket());
        waiting.send_bytes("step 1e6\n");
        waiting.finish();
        if (*instead) {
            ASSERT_TRUE(wait_until([&] { return running.simulated_s() > 0; }));
            EXPECT_EQ(running.ask(instead), "0\n");
        }
        EXPECT_EQ(waiting.answer().value_or("none").substr(0, 2), answer) << instead;
    }
}

// All that comes while it is stopped is there at once when it goes on.
TEST_F(Zk4sim, WhoeverWaitsIsAnsweredBeforeOthersChangeWhatItWaitsFor) {
    controlled_station running({"--no-panel", "--paused"});
    const control_client waiting(running.socket());
    ASSERT_TRUE(waiting.send_bytes("step 1e6\n"));
    ASSERT_TRUE(wait_until([&] { return running.simulated_s() > 0; }));
    running.process->signal(SIGSTOP);
    std::list<control_client> others;
    for (const char* const request : {"resume\n", "pause\n", "step 0.01\n"})
        ASSERT_TRUE(others.emplace_back(running.socket()).send_bytes(request));
    running.process->signal(SIGCONT);
    for (const control_client& each : others) EXPECT_EQ(each.answer(), "0\n");
    EXPECT_EQ(waiting.answer().value_or("none").substr(0, 2), "1\n");
}

TEST_F(Zk4sim, WhoeverWaitsWhenItIsKilledIsToldThatTheSessionIsOver) {
    for (int i = 0; i < 5; ++i) {
        controlled_station running({"--no-panel", "--paused"});
        program step({built("quorin-io"), running.ident, "step", "1e6"});
        ASSERT_TRUE(wait_until([&] { return running.simulated_s() > 0; }));
        running.process->signal(SIGKILL);
        EXPECT_EQ(step.wait(), 4);
        EXPECT_EQ(step.err(), "quorin-io: la session est terminée\n");
    }
}

TEST_F(Zk4sim, ItsSocketIsItsUsersAloneAndGoesWithTheSession) {
    controlled_station running({"--no-panel"});
    struct stat status;
    ASSERT_EQ(stat((folder.path / "quorin").c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777, 0700u);
    EXPECT_TRUE(files::is_socket(running.socket()));
    controlled_station other({"--no-panel"});
    EXPECT_EQ(running.end(), 0);
    EXPECT_FALSE(files::exists(running.socket()));
    EXPECT_EQ(other.told("etat"), "marche") << "each session has its own";
}

TEST_F(Zk4sim, WithoutASafeFolderItSaysSoInOneLineAndGoesOn) {
    const files::path control = folder.path / "quorin";
    std::ofstream(control) << "in the way";
    const auto serves_without = [&] {
        const outcome end = run_zk4sim({"--no-panel", "--duration", "0.1"});
        EXPECT_EQ(end.status, 0);
        EXPECT_EQ(lines_in(end.out), 1);
        EXPECT_EQ(lines_in(end.err), 3) << end.err;
        EXPECT_EQ(end.err.rfind("zk4sim: ", 0), 0u);
        EXPECT_LT(end.err.find(control.string()), end.err.find('\n')) << end.err;
    };
    serves_without();
    files::remove(control);
    files::create_directory(control);
    files::permissions(control, files::perms(0755));
    serves_without();
    files::create_symlink(folder.path / "nowhere", folder.path / "link");
    setenv("XDG_RUNTIME_DIR", (folder.path / "link").c_str(), 1);
    const outcome dangling = run_zk4sim({"--no-panel", "--duration", "0.1"});
    EXPECT_EQ(dangling.status, 0);
    EXPECT_EQ(lines_in(dangling.err), 3) << dangling.err;
}

TEST_F(Zk4sim, ItsSocketIsGoneAfterKillDashNine) {
    for (int i = 0; i < 5; ++i) {
        controlled_station running({"--no-panel"});
        ASSERT_TRUE(files::exists(running.socket()));
        running.process->signal(SIGKILL);
        EXPECT_TRUE(wait_until([&] { return !files::exists(running.socket()); }));
        EXPECT_EQ(running.process->wait(), 128 + SIGKILL);
    }
}

TEST_F(Zk4sim, OfASessionWhoseSupervisorDiedTooItIsGoneWithTheNext) {
    controlled_station dead({"--no-panel"}), living({"--no-panel"});
    const pid_t supervisor = child_named(dead.process->id(), "zk4sim-garde");
    ASSERT_GT(supervisor, 0);
    kill(dead.process->id(), SIGSTOP);
    kill(supervisor, SIGKILL);
    kill(dead.process->id(), SIGKILL);
    EXPECT_EQ(dead.process->wait(), 128 + SIGKILL);
    EXPECT_TRUE(files::exists(dead.socket()));
    controlled_station next({"--no-panel"});
    EXPECT_FALSE(files::exists(dead.socket()));
    EXPECT_EQ(living.told("etat"), "marche");
    EXPECT_EQ(next.told("etat"), "marche");
}

}  // namespace
