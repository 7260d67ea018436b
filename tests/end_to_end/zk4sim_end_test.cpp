// How a session ends: by signals, with its panel, whichever of its streams are there.
#include <signal.h>
#include <sys/stat.h>
#include <unistd.h>

#include <atomic>
#include <fstream>
#include <thread>

#include "ioshare/io_slots.h"
#include "session/station_model.h"
#include "tests/end_to_end/zk4sim_session.h"
#include "workcell/station_names.h"

namespace {

TEST_F(Zk4sim, EndsAtASignalWithStatusZeroAndItsClientsKnow) {
    for (const int number : {SIGINT, SIGTERM, SIGHUP}) {
        station running({"--no-panel"});
        const attached_segment segment(running.ident);
        program watcher({built("quorin-io"), running.ident, "watch", "--initial"});
        ASSERT_TRUE(wait_until([&] { return !watcher.out().empty(); }));
        running.process->signal(number);
        EXPECT_EQ(running.process->wait(), 0);
        EXPECT_TRUE(segment.session_over());
        EXPECT_EQ(watcher.wait(), 0);
        EXPECT_EQ(running.process->err(), "zk4sim: fin demandée\n" + nothing_made);
    }
}

TEST_F(Zk4sim, ASignalDuringItsStartLeavesNothing) {
    for (int i = 0; i < 40; ++i) {
        program starting({built("zk4sim"), "--headless", "--no-panel"});
        std::this_thread::sleep_for(std::chrono::microseconds(100 * i));
        const int number = i % 2 ? SIGTERM : SIGINT;
        starting.signal(number);
        const int status = starting.wait().value_or(-1);
        EXPECT_TRUE(status == 0 || status == 128 + number) << status << " at " << i;
        EXPECT_TRUE(wait_until([] { return leftovers::segments().empty(); }));
    }
}

TEST_F(Zk4sim, UnderNohupAHangupDoesNotEndIt) {
    program running(
        {"sh", "-c",
         "trap '' HUP; exec " + built("zk4sim") + " --headless --no-panel --duration 0.5"});
    ASSERT_NE(wait_for_ident(running), "");
    running.signal(SIGHUP);
    EXPECT_EQ(running.wait(), 0);
    EXPECT_EQ(running.err(), "zk4sim: durée écoulée\n" + nothing_made);
}

TEST_F(Zk4sim, ServesWhicheverOfItsStreamsAreClosed) {
    const struct {
        std::string closed;
        long lines_out, lines_err;
    } rows[] = {
        {"<&-", 1, 2}, {">&-", 0, 2}, {"2>&-", 1, 0}, {"<&- >&-", 0, 2}, {"<&- >&- 2>&-", 0, 0}};
    for (const auto& [closed, lines_out, lines_err] : rows) {
        const outcome end = run_program(
            {"sh", "-c",
             "exec " + built("zk4sim") + " --headless --no-panel --duration 0.1 " + closed});
        EXPECT_EQ(end.status, 0) << closed << end.err;
        EXPECT_EQ(lines_in(end.out), lines_out) << closed;
        EXPECT_EQ(lines_in(end.err), lines_err) << closed;
    }
}

TEST_F(Zk4sim, TheEndOfAChildThatIsNotItsOwnChangesNothing) {
    program running({"sh", "-c", "sleep 0.1 & exec " + built("zk4sim") + " --headless --no-panel"});
    const std::string ident = wait_for_ident(running);
    ASSERT_NE(ident, "");
    std::this_thread::sleep_for(std::chrono::milliseconds(300));
    EXPECT_EQ(run_program({built("quorin-io"), ident, "set", "BZ1=1"}).status, 0);
    EXPECT_EQ(run_program({built("quorin-io"), ident, "wait", "b1s=1", "--timeout", "15"}).status,
              0);
    EXPECT_EQ(running.err(), "");
}

TEST_F(Zk4sim, APanelThatCannotBeStartedIsStatusOneInOneLine) {
    const outcome end = run_zk4sim({"--panel", "/nowhere/panel"});
    EXPECT_EQ(end.status, 1);
    EXPECT_EQ(end.err, "zk4sim: panneau /nowhere/panel: fichier ou dossier introuvable\n");
}

TEST_F(Zk4sim, EndsWithItsPanelAndFailsWhenThatDidNotEndWell) {
    const struct {
        std::string panel, why;
        int status;
    } rows[] = {{"true", "panneau fermé", 0}, {"false", "panneau terminé (statut 1)", 1}};
    for (const auto& [panel, why, status] : rows) {
        const outcome end = run_zk4sim({"--panel", panel});
        EXPECT_EQ(end.status, status);
        EXPECT_EQ(end.err, "zk4sim: " + why + "\n" + nothing_made);
    }
}

TEST_F(Zk4sim, StartsThePanelOnItsSegmentAndShowsWhatItPrintsOnTheErrorStream) {
    const outcome echo = run_zk4sim({"--panel", "echo"});
    EXPECT_EQ(echo.status, 0);
    EXPECT_EQ(lines_in(echo.out), 1);
    EXPECT_EQ(echo.err,
              "-automemlink " + echo.out.substr(10) + "zk4sim: panneau fermé\n" + nothing_made);
}

TEST_F(Zk4sim, EndsWithAPanelThatWasKilledWhileItHeldTheLock) {
    for (const char* const speed : {"1", "20"}) {
        const outcome end =
            run_zk4sim({"--speed", speed, "--panel", built("panel_that_dies_with_the_lock")});
        EXPECT_EQ(end.status, 0) << end.err;
        EXPECT_NE(end.err.find("zk4sim: panneau terminé (signal 9)\nbilan: "), std::string::npos)
            << end.err;
    }
}

/// A program that does these commands of quorin-io on the segment of its second argument, and ends
/// once it may.
class scripted_panel {
public:
    explicit scripted_panel(const std::vector<std::string>& commands) {
        std::ofstream script(path);
        script << "#!/bin/sh\nexec >/dev/null 2>&1\n";
        for (const std::string& each : commands)
            script << built("quorin-io") << " $2 " << each << "\n";
        script << "until [ -e " << may_end << " ]; do sleep 0.02; done\n";
        script.close();
        chmod(path.c_str(), 0700);
    }
    ~scripted_panel() {
        std::filesystem::remove(path);
        std::filesystem::remove(may_end);
    }
    void let_end() const { std::ofstream file(may_end); }
    scripted_panel(const scripted_panel&) = delete;
    scripted_panel& operator=(const scripted_panel&) = delete;

    const std::string path = testing::TempDir() + "panel_" + std::to_string(getpid());

private:
    const std::string may_end = path + ".end";
};

// The panel extends a blocker and leaves: the station's last step, without commands, changes
// inputs when the end has been announced already.
TEST_F(Zk4sim, TheLastStepAfterThePanelDoesNotReopenTheSession) {
    const int out = index_of(station_inputs, "b1s");
    for (int i = 0; i < 40; ++i) {
        const scripted_panel panel({"set BZ1=1", "wait b1s=1 --timeout 15"});
        station running({"--speed", "5", "--panel", panel.path});
        const attached_segment segment(running.ident);
        ASSERT_TRUE(segment);
        std::atomic<bool> ended = false, reopened = false;
        std::jthread watcher([&] {
            while (!ended)
                if (segment.session_over())
                    while (!ended)
                        if (!segment.session_over()) reopened = true;
        });
        panel.let_end();
        EXPECT_TRUE(running.process->wait());
        ended = true;
        watcher.join();
        EXPECT_TRUE(segment.session_over());
        EXPECT_FALSE(reopened) << i;
        EXPECT_EQ(io_value(*segment, io_direction::input, out), 0) << "the last step was made";
    }
}

}  // namespace
