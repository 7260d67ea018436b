// zk4sim while it serves: names, values, commands, faults, supplies and what it tells.
#include <sched.h>
#include <signal.h>
#include <sys/ipc.h>
#include <sys/shm.h>
#include <unistd.h>

#include <thread>

#include "ioshare/io_slots.h"
#include "session/station_model.h"
#include "tests/end_to_end/zk4sim_session.h"
#include "workcell/station_names.h"

namespace {

TEST_F(Zk4sim, PrintsItsIdentifierOnceAndAloneOnTheStandardOutput) {
    const outcome end = run_zk4sim({"--no-panel", "--duration", "0.2"});
    EXPECT_EQ(end.status, 0);
    EXPECT_EQ(end.out.rfind("ident_mem=", 0), 0u);
    EXPECT_EQ(lines_in(end.out), 1);
    EXPECT_EQ(end.err, "zk4sim: durée écoulée\n" + nothing_made);
}

TEST_F(Zk4sim, ServesTheInputsAndOutputsInTheirOrder) {
    station running({"--no-panel"});
    std::string expected;
    for (const std::string_view name : station_inputs) expected += " " + std::string(name);
    for (const std::string_view name : station_outputs) expected += " " + std::string(name);
    const attached_segment segment(running.ident);
    ASSERT_TRUE(segment);
    std::string served;
    for (int i = 0; i < segment->nb_inputs; ++i)
        served += " " + std::string(io_name(*segment, io_direction::input, i));
    for (int i = 0; i < segment->nb_outputs; ++i)
        served += " " + std::string(io_name(*segment, io_direction::output, i));
    EXPECT_EQ(served, expected);
}

TEST_F(Zk4sim, PublishesItsStateAtTheStartAndTheEffectOfCommands) {
    station running({"--no-panel", "--speed", "20"});
    for (const char* const name : {"te", "vh", "ph", "b1e", "b2e", "b3e", "init"})
        EXPECT_EQ(running.value(name), "1");
    EXPECT_EQ(running.io({"set", "SORT=1", "BZ2=1"}).status, 0);
    EXPECT_EQ(running.io({"wait", "ts=1", "b2s=1", "te=0", "--timeout", "15"}).status, 0);
    EXPECT_EQ(running.value("init"), "0");
}

TEST_F(Zk4sim, TakesFaultsFromTheStart) {
    station running({"--no-panel", "--speed", "20", "--fault", "te=stuck0", "--fault",
                     "ts=inverted", "--fault", "ac=stuck1", "--fault", "BZ1=dead"});
    EXPECT_EQ(running.value("te"), "0");
    EXPECT_EQ(running.value("ts"), "1");
    EXPECT_EQ(running.value("ac"), "1");
    running.io({"set", "BZ1=1", "BZ2=1"});
    EXPECT_EQ(running.io({"wait", "b2s=1", "--timeout", "15"}).status, 0);
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

TEST_F(Zk4sim, HasAsManyBasesAsItWasGiven) {
    for (const int bases : {0, 1, 3}) {
        controlled_station running({"--no-panel", "--paused", "--bases", std::to_string(bases)});
        running.io({"set", "MT=1", "MTA=1"});
        EXPECT_EQ(running.ask("step 100"), "0\n");
        EXPECT_EQ(running.end(), 0);
        EXPECT_EQ(running.summary(),
                  "bilan: bonnes=0 mauvaises=" + std::to_string(bases) + " incidents=0\n");
    }
}

TEST_F(Zk4sim, HasAsManyPartsAsItWasGiven) {
    for (const int parts : {0, 1}) {
        controlled_station running({"--no-panel", "--paused", "--parts", std::to_string(parts)});
        EXPECT_EQ(running.ask("step 5"), "0\n");
        EXPECT_EQ(running.value("pp"), std::to_string(parts));
    }
}

TEST_F(Zk4sim, StartsPausedWithItsFirstStatePublished) {
    controlled_station running({"--no-panel", "--paused", "--speed", "100"});
    EXPECT_EQ(running.value("te"), "1");
    std::this_thread::sleep_for(std::chrono::milliseconds(200));
    EXPECT_EQ(running.told("secondes"), "0.000");
    EXPECT_EQ(running.told("etat"), "pause");
    EXPECT_EQ(running.ask("resume"), "0\n");
    EXPECT_TRUE(wait_until([&] { return running.simulated_s() > 1; }));
    EXPECT_EQ(running.end(), 0);
}

TEST_F(Zk4sim, BearsItsTitle) {
    for (const char* const title : {"poste 7", "a, \"b\" = c", "[1,2]", "é"}) {
        controlled_station running({"--no-panel", "--title", title});
        EXPECT_EQ(running.told("titre"), title);
    }
}

TEST_F(Zk4sim, WithoutAPanelCommandsHoldBetweenClients) {
    station running({"--no-panel", "--speed", "20"});
    running.io({"set", "BZ3=1"});
    ASSERT_EQ(running.io({"wait", "b3s=1", "--timeout", "15"}).status, 0);
    std::this_thread::sleep_for(std::chrono::milliseconds(500));
    EXPECT_EQ(running.value("b3s"), "1");
}

TEST_F(Zk4sim, AfterTheCommanderTimeoutCommandsCountAsZeroAndItSaysSoOnce) {
    controlled_station running({"--no-panel", "--speed", "5", "--commander-timeout", "1"});
    {
        const attached_segment commander(running.ident);
        const int blocker = index_of(station_outputs, "BZ3"), out = index_of(station_inputs, "b3s");
        commander->output_values[blocker] = 1;
        ASSERT_TRUE(
            wait_until([&] { return io_value(*commander, io_direction::input, out) == 1; }));
    }
    const std::string said = "zk4sim: aucun client depuis trop longtemps: les commandes valent 0\n";
    ASSERT_TRUE(wait_until([&] { return running.process->err() == said; }));
    const attached_segment again(running.ident);
    const int out = index_of(station_inputs, "b3s");
    EXPECT_TRUE(wait_until([&] { return io_value(*again, io_direction::input, out) == 1; }))
        << "a client that stays commands again";
    EXPECT_EQ(running.process->err(), said);
}

TEST_F(Zk4sim, WhoOnlyLooksIsNoCommander) {
    station running({"--no-panel", "--speed", "5", "--commander-timeout", "1"});
    program watcher({built("quorin-io"), running.ident, "watch"});
    EXPECT_EQ(running.io({"set", "BZ3=1", "--until", "b3s=1", "--timeout", "20"}).status, 0);
    const std::string said = "zk4sim: aucun client depuis trop longtemps: les commandes valent 0\n";
    EXPECT_TRUE(wait_until([&] { return running.process->err() == said; }));
    EXPECT_TRUE(watcher.running());
    EXPECT_EQ(running.io({"wait", "b3s=0", "--timeout", "20"}).status, 0);
    EXPECT_EQ(running.io({"set", "BZ3=1", "--until", "b3s=1", "--timeout", "20"}).status, 0)
        << "one who writes is, while it is there";
}

TEST_F(Zk4sim, AForeignClientThatDiedWithTheLockDoesNotHoldTheStationUp) {
    station running({"--no-panel", "--speed", "20"});
    run_in_child([&running] {
        const attached_segment segment(running.ident);
        while (sem_trywait(&segment->lock) != 0) usleep(100);
        kill(getpid(), SIGKILL);
    });
    EXPECT_EQ(running.io({"set", "BZ1=1"}).status, 0);
    EXPECT_TRUE(wait_until([&] { return running.value("b1s") == "1"; }));
    const attached_segment segment(running.ident);
    EXPECT_TRUE(wait_until([&] {
        int count = -1;
        return sem_getvalue(&segment->lock, &count) == 0 && count == 1;
    }));
    EXPECT_EQ(running.process->running(), true);
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
    const outcome end = run_program(
        {"unshare", "--ipc", "sh", "-c",
         built("zk4sim") + " --headless --no-panel --duration 0.1; cat /proc/sysvipc/shm"});
    EXPECT_EQ(end.status, 0);
    EXPECT_EQ(end.out.rfind("ident_mem=", 0), 0u);
    EXPECT_NE(end.out.rfind("ident_mem=0\n", 0), 0u);
    EXPECT_EQ(lines_in(end.out), 2) << "no segment is left: " << end.out;
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

}  // namespace
