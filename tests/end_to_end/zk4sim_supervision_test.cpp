// The simulator and its supervisor without a display: what one does when the other is killed or
// stopped.
#include <signal.h>

#include <filesystem>
#include <fstream>
#include <thread>

#include "tests/end_to_end/zk4sim_session.h"

namespace {

pid_t supervisor_of(const program& zk4sim) {
    pid_t found = 0;
    wait_until([&] { return (found = child_named(zk4sim.id(), "zk4sim-garde")) != 0; });
    return found;
}

TEST_F(Zk4sim, KilledWithItsWholeProcessGroupItsSessionIsEndedAllTheSame) {
    for (const std::vector<std::string>& options :
         std::vector<std::vector<std::string>>{{"--no-panel"}, {"--no-panel", "--paused"}}) {
        std::vector<std::string> command = zk4sim_command(options);
        command.insert(command.begin(), "setsid");
        program running(command);
        const std::string ident = wait_for_ident(running);
        const attached_segment segment(ident);
        ASSERT_TRUE(segment);
        ASSERT_EQ(getpgid(running.id()), running.id());
        ASSERT_EQ(kill(-running.id(), SIGKILL), 0);
        EXPECT_TRUE(wait_until([&] { return segment.session_over(); }));
        EXPECT_TRUE(
            wait_until([&] { return !std::filesystem::exists(control_socket_path(ident)); }));
    }
}

TEST_F(Zk4sim, ItsSupervisorTakesNoNoticeOfTheTerminalsSignals) {
    station running({"--no-panel"});
    const pid_t supervisor = supervisor_of(*running.process);
    for (const int number : {SIGINT, SIGTERM, SIGHUP, SIGQUIT}) kill(supervisor, number);
    EXPECT_EQ(running.io({"set", "BZ1=1"}).status, 0);
    EXPECT_EQ(running.io({"wait", "b1s=1", "--timeout", "15"}).status, 0);
    EXPECT_EQ(kill(supervisor, 0), 0);
}

TEST_F(Zk4sim, WithoutItsSupervisorTheSessionEnds) {
    station running({"--no-panel"});
    const attached_segment segment(running.ident);
    kill(supervisor_of(*running.process), SIGKILL);
    EXPECT_EQ(running.process->wait(), 0);
    EXPECT_TRUE(segment.session_over());
    EXPECT_EQ(lines_in(running.process->err()), 2) << running.process->err();
}

TEST_F(Zk4sim, NoticesTheEndOfItsSupervisorAlsoWhenItsStarterBlockedSignals) {
    std::vector<std::string> command = zk4sim_command({"--no-panel"});
    command.insert(command.begin(), {"env", "--block-signal"});
    program running(command);
    const attached_segment segment(wait_for_ident(running));
    kill(supervisor_of(running), SIGKILL);
    EXPECT_EQ(running.wait(), 0);
    EXPECT_TRUE(segment.session_over());
    EXPECT_NE(running.err().find("le processus de garde a disparu"), std::string::npos);
}

TEST_F(Zk4sim, AStoppedSupervisorDoesNotHoldUpItsEnd) {
    station running({"--no-panel"});
    kill(supervisor_of(*running.process), SIGSTOP);
    running.process->signal(SIGTERM);
    EXPECT_EQ(running.process->wait(), 0);
    EXPECT_EQ(running.process->err(), "zk4sim: fin demandée\n" + nothing_made);
}

// Stopped as soon as it is there: the session begins without noticing, or cannot begin.
TEST_F(Zk4sim, AStoppedSupervisorDoesNotHoldUpItsStart) {
    for (int caught = 0, tries = 0; caught < 3; ++tries) {
        ASSERT_LT(tries, 50);
        program starting(zk4sim_command({"--no-panel", "--duration", "0.1"}));
        const std::string children = "/proc/" + std::to_string(starting.id()) + "/task/" +
                                     std::to_string(starting.id()) + "/children";
        pid_t supervisor = 0;
        while (supervisor == 0 && starting.running()) std::ifstream(children) >> supervisor;
        if (supervisor == 0) continue;  // It came and went while nobody looked.
        ++caught;
        kill(supervisor, SIGSTOP);
        const int status = starting.wait(seconds(30)).value_or(-1);
        EXPECT_TRUE(status == 0 || status == 1) << status;
        EXPECT_EQ(lines_in(starting.out()), status == 0 ? 1 : 0);
        EXPECT_EQ(lines_in(starting.err()), status == 0 ? 2 : 1) << starting.err();
    }
}

TEST_F(Zk4sim, AStoppedSimulatorGoesOnWhereItWas) {
    controlled_station running({"--no-panel", "--speed", "10"});
    running.process->signal(SIGSTOP);
    const attached_segment segment(running.ident);
    std::this_thread::sleep_for(std::chrono::milliseconds(700));
    EXPECT_FALSE(segment.session_over());
    running.process->signal(SIGCONT);
    const double before_s = running.simulated_s();
    EXPECT_TRUE(wait_until([&] { return running.simulated_s() > before_s + 1; }));
    EXPECT_EQ(running.end(), 0);
}

}  // namespace
