// quorin-io waiting for values, and saying what holds.
#include <thread>

#include "tests/end_to_end/quorin_io_fixture.h"

namespace {

void pass_some_looks() { std::this_thread::sleep_for(std::chrono::milliseconds(50)); }

TEST_F(QuorinIo, WaitsUntilAllConditionsHoldAtOnce) {
    program waiting(command({"wait", "te=1", "ts=1", "SORT!=0"}));
    server->segment->output_values[1] = 5;
    publish(2, 1);
    pass_some_looks();
    publish(2, 0);
    publish(1, 1);
    pass_some_looks();
    EXPECT_TRUE(waiting.running()) << "each has held, but never all";
    publish(2, 1);
    EXPECT_EQ(waiting.wait(), 0);
    EXPECT_EQ(waiting.out() + waiting.err(), "");
    EXPECT_EQ(io({"wait", "te=1"}).status, 0) << "at once when it is so already";
}

TEST_F(QuorinIo, WaitsForInputsAndOutputsForValuesAndForOthers) {
    server->segment->input_values[2] = -7;
    server->segment->output_values[1] = 2;
    server->segment->output_values[4] = 9;
    const struct {
        std::vector<std::string> conditions;
        int status;
    } rows[] = {{{"te=-7"}, 0},  {{"te!=-7"}, 3},  {{"te!=7"}, 0},
                {{"SORT=2"}, 0}, {{"SORT!=2"}, 3}, {{"SORT=2", "te=1"}, 3},
                {{"x=y=0"}, 0},  {{"x=y!=0"}, 3},  {{"o=p=9", "x=y!=1"}, 0},
                {{"both=0"}, 0}, {{"RENT=0"}, 0},  {{"te=-7", "te!=-7"}, 3}};
    for (std::vector<std::string> words : {std::vector<std::string>{"wait"}, {"expect"}}) {
        for (const auto& [conditions, status] : rows) {
            std::vector<std::string> all = words;
            all.insert(all.end(), conditions.begin(), conditions.end());
            SCOPED_TRACE(testing::PrintToString(all));
            if (words.front() == "wait") all.insert(all.end(), {"--timeout", "0"});
            EXPECT_EQ(io(all).status, status);
        }
    }
}

TEST_F(QuorinIo, AWaitSaysWhatWasMissingWhenItsTimeIsOver) {
    publish(1, 4);
    const struct {
        std::vector<std::string> words;
        std::string missing;
    } rows[] = {{{"te=1"}, "te=1 (valeur 0)"},
                {{"te=1", "ts=4", "RENT=2"}, "te=1 (valeur 0), RENT=2 (valeur 0)"},
                {{"te=1", "ts!=4", "--any"}, "te=1 (valeur 0), ts!=4 (valeur 4)"}};
    for (auto [words, missing] : rows) {
        words.insert(words.begin(), "wait");
        for (const char* const timeout_s : {"0", "0.05"}) {
            words.insert(words.end(), {"--timeout", timeout_s});
            const outcome end = io(words);
            expect_one_line(end, 3);
            EXPECT_EQ(end.err, "quorin-io: délai écoulé, il manque: " + missing + "\n");
            words.resize(words.size() - 2);
        }
    }
    EXPECT_EQ(io({"wait", "te=0", "--timeout", "0"}).status, 0);
}

TEST_F(QuorinIo, AWaitForAnyEndsWithTheFirst) {
    EXPECT_EQ(io({"wait", "te=1", "ts=0", "--any"}).status, 0);
    program waiting(command({"wait", "--any", "te=1", "SORT=1"}));
    ASSERT_TRUE(looking(waiting));
    EXPECT_TRUE(waiting.running());
    server->segment->output_values[1] = 1;
    EXPECT_EQ(waiting.wait(), 0);
}

TEST_F(QuorinIo, AWaitGivesUpWhenAConditionOfUnlessHolds) {
    program waiting(command({"wait", "te=1", "--unless", "ts=1", "--unless", "SORT!=0", "both=0"}));
    ASSERT_TRUE(looking(waiting));
    EXPECT_TRUE(waiting.running()) << "both=0 is a goal: --unless takes one condition";
    server->segment->output_values[1] = -3;
    EXPECT_EQ(waiting.wait(), 3);
    EXPECT_EQ(waiting.out(), "");
    EXPECT_EQ(waiting.err(), "quorin-io: condition de --unless: SORT!=0 (valeur -3)\n");
}

TEST_F(QuorinIo, WhereGoalAndUnlessHoldAtTheSameLookTheGoalWins) {
    EXPECT_EQ(io({"wait", "te=0", "--unless", "ts=0"}).status, 0);
    EXPECT_EQ(io({"wait", "te=0", "ts=1", "--any", "--unless", "te=0"}).status, 0);
    expect_one_line(io({"wait", "te=0", "ts=1", "--unless", "te=0"}), 3);
    EXPECT_EQ(io({"wait", "te=1", "--unless", "te=0", "--timeout", "0"}).err,
              "quorin-io: condition de --unless: te=0 (valeur 0)\n")
        << "it tells more than the time that is over";
}

TEST_F(QuorinIo, AWaitEndsWithTheSession) {
    program waiting(command({"wait", "te=1", "--timeout", "1000"}));
    program expecting(command({"expect", "te=0", "--for", "1000"}));
    program setting(command({"set", "SORT=1", "--until", "te=1"}));
    ASSERT_TRUE(looking(waiting) && looking(expecting));
    ASSERT_TRUE(wait_until([&] { return server->output_value(1) == 1; }));
    server->sharing_terminate();
    for (program* each : {&waiting, &expecting, &setting}) {
        EXPECT_EQ(each->wait(), 4);
        EXPECT_EQ(each->err(), "quorin-io: la session est terminée\n");
    }
}

TEST_F(QuorinIo, SetsAndWaitsThenForAllConditionsBehindUntil) {
    program setting(command({"set", "RENT=1", "o=p=2", "--until", "te=1", "ts=1"}));
    ASSERT_TRUE(
        wait_until([&] { return server->output_value(0) == 1 && server->output_value(4) == 2; }));
    publish(2, 1);
    pass_some_looks();
    EXPECT_TRUE(setting.running());
    publish(1, 1);
    EXPECT_EQ(setting.wait(), 0);
    EXPECT_EQ(setting.out() + setting.err(), "");
    const outcome late =
        io({"set", "SORT=1", "--until", "te=0", "--until", "ts=1", "--timeout", "0.01"});
    expect_one_line(late, 3);
    EXPECT_EQ(late.err, "quorin-io: délai écoulé, il manque: te=0 (valeur 1)\n");
    EXPECT_EQ(server->output_value(1), 1) << "it was set all the same";
}

TEST_F(QuorinIo, ExpectHasALineForEachConditionThatDoesNotHold) {
    publish(1, 4);
    const outcome all = io({"expect", "te=0", "ts=4", "RENT!=1"});
    EXPECT_EQ(all.status, 0);
    EXPECT_EQ(all.out + all.err, "");
    const outcome some = io({"expect", "te=1", "ts=4", "ts!=4", "SORT=-1"});
    EXPECT_EQ(some.status, 3);
    EXPECT_EQ(some.out, "");
    EXPECT_EQ(
        some.err,
        "quorin-io: ne tient pas: te=1 (valeur 0)\nquorin-io: ne tient pas: ts!=4 (valeur 4)\n"
        "quorin-io: ne tient pas: SORT=-1 (valeur 0)\n");
}

TEST_F(QuorinIo, ExpectForATimeTakesThatTimeAndNoBreak) {
    const auto start = std::chrono::steady_clock::now();
    EXPECT_EQ(io({"expect", "te=0", "--for", "0.3"}).status, 0);
    EXPECT_GE(std::chrono::steady_clock::now() - start, std::chrono::milliseconds(300));
    program expecting(command({"expect", "te=0", "ts=0", "--for", "1000"}));
    ASSERT_TRUE(looking(expecting));
    EXPECT_TRUE(expecting.running());
    publish(1, 2);
    EXPECT_EQ(expecting.wait(), 3);
    EXPECT_EQ(expecting.err(), "quorin-io: ne tient pas: ts=0 (valeur 2)\n");
}

}  // namespace
