// zk4sim --exec: a command in the panel's place.
#include <signal.h>
#include <unistd.h>

#include "tests/end_to_end/zk4sim_session.h"

namespace {

TEST_F(Zk4sim, ItsStatusIsThatOfTheCommand) {
    const struct {
        std::string command;
        int status;
    } rows[] = {{"true", 0},
                {"exit 7", 7},
                {"exit 255", 255},
                {"kill -TERM $$", 128 + SIGTERM},
                {"kill -KILL $$", 128 + SIGKILL},
                {"/nowhere/command 2>/dev/null", 127},
                {"[ a = b ]", 1},
                {"[ a = a ]", 0}};
    for (const auto& [command, status] : rows) {
        const outcome end = run_zk4sim({"--exec", command});
        EXPECT_EQ(end.status, status) << command;
        EXPECT_EQ(lines_in(end.out), 1) << end.out;
        EXPECT_TRUE(end.err.ends_with("\n" + nothing_made)) << end.err;
        EXPECT_EQ(lines_in(end.err), 2) << "why, and the summary: " << end.err;
    }
}

TEST_F(Zk4sim, ItsCommandFindsTheIdentifierAndDrivesTheStation) {
    const outcome named = run_zk4sim({"--exec", "echo ident_mem=$QUORIN_IDENT"});
    EXPECT_EQ(named.status, 0);
    EXPECT_EQ(named.err.rfind(named.out, 0), 0u) << named.err;
    const std::string io = built("quorin-io") + " $QUORIN_IDENT ";
    const outcome driven =
        run_zk4sim({"--speed", "10", "--exec",
                    io + "set DEPOSE=1 && " + io + "wait colle=0 b1e=1 && sleep 1"});
    EXPECT_EQ(driven.status, 0) << driven.err;
    EXPECT_TRUE(driven.err.ends_with("bilan: bonnes=0 mauvaises=0 incidents=1\n")) << driven.err;
}

/// Runs a session that is over soon after its command has said so with `go_on`: its time stands
/// still until then.
outcome run_until_soon_after(const std::string& command) {
    return run_zk4sim({"--paused", "--duration", "0.1", "--exec", command});
}
const std::string go_on = built("quorin-io") + " $QUORIN_IDENT resume; ";

TEST_F(Zk4sim, ASessionThatEndsFirstEndsTheCommandsWholeGroup) {
    const outcome over =
        run_until_soon_after("trap 'echo told; exit 5' TERM; sleep 1000 & sleep 1000 & " + go_on +
                             "while :; do sleep 0.05; done");
    EXPECT_EQ(over.status, 5) << over.err;
    EXPECT_NE(over.err.find("told\n"), std::string::npos) << over.err;
    EXPECT_NE(over.err.find("zk4sim: durée écoulée\n"), std::string::npos);
    EXPECT_TRUE(wait_until([] { return leftovers::processes().empty(); }))
        << "the children of the command too";
    const outcome unaware = run_until_soon_after(go_on + "sleep 1000");
    EXPECT_EQ(unaware.status, 128 + SIGTERM);
}

TEST_F(Zk4sim, ASignalToTheSessionReachesTheCommandAsItsEnd) {
    for (const int number : {SIGINT, SIGTERM, SIGHUP}) {
        station running({"--exec", "trap 'exit 3' TERM; echo ready; while :; do sleep 0.05; done"});
        ASSERT_TRUE(wait_until([&] { return running.process->err() == "ready\n"; }));
        running.process->signal(number);
        EXPECT_EQ(running.process->wait(), 3);
    }
}

TEST_F(Zk4sim, ACommandThatDoesNotWantToEndHoldsNothingUpForLong) {
    const outcome end =
        run_until_soon_after("trap '' TERM; sleep 1000 & " + go_on + "while :; do sleep 1; done");
    EXPECT_EQ(end.status, 128 + SIGKILL);
    EXPECT_TRUE(end.err.ends_with(nothing_made)) << end.err;
}

TEST_F(Zk4sim, ACommandThatIsStoppedHearsOfTheEndToo) {
    const outcome end = run_until_soon_after("trap 'exit 5' TERM; (sleep 0.3; " + go_on +
                                             ") & kill -STOP $$; sleep 1000");
    EXPECT_EQ(end.status, 5);
}

TEST_F(Zk4sim, ItsCommandGetsAFilesInputAndTheEndInPlaceOfATerminals) {
    const std::string start = built("zk4sim") + " --headless --exec 'cat; exit 7'";
    const outcome piped = run_program({"sh", "-c", "echo word | " + start});
    EXPECT_EQ(piped.status, 7);
    EXPECT_NE(piped.err.find("word\n"), std::string::npos) << piped.err;
    const outcome typed =
        run_program({"sh", "-c", "script -qec \"" + start + "\" /dev/null </dev/null"});
    EXPECT_EQ(typed.status, 7) << typed.out;
}

TEST_F(Zk4sim, TheCommandHasAProcessGroupOfItsOwn) {
    station running({"--exec", "echo ready; sleep 1000; true"});
    ASSERT_TRUE(wait_until([&] { return running.process->err() == "ready\n"; }));
    const pid_t command = child_named(running.process->id(), "sh");
    ASSERT_GT(command, 0);
    EXPECT_EQ(getpgid(command), command);
    EXPECT_NE(getpgid(running.process->id()), command);
}

TEST_F(Zk4sim, ASessionThatIsAskedToEndEndsItsCommand) {
    controlled_station running({"--exec", "sleep 1000"});
    EXPECT_EQ(running.ask("end"), "0\n");
    EXPECT_EQ(running.process->wait(), 128 + SIGTERM);
    EXPECT_EQ(running.process->err(), "zk4sim: fin demandée\n" + nothing_made);
}

}  // namespace
