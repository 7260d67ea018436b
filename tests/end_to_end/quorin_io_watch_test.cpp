// quorin-io while it goes on: watching, and pulses.
#include <signal.h>

#include <regex>
#include <thread>

#include "tests/end_to_end/quorin_io_fixture.h"

namespace {

TEST_F(QuorinIo, WatchTellsEachChangeUntilTheEnd) {
    program all(command({"watch", "--initial"})), one(command({"watch", "ts", "--initial"}));
    ASSERT_TRUE(wait_until([&] { return !all.out().empty() && !one.out().empty(); }));
    const std::string before = all.out();
    publish(1, 3);
    ASSERT_TRUE(
        wait_until([&] { return all.out() == before + "ts=3\n" && one.out() == "ts=0\nts=3\n"; }));
    server->segment->output_values[1] = -2;
    ASSERT_TRUE(wait_until([&] { return all.out() == before + "ts=3\nSORT=-2\n"; }));
    publish(1, 4);
    server->sharing_terminate();
    EXPECT_EQ(all.wait(), 0);
    EXPECT_EQ(one.wait(), 0);
    EXPECT_EQ(all.out(), before + "ts=3\nSORT=-2\nts=4\n")
        << "the last change before the end is told";
    EXPECT_EQ(one.out(), "ts=0\nts=3\nts=4\n");
}

TEST_F(QuorinIo, WatchTellsNothingButChangesWhereNothingElseIsAskedFor) {
    program watching(command({"watch"}));
    int value = 0;
    // It looks for the first time at a moment of its own.
    ASSERT_TRUE(wait_until([&] {
        publish(1, ++value);
        return !watching.out().empty();
    }));
    server->sharing_terminate();
    EXPECT_EQ(watching.wait(), 0);
    EXPECT_TRUE(std::regex_match(watching.out(), std::regex("(ts=[1-9][0-9]*\n)+")))
        << watching.out();
}

TEST_F(QuorinIo, WatchTellsThePresentValuesFirstWhereAskedTo) {
    publish(0, 8);
    program all(command({"watch", "--initial"})),
        some(command({"watch", "both", "te", "--initial"}));
    const std::string values =
        "te=8\nts=0\nte=0\nx=y=0\nboth=0\nRENT=0\nSORT=0\nRENT=0\nboth=0\no=p=0\n";
    ASSERT_TRUE(wait_until(
        [&] { return all.out() == values && some.out() == "te=8\nte=0\nboth=0\nboth=0\n"; }));
    publish(1, 1);
    ASSERT_TRUE(wait_until([&] { return all.out() == values + "ts=1\n"; }));
    server->sharing_terminate();
    EXPECT_EQ(all.wait(), 0);
    EXPECT_EQ(some.wait(), 0);
    EXPECT_EQ(some.out(), "te=8\nte=0\nboth=0\nboth=0\n");
}

TEST_F(QuorinIo, WatchPutsTheSecondsSinceItsStartInFrontWithAPoint) {
    program watching(command({"watch", "--time", "--initial", "ts"}));
    ASSERT_TRUE(wait_until([&] { return !watching.out().empty(); }));
    std::this_thread::sleep_for(std::chrono::milliseconds(300));
    publish(1, 1);
    server->sharing_terminate();
    EXPECT_EQ(watching.wait(), 0);
    std::smatch times;
    const std::string out = watching.out();
    ASSERT_TRUE(std::regex_match(
        out, times, std::regex("([0-9]+\\.[0-9]{3}) ts=0\n([0-9]+)\\.([0-9]{3}) ts=1\n")))
        << out;
    EXPECT_GE(std::stoi(times[2].str() + times[3].str()), 300) << out;
}

TEST_F(QuorinIo, AStandardOutputThatTakesNothingIsRefused) {
    for (const char* const words : {"list", "get te", "--help", "watch --initial"}) {
        SCOPED_TRACE(words);
        expect_one_line(shell(std::string("io ") + words + " >/dev/full"), 1);
        expect_one_line(shell(std::string("io ") + words + " >&-"), 1);
    }
    EXPECT_EQ(shell("io set RENT=1 >&-").status, 0) << "it prints nothing";
}

TEST_F(QuorinIo, AWatchEndsWithItsReaderThoughNothingChanges) {
    const outcome end = shell("{ io watch --initial; echo $? >&2; } | head -n 1");
    EXPECT_EQ(end.out, "te=0\n");
    EXPECT_EQ(end.err, "quorin-io: la sortie standard ne prend rien\n1\n");
}

TEST_F(QuorinIo, AWatchEndsWhenItsOutputTakesNothingMore) {
    program watching(
        {"sh", "-c", "exec " + built("quorin-io") + " " + ident() + " watch >/dev/full"});
    int value = 0;
    ASSERT_TRUE(wait_until([&] {
        publish(1, ++value);
        return !watching.running();
    }));
    EXPECT_EQ(watching.wait(), 1);
    EXPECT_EQ(watching.err(), "quorin-io: la sortie standard ne prend rien\n");
}

TEST_F(QuorinIo, PulsesEveryOutputOfTheNameForItsTime) {
    const auto start = std::chrono::steady_clock::now();
    program pulse(command({"pulse", "RENT", "--for", "1.5"}));
    ASSERT_TRUE(
        wait_until([&] { return server->output_value(0) == 1 && server->output_value(2) == 1; }));
    EXPECT_EQ(pulse.wait(), 0);
    EXPECT_GE(std::chrono::steady_clock::now() - start, std::chrono::milliseconds(1500));
    EXPECT_EQ(server->output_value(0), 0);
    EXPECT_EQ(server->output_value(2), 0);
    EXPECT_EQ(server->output_value(1), 0);
    EXPECT_EQ(pulse.out() + pulse.err(), "");
    EXPECT_EQ(io({"pulse", "SORT"}).status, 0);
    EXPECT_EQ(server->output_value(1), 0);
}

TEST_F(QuorinIo, AfterEverySignalThatCanBeCaughtAPulseHasEndedAtZero) {
    for (int number = 1; number <= SIGRTMAX; ++number) {
        const bool librarys_own = number > 31 && number < SIGRTMIN;
        if (number == SIGKILL || number == SIGSTOP || librarys_own) continue;
        SCOPED_TRACE(number);
        program pulse(command({"pulse", "SORT", "--for", "1000"}));
        ASSERT_TRUE(wait_until([&] { return server->output_value(1) == 1; }));
        pulse.signal(number);
        EXPECT_EQ(pulse.wait(), 128 + number);
        EXPECT_EQ(server->output_value(1), 0);
    }
}

TEST_F(QuorinIo, APulseLeavesTheSignalsAloneThatItsCallerIgnores) {
    program pulse({"sh", "-c",
                   "trap '' INT PIPE TERM; exec " + built("quorin-io") + " " + ident() +
                       " pulse SORT --for 1000"});
    ASSERT_TRUE(wait_until([&] { return server->output_value(1) == 1; }));
    for (const int number : {SIGINT, SIGPIPE, SIGTERM}) pulse.signal(number);
    std::this_thread::sleep_for(std::chrono::milliseconds(100));
    EXPECT_TRUE(pulse.running());
    EXPECT_EQ(server->output_value(1), 1);
    pulse.signal(SIGHUP);
    EXPECT_EQ(pulse.wait(), 128 + SIGHUP);
    EXPECT_EQ(server->output_value(1), 0);
}

TEST_F(QuorinIo, APulseEndsWithTheSession) {
    program pulse(command({"pulse", "SORT", "--for", "1000"}));
    ASSERT_TRUE(wait_until([&] { return server->output_value(1) == 1; }));
    server->sharing_terminate();
    EXPECT_EQ(pulse.wait(), 4);
    EXPECT_EQ(server->output_value(1), 0);
    EXPECT_EQ(pulse.err(), "quorin-io: la session est terminée\n");
}

}  // namespace
