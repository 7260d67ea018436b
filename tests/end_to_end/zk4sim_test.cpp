// zk4sim as a program: its command line, what it prints, how it serves, and how it ends.
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sched.h>
#include <signal.h>
#include <sys/ipc.h>
#include <sys/shm.h>
#include <sys/stat.h>
#include <unistd.h>

#include <chrono>
#include <filesystem>
#include <fstream>
#include <thread>

#include "ioshare/io_client.h"
#include "ioshare/io_slots.h"
#include "tests/support/station.h"

namespace {

class Zk4sim : public testing::Test {
    leaves_nothing nothing_;
};

double seconds_of(const std::function<void()>& action) {
    const auto start = std::chrono::steady_clock::now();
    action();
    return seconds(std::chrono::steady_clock::now() - start).count();
}

long lines_in(const std::string& text) { return std::count(text.begin(), text.end(), '\n'); }

TEST_F(Zk4sim, RefusesACommandLineThatItDoesNotUnderstandInOneLine) {
    const std::vector<std::vector<std::string>> rows = {
        {"--unknown"},
        {"word"},
        {"--speed"},
        {"--speed", "fast"},
        {"--speed", "0"},
        {"--speed", "0.09"},
        {"--speed", "100.1"},
        {"--speed", "0,5"},
        {"--speed", "nan"},
        {"--speed", "inf"},
        {"--speed", "1x"},
        {"--speed", "-1"},
        {"--duration", "-1"},
        {"--duration", "long"},
        {"--duration", "1e400"},
        {"--seed", "-1"},
        {"--seed", "1.5"},
        {"--seed", "18446744073709551616"},
        {"--fault", "te"},
        {"--fault", "te=dead"},
        {"--fault", "MT=stuck0"},
        {"--fault", "nothing=stuck0"},
        {"--fault", "te=broken"},
        {"--fault", ""},
        {"--fault"},
        {"--commander-timeout", "1"},
        {"--no-panel", "--panel", "quorin"},
        {"--no-panel", "--commander-timeout", "soon"}};
    for (const std::vector<std::string>& arguments : rows) {
        std::vector<std::string> command = {built("zk4sim")};
        command.insert(command.end(), arguments.begin(), arguments.end());
        const outcome end = run_program(command, {}, seconds(5));
        const std::string shown = testing::PrintToString(arguments);
        EXPECT_EQ(end.status, 2) << shown;
        EXPECT_EQ(end.out, "") << shown;
        EXPECT_EQ(lines_in(end.err), 1) << shown << end.err;
        EXPECT_EQ(end.err.rfind("zk4sim: ", 0), 0u) << end.err;
    }
}

TEST_F(Zk4sim, NamesTheWordThatItDoesNotUnderstand) {
    const struct {
        std::vector<std::string> arguments;
        std::string word;
    } rows[] = {{{"--unknown"}, "--unknown"},
                {{"--headless", "word"}, "word"},
                {{"--speed"}, "--speed"},
                {{"--speed", "1", "--speed", "2"}, "--speed"},
                {{"--fault"}, "--fault"}};
    for (const auto& [arguments, word] : rows) {
        std::vector<std::string> command = {built("zk4sim")};
        command.insert(command.end(), arguments.begin(), arguments.end());
        EXPECT_EQ(run_program(command, {}, seconds(5)).err,
                  "zk4sim: ligne de commande incomprise: " + word + "\n");
    }
}

TEST_F(Zk4sim, ShowsItsHelpAndVersion) {
    const outcome help = run_program({built("zk4sim"), "--help"});
    EXPECT_EQ(help.status, 0);
    EXPECT_EQ(help.err, "");
    for (const char* const option :
         {"--panel", "--no-panel", "--commander-timeout", "--headless", "--speed", "--duration",
          "--fault", "--seed", "--help", "--version"}) {
        EXPECT_NE(help.out.find(option), std::string::npos) << option;
    }
    const outcome version = run_program({built("zk4sim"), "--version"});
    EXPECT_EQ(version.status, 0);
    EXPECT_EQ(version.out, "zk4sim 0.1.0\n");
    EXPECT_EQ(version.err, "");
}

TEST_F(Zk4sim, PrintsItsIdentifierOnceAndAloneOnTheStandardOutput) {
    const outcome end =
        run_program({built("zk4sim"), "--headless", "--no-panel", "--duration", "0.2"});
    EXPECT_EQ(end.status, 0);
    EXPECT_EQ(end.out.rfind("ident_mem=", 0), 0u);
    EXPECT_EQ(lines_in(end.out), 1);
    EXPECT_EQ(end.err, "zk4sim: durée écoulée\nbilan: bonnes=0 mauvaises=0 incidents=0\n");
}

TEST_F(Zk4sim, ServesTheInputsAndOutputsInTheirOrder) {
    station running({"--no-panel"});
    const char* const names[] = {
        "b1e",   "b1s",  "b2e",  "b2s",  "b3e",          "b3s",    "te",   "ts",   "vh",
        "vb",    "ph",   "pb",   "pp",   "p1ok",         "p2ok",   "p3ok", "init", "vide",
        "colle", "dc",   "ac",   "atu",  "timer10_term", "DEPOSE", "MTA",  "MT",   "ASPI",
        "RENT",  "SORT", "DESV", "MONV", "DESP",         "MONP",   "BZ1",  "BZ2",  "BZ3"};
    std::istringstream list(running.io({"list"}).out);
    int i = 0;
    for (std::string direction, name, value; list >> direction >> name >> value; ++i) {
        ASSERT_LT(i, 36);
        EXPECT_EQ(direction, i < 23 ? "entree" : "sortie");
        EXPECT_EQ(name, names[i]);
    }
    EXPECT_EQ(i, 36);
}

TEST_F(Zk4sim, PublishesItsStateAtTheStartAndTheEffectOfCommands) {
    station running({"--no-panel", "--speed", "20"});
    for (const char* const name : {"te", "vh", "ph", "b1e", "b2e", "b3e", "init"})
        EXPECT_EQ(running.value(name), "1");
    EXPECT_EQ(running.io({"set", "SORT=1", "BZ2=1"}).status, 0);
    EXPECT_EQ(running.io({"wait", "ts=1", "b2s=1", "te=0", "--timeout", "5"}).status, 0);
    EXPECT_EQ(running.value("init"), "0");
}

TEST_F(Zk4sim, KeepsRealTimeAtTheSpeedAskedFor) {
    const struct {
        const char* speed;
        const char* duration;
        double real_s;
    } rows[] = {{"1", "0.5", 0.5}, {"0.1", "0.05", 0.5}, {"10", "5", 0.5}, {"100", "50", 0.5}};
    for (const auto& [speed, duration, real_s] : rows) {
        const double took_s = seconds_of([&] {
            run_program({built("zk4sim"), "--no-panel", "--speed", speed, "--duration", duration});
        });
        EXPECT_GE(took_s, real_s - 0.02) << speed;
        EXPECT_LT(took_s, real_s + 1.0) << speed;
    }
}

TEST_F(Zk4sim, TakesFaultsFromTheStart) {
    station running({"--no-panel", "--speed", "20", "--fault", "te=stuck0", "--fault",
                     "ts=inverted", "--fault", "ac=stuck1", "--fault", "BZ1=dead"});
    EXPECT_EQ(running.value("te"), "0");
    EXPECT_EQ(running.value("ts"), "1");
    EXPECT_EQ(running.value("ac"), "1");
    running.io({"set", "BZ1=1", "BZ2=1"});
    EXPECT_EQ(running.io({"wait", "b2s=1", "--timeout", "5"}).status, 0);
    EXPECT_EQ(running.value("b1e"), "1");
    EXPECT_EQ(running.value("b1s"), "0");
}

TEST_F(Zk4sim, TellsIncidentsAsTheyHappenAndSumsUp) {
    station running({"--no-panel", "--speed", "20"});
    running.io({"set", "DEPOSE=1"});
    ASSERT_TRUE(
        wait_until([&] { return running.process->err().find("incident: ") != std::string::npos; }));
    running.process->signal(SIGTERM);
    EXPECT_EQ(running.process->wait(), 0);
    EXPECT_EQ(running.summary(), "bilan: bonnes=0 mauvaises=0 incidents=1\n");
    EXPECT_EQ(lines_in(running.process->err()), 3) << running.process->err();
}

TEST_F(Zk4sim, EndsAtASignalWithStatusZeroAndItsClientsKnow) {
    for (const int number : {SIGINT, SIGTERM, SIGHUP}) {
        station running({"--no-panel"});
        program watcher({built("quorin-io"), running.ident, "watch"});
        std::this_thread::sleep_for(std::chrono::milliseconds(100));
        running.process->signal(number);
        EXPECT_EQ(running.process->wait(seconds(2)), 0);
        EXPECT_EQ(watcher.wait(seconds(1)), 0);
        EXPECT_EQ(running.process->err(),
                  "zk4sim: fin demandée\nbilan: bonnes=0 mauvaises=0 incidents=0\n");
    }
}

TEST_F(Zk4sim, ASignalDuringItsStartLeavesNothing) {
    for (int i = 0; i < 40; ++i) {
        program starting({built("zk4sim"), "--no-panel"});
        std::this_thread::sleep_for(std::chrono::microseconds(100 * i));
        const int number = i % 2 ? SIGTERM : SIGINT;
        starting.signal(number);
        const int status = starting.wait(seconds(3)).value_or(-1);
        EXPECT_TRUE(status == 0 || status == 128 + number) << status << " at " << i;
        EXPECT_TRUE(wait_until([] { return leftovers::segments().empty(); }, seconds(1)));
    }
}

TEST_F(Zk4sim, UnderNohupAHangupDoesNotEndIt) {
    program running(
        {"sh", "-c", "trap '' HUP; exec " + built("zk4sim") + " --no-panel --duration 0.5"});
    ASSERT_NE(wait_for_ident(running), "");
    running.signal(SIGHUP);
    EXPECT_EQ(running.wait(), 0);
    EXPECT_EQ(running.err(), "zk4sim: durée écoulée\nbilan: bonnes=0 mauvaises=0 incidents=0\n");
}

TEST_F(Zk4sim, ServesWhicheverOfItsStreamsAreClosed) {
    const struct {
        std::string closed;
        long lines_out, lines_err;
    } rows[] = {
        {"<&-", 1, 2}, {">&-", 0, 2}, {"2>&-", 1, 0}, {"<&- >&-", 0, 2}, {"<&- >&- 2>&-", 0, 0}};
    for (const auto& [closed, lines_out, lines_err] : rows) {
        const outcome end = run_program(
            {"sh", "-c", "exec " + built("zk4sim") + " --no-panel --duration 0.1 " + closed}, {},
            seconds(5));
        EXPECT_EQ(end.status, 0) << closed << end.err;
        EXPECT_EQ(lines_in(end.out), lines_out) << closed;
        EXPECT_EQ(lines_in(end.err), lines_err) << closed;
    }
}

TEST_F(Zk4sim, TheEndOfAChildThatIsNotItsOwnChangesNothing) {
    program running({"sh", "-c", "sleep 0.1 & exec " + built("zk4sim") + " --no-panel"});
    const std::string ident = wait_for_ident(running);
    ASSERT_NE(ident, "");
    std::this_thread::sleep_for(std::chrono::milliseconds(300));
    EXPECT_EQ(run_program({built("quorin-io"), ident, "set", "BZ1=1"}).status, 0);
    EXPECT_EQ(run_program({built("quorin-io"), ident, "wait", "b1s=1", "--timeout", "5"}).status,
              0);
    EXPECT_EQ(running.err(), "");
}

TEST_F(Zk4sim, ItsSegmentIsMarkedForRemovalYetOpenToClients) {
    station running({"--no-panel"});
    const int ident = std::stoi(running.ident);
    shmid_ds status;
    ASSERT_EQ(shmctl(ident, IPC_STAT, &status), 0);
    EXPECT_TRUE(status.shm_perm.mode & SHM_DEST);
    EXPECT_EQ(status.shm_nattch, 2u) << "the station and its supervisor";
    {
        const attached_segment segment(running.ident);
        ASSERT_TRUE(segment);
        running.process->signal(SIGTERM);
        EXPECT_EQ(running.process->wait(), 0);
        EXPECT_EQ(segment->inputs_clock, -1);
    }
    EXPECT_EQ(shmctl(ident, IPC_STAT, &status), -1) << "freed with the last client";
}

TEST_F(Zk4sim, NeverServesIdentifierZeroTheFirstOfAMachine) {
    const outcome first = run_in_child([] {
        if (unshare(CLONE_NEWIPC) != 0) _exit(77);
        const int ident = shmget(IPC_PRIVATE, 1, 0600);
        shmctl(ident, IPC_RMID, nullptr);
        _exit(ident == 0 ? 0 : 78);
    });
    if (first.status == 77) GTEST_SKIP() << "needs the rights to make an IPC namespace";
    ASSERT_EQ(first.status, 0) << "a fresh namespace no longer begins at 0";
    const outcome end =
        run_program({"unshare", "--ipc", "sh", "-c",
                     built("zk4sim") + " --no-panel --duration 0.1; cat /proc/sysvipc/shm"});
    EXPECT_EQ(end.status, 0);
    EXPECT_EQ(end.out.rfind("ident_mem=", 0), 0u);
    EXPECT_NE(end.out.rfind("ident_mem=0\n", 0), 0u);
    EXPECT_EQ(lines_in(end.out), 2) << "no segment is left: " << end.out;
}

TEST_F(Zk4sim, APanelThatCannotBeStartedIsStatusOneInOneLine) {
    const outcome end = run_program({built("zk4sim"), "--panel", "/nowhere/panel"});
    EXPECT_EQ(end.status, 1);
    EXPECT_EQ(end.err, "zk4sim: panneau /nowhere/panel: No such file or directory\n");
}

TEST_F(Zk4sim, StartsThePanelOnItsSegmentAndEndsWithIt) {
    const struct {
        std::string panel;
        std::string why;
    } rows[] = {{"true", "panneau fermé"}, {"false", "panneau terminé (statut 1)"}};
    for (const auto& [panel, why] : rows) {
        const outcome end = run_program({built("zk4sim"), "--panel", panel});
        EXPECT_EQ(end.status, 0);
        EXPECT_EQ(end.err, "zk4sim: " + why + "\nbilan: bonnes=0 mauvaises=0 incidents=0\n");
    }
    const outcome echo = run_program({built("zk4sim"), "--panel", "echo"});
    EXPECT_EQ(lines_in(echo.out), 1) << "what the panel prints goes to the error stream";
    EXPECT_EQ(echo.err.rfind("-automemlink " + echo.out.substr(10), 0), 0u) << echo.err;
}

TEST_F(Zk4sim, EndsWithAPanelThatWasKilledWhileItHeldTheLock) {
    for (const char* const speed : {"1", "20"}) {
        const outcome end = run_program(
            {built("zk4sim"), "--speed", speed, "--panel", built("panel_that_dies_with_the_lock")},
            {}, seconds(5));
        EXPECT_EQ(end.status, 0) << end.err;
        EXPECT_NE(end.err.find("zk4sim: panneau terminé (signal 9)\nbilan: "), std::string::npos)
            << end.err;
    }
}

// The panel extends a blocker and leaves: the station's last step, without commands, changes
// inputs. The error stream takes nothing, so that zk4sim stands still where it says why it ends.
TEST_F(Zk4sim, TheLastStepAfterThePanelDoesNotReopenTheSession) {
    const std::string panel = testing::TempDir() + "panel_" + std::to_string(getpid());
    std::ofstream(panel) << "#!/bin/sh\nexec >/dev/null 2>&1\n"
                         << built("quorin-io") << " $2 set BZ1=1\n"
                         << built("quorin-io") << " $2 wait b1s=1 --timeout 5\nsleep 0.2\n";
    ASSERT_EQ(chmod(panel.c_str(), 0700), 0);
    int full[2];
    ASSERT_EQ(pipe2(full, O_CLOEXEC | O_NONBLOCK), 0);
    char bytes[4096] = {};
    while (write(full[1], bytes, 1) > 0) {
    }
    const std::string error_stream =
        "/proc/" + std::to_string(getpid()) + "/fd/" + std::to_string(full[1]);
    program running(
        {"sh", "-c",
         "exec " + built("zk4sim") + " --headless --panel " + panel + " 2>" + error_stream});
    const attached_segment segment(wait_for_ident(running));
    ASSERT_TRUE(segment);
    const int b1s = 1;
    EXPECT_TRUE(wait_until([&] { return io_value(*segment, io_direction::input, b1s) == 1; }));
    EXPECT_TRUE(wait_until([&] { return io_value(*segment, io_direction::input, b1s) == 0; }));
    std::this_thread::sleep_for(std::chrono::milliseconds(100));
    EXPECT_TRUE(running.running());
    EXPECT_TRUE(segment.session_over());
    close(full[1]);
    while (read(full[0], bytes, sizeof bytes) > 0) {
    }
    EXPECT_EQ(running.wait(seconds(5)), 0);
    EXPECT_TRUE(segment.session_over());
    close(full[0]);
    std::filesystem::remove(panel);
}

TEST_F(Zk4sim, AForeignClientThatDiedWithTheLockHoldsTheStationUpForASecondAtMost) {
    station running({"--no-panel", "--speed", "20"});
    run_in_child([&running] {
        const attached_segment segment(running.ident);
        while (sem_trywait(&segment->lock) != 0) usleep(100);
        kill(getpid(), SIGKILL);
    });
    EXPECT_EQ(running.io({"set", "BZ1=1"}).status, 0);
    std::this_thread::sleep_for(std::chrono::milliseconds(1200));
    EXPECT_EQ(running.io({"wait", "b1s=1", "--timeout", "2"}).status, 0);
    std::this_thread::sleep_for(std::chrono::milliseconds(1200));
    int count = -1;
    sem_getvalue(&attached_segment(running.ident)->lock, &count);
    EXPECT_EQ(count, 1) << "posted once, not twice";
    running.process->signal(SIGTERM);
    EXPECT_EQ(running.process->wait(), 0);
}

TEST_F(Zk4sim, WithoutAPanelCommandsHoldBetweenClients) {
    station running({"--no-panel", "--speed", "20"});
    running.io({"set", "BZ3=1"});
    ASSERT_EQ(running.io({"wait", "b3s=1", "--timeout", "5"}).status, 0);
    std::this_thread::sleep_for(std::chrono::milliseconds(500));
    EXPECT_EQ(running.value("b3s"), "1");
}

TEST_F(Zk4sim, AfterTheCommanderTimeoutCommandsCountAsZeroAndItSaysSoOnce) {
    station running({"--no-panel", "--speed", "5", "--commander-timeout", "0.5"});
    running.io({"set", "BZ3=1"});
    ASSERT_EQ(running.io({"wait", "b3s=1", "--timeout", "5"}).status, 0);
    const std::string said = "zk4sim: aucun client depuis trop longtemps: les commandes valent 0\n";
    ASSERT_TRUE(wait_until([&] { return running.process->err() == said; }, seconds(3)));
    std::this_thread::sleep_for(std::chrono::milliseconds(200));
    EXPECT_EQ(running.value("b3e"), "1") << "the blocker's spring took it back";
    EXPECT_EQ(running.io({"wait", "b3s=1", "--timeout", "1"}).status, 3) << "an observer does not";
    EXPECT_EQ(running.io({"set", "BZ3=1", "--until", "b3s=1", "--timeout", "5"}).status, 0)
        << "a client that stays commands again";
    EXPECT_EQ(running.process->err(), said);
}

TEST_F(Zk4sim, ServesNumbersTheSameWayInAnyLocale) {
    const outcome end =
        run_program({built("zk4sim"), "--no-panel", "--duration", "0.05", "--speed", "0.5"},
                    {"LC_ALL=fr_FR.UTF-8"});
    EXPECT_EQ(end.status, 0);
    EXPECT_EQ(run_program({built("zk4sim"), "--speed", "0,5"}, {"LC_ALL=fr_FR.UTF-8"}).status, 2);
}

}  // namespace
