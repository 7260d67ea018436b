// quorin-io against a segment of the test's own: what it prints, writes, waits for, and its
// statuses.
#include <signal.h>
#include <unistd.h>

#include <thread>

#include "tests/ioshare/test_segment.h"

namespace {

class QuorinIo : public testing::Test {
protected:
    std::vector<std::string> command(std::vector<std::string> words) {
        words.insert(words.begin(), {built("quorin-io"), std::to_string(server->memory_ident())});
        return words;
    }
    outcome io(const std::vector<std::string>& words) { return run_program(command(words)); }

    leaves_nothing nothing_;
    test_server server{{"te", "ts", "te", "x=y", "both"}, {"RENT", "SORT", "RENT", "both", "o=p"}};
};

void expect_one_line(const outcome& end, int status) {
    EXPECT_EQ(end.status, status);
    EXPECT_EQ(end.out, "");
    EXPECT_EQ(std::count(end.err.begin(), end.err.end(), '\n'), 1) << end.err;
    EXPECT_EQ(end.err.rfind("quorin-io: ", 0), 0u) << end.err;
}

TEST_F(QuorinIo, ListsEveryInputAndOutput) {
    server->segment->input_values[1] = INT32_MIN;
    server->segment->output_values[0] = 1;
    const outcome end = io({"list"});
    EXPECT_EQ(end.status, 0);
    EXPECT_EQ(end.err, "");
    EXPECT_EQ(
        end.out,
        "entree\tte\t0\nentree\tts\t-2147483648\nentree\tte\t0\nentree\tx=y\t0\nentree\tboth\t0\n"
        "sortie\tRENT\t1\nsortie\tSORT\t0\nsortie\tRENT\t0\nsortie\tboth\t0\nsortie\to=p\t0\n");
}

TEST_F(QuorinIo, GetsValuesOneALineTheLastOfThoseNamedAlikeAndAnInputFirst) {
    server->segment->input_values[0] = 5;
    server->segment->input_values[2] = 6;
    server->segment->input_values[4] = 7;
    server->segment->output_values[3] = 8;
    const outcome end = io({"get", "both", "te", "SORT", "x=y"});
    EXPECT_EQ(end.status, 0);
    EXPECT_EQ(end.out, "7\n6\n0\n0\n");
}

TEST_F(QuorinIo, SetsEveryOutputOfTheNameAndNothingElse) {
    server->segment->outputs_clock = 3;
    std::string expected = bytes_at(server.bytes(), 0, 4561);
    expected.replace(256, 4, "\xFF\xFF\xFF\xFF").replace(264, 4, "\xFF\xFF\xFF\xFF");
    expected.replace(272, 4, "\xFF\xFF\xFF\x7F");
    const outcome end = io({"set", "RENT=-1", "o=p=2147483647"});
    EXPECT_EQ(end.status, 0);
    EXPECT_EQ(end.out + end.err, "");
    EXPECT_EQ(bytes_at(server.bytes(), 0, 4561), expected) << "the clocks are left alone";
}

TEST_F(QuorinIo, RefusesBadNamesAndValuesAndWritesNothing) {
    const std::string before = bytes_at(server.bytes(), 0, 4561);
    const std::vector<std::vector<std::string>> rows = {{"get", "nothing"},
                                                        {"get", "te", "TE"},
                                                        {"set", "te=1"},
                                                        {"set", "RENT=1", "nothing=1"},
                                                        {"set", "RENT=1", "SORT=1.5"},
                                                        {"set", "RENT=2147483648"},
                                                        {"set", "RENT=-2147483649"},
                                                        {"set", "RENT="},
                                                        {"set", "RENT=0x1"},
                                                        {"set", "RENT=+1"},
                                                        {"set", "RENT= 1"},
                                                        {"wait", "RENT=1"},
                                                        {"wait", "te=high"},
                                                        {"pulse", "te"},
                                                        {"pulse", "nothing"},
                                                        {"watch", "nothing"}};
    for (const std::vector<std::string>& words : rows) {
        SCOPED_TRACE(testing::PrintToString(words));
        expect_one_line(io(words), 1);
    }
    EXPECT_EQ(bytes_at(server.bytes(), 0, 4561), before);
}

TEST_F(QuorinIo, RefusesASegmentThatDoesNotExist) {
    for (const char* const ident : {"0", "-1", "2147483647"}) {
        expect_one_line(run_program({built("quorin-io"), ident, "list"}), 1);
    }
    const raw_segment too_short(100);
    expect_one_line(
        run_program({built("quorin-io"), std::to_string(too_short.ident), "set", "RENT=1"}), 1);
}

TEST_F(QuorinIo, DoesNotUnderstandOtherCommandLines) {
    for (const std::vector<std::string>& words :
         std::vector<std::vector<std::string>>{{},
                                               {"frob"},
                                               {"list", "te"},
                                               {"get"},
                                               {"set"},
                                               {"set", "RENT"},
                                               {"wait"},
                                               {"wait", "te"},
                                               {"pulse"},
                                               {"pulse", "RENT", "SORT"},
                                               {"pulse", "RENT", "--for", "long"},
                                               {"pulse", "RENT", "--for", "0,5"},
                                               {"wait", "te=1", "--timeout", "-1"},
                                               {"wait", "te=1", "--timeout"},
                                               {"list", "--unknown"}}) {
        SCOPED_TRACE(testing::PrintToString(words));
        expect_one_line(io(words), 2);
    }
    for (const char* const ident : {"abc", "12x", "", "1.5", "99999999999"}) {
        SCOPED_TRACE(ident);
        expect_one_line(run_program({built("quorin-io"), ident, "list"}), 2);
    }
    expect_one_line(run_program({built("quorin-io")}), 2);
}

TEST_F(QuorinIo, SaysInFrenchWhatItRefuses) {
    const std::string ident = std::to_string(server->memory_ident());
    const struct {
        std::vector<std::string> arguments;
        std::string why;
    } rows[] = {{{}, "ligne de commande incomplète (voir --help)"},
                {{ident}, "ligne de commande incomplète (voir --help)"},
                {{ident, "get"}, "ligne de commande incomplète (voir --help)"},
                {{ident, "frob"}, "ligne de commande incomprise: frob"},
                {{ident, "list", "--x"}, "ligne de commande incomprise: --x"},
                {{ident, "wait", "te=1", "--timeout"}, "ligne de commande incomprise: --timeout"},
                {{"0", "list"}, "segment 0: identifiant refusé"},
                {{"2147483647", "list"}, "segment 2147483647: il n'existe pas"}};
    for (const auto& [arguments, why] : rows) {
        std::vector<std::string> command = {built("quorin-io")};
        command.insert(command.end(), arguments.begin(), arguments.end());
        EXPECT_EQ(run_program(command).err, "quorin-io: " + why + "\n");
    }
}

TEST_F(QuorinIo, RefusesSomeoneElsesSegment) {
    if (geteuid() != 0) GTEST_SKIP() << "only root may become another user";
    const std::string ident = std::to_string(server->memory_ident());
    const outcome end = run_program(
        {"setpriv", "--reuid=65534", "--clear-groups", built("quorin-io"), ident, "list"});
    if (end.err.find("setpriv") == 0 || end.status == 127)
        GTEST_SKIP() << "the build is not readable by another user";
    EXPECT_EQ(end.status, 1);
    EXPECT_EQ(end.err, "quorin-io: segment " + ident + ": accès refusé\n");
}

TEST_F(QuorinIo, DoesNotCallDoneWhatItCouldNotPrint) {
    const std::string ident = std::to_string(server->memory_ident());
    const outcome end =
        run_program({"sh", "-c", built("quorin-io") + " " + ident + " list >/dev/full"});
    expect_one_line(end, 1);
}

TEST_F(QuorinIo, ShowsItsHelpAndVersion) {
    const outcome help = run_program({built("quorin-io"), "--help"});
    EXPECT_EQ(help.status, 0);
    for (const char* const word : {"list", "get", "set", "wait", "pulse", "watch"}) {
        EXPECT_NE(help.out.find(word), std::string::npos) << word;
    }
    EXPECT_EQ(run_program({built("quorin-io"), "--version"}).out, "quorin-io 0.1.0\n");
}

TEST_F(QuorinIo, LooksWithoutWriting) {
    server->segment->outputs_clock = 9;
    server->inputs_go();
    const std::string before = bytes_at(server.bytes(), 0, 4561);
    io({"list"});
    io({"get", "te"});
    io({"wait", "te=0"});
    program watcher(command({"watch"}));
    std::this_thread::sleep_for(std::chrono::milliseconds(100));
    EXPECT_EQ(bytes_at(server.bytes(), 0, 4561), before);
}

TEST_F(QuorinIo, WaitsUntilAllInputsHaveTheirValuesAtOnce) {
    program waiting(command({"wait", "te=1", "ts=1", "--timeout", "10"}));
    server->setreset_input(2, 1);
    server->inputs_go();
    std::this_thread::sleep_for(std::chrono::milliseconds(100));
    server->setreset_input(2, 0);
    server->setreset_input(1, 1);
    server->inputs_go();
    std::this_thread::sleep_for(std::chrono::milliseconds(100));
    EXPECT_TRUE(waiting.running()) << "each had its value, but never both";
    server->setreset_input(2, 1);
    server->inputs_go();
    EXPECT_EQ(waiting.wait(seconds(1)), 0);
    EXPECT_EQ(io({"wait", "te=1"}).status, 0) << "at once when it is so already";
}

TEST_F(QuorinIo, AWaitEndsWithItsTimeOrWithTheSession) {
    expect_one_line(io({"wait", "te=1", "--timeout", "0.1"}), 3);
    expect_one_line(io({"wait", "te=1", "--timeout", "0"}), 3);
    EXPECT_EQ(io({"wait", "te=0", "--timeout", "0"}).status, 0);
    program waiting(command({"wait", "te=1"}));
    std::this_thread::sleep_for(std::chrono::milliseconds(50));
    server->sharing_terminate();
    EXPECT_EQ(waiting.wait(seconds(1)), 4);
}

TEST_F(QuorinIo, PulsesAnOutputForItsTimeAlsoWhenInterrupted) {
    program pulse(command({"pulse", "RENT", "--for", "0.3"}));
    ASSERT_TRUE(
        wait_until([&] { return server->output_value(0) == 1 && server->output_value(2) == 1; }));
    EXPECT_EQ(pulse.wait(), 0);
    EXPECT_EQ(server->output_value(0), 0);
    EXPECT_EQ(server->output_value(2), 0);
    for (const int number : {SIGINT, SIGTERM}) {
        program endless(command({"pulse", "SORT", "--for", "1000"}));
        ASSERT_TRUE(wait_until([&] { return server->output_value(1) == 1; }));
        endless.signal(number);
        EXPECT_EQ(endless.wait(seconds(1)), 0);
        EXPECT_EQ(server->output_value(1), 0);
    }
}

TEST_F(QuorinIo, WatchTellsEachChangeUntilTheEnd) {
    program all(command({"watch"})), one(command({"watch", "ts"}));
    std::this_thread::sleep_for(std::chrono::milliseconds(200));
    server->setreset_input(1, 3);
    server->inputs_go();
    ASSERT_TRUE(wait_until([&] { return all.out() == "ts=3\n"; }));
    server->segment->output_values[1] = -2;
    ASSERT_TRUE(wait_until([&] { return all.out() == "ts=3\nSORT=-2\n"; }));
    server->setreset_input(1, 4);
    server->inputs_go();
    server->sharing_terminate();
    EXPECT_EQ(all.wait(seconds(1)), 0);
    EXPECT_EQ(one.wait(seconds(1)), 0);
    EXPECT_EQ(all.out(), "ts=3\nSORT=-2\nts=4\n") << "the last change before the end is told";
    EXPECT_EQ(one.out(), "ts=3\nts=4\n");
}

TEST_F(QuorinIo, AfterTheEndValuesAreReadButNothingIsWritten) {
    server->sharing_terminate();
    EXPECT_EQ(io({"get", "te"}).status, 0);
    EXPECT_EQ(io({"list"}).status, 0);
    EXPECT_EQ(io({"watch"}).status, 0);
    expect_one_line(io({"set", "RENT=1"}), 4);
    expect_one_line(io({"pulse", "RENT"}), 4);
    expect_one_line(io({"wait", "te=0"}), 4);
    EXPECT_EQ(server->output_value(0), 0);
}

}  // namespace
