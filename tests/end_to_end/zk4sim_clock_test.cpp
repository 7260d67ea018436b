// A client that writes the publication counter: the end of the session stays one, and a counter
// that cannot go on is one, too.
#include <cstdint>
#include <thread>

#include "tests/end_to_end/zk4sim_session.h"

namespace {

constexpr std::int64_t largest = INT64_MAX;

/// Pushes every command to and fro, so that there is something to publish.
void command(const attached_segment& segment, std::int32_t value) {
    for (int i = 0; i < segment->nb_outputs; ++i) segment->output_values[i] = value;
}

/// Watches the counter until the station is gone: whether it was ever raised out of an end, or
/// lowered from `least` to anything but one.
bool reopened_before_the_end(const attached_segment& segment, program& zk4sim, std::int64_t least) {
    bool over = false;
    for (int i = 0; zk4sim.running() && i < 30'000; ++i) {
        if (i % 20 == 0) command(segment, i / 20 % 2);
        for (int look = 0; look < 1000; ++look) {
            const std::int64_t clock = io_read_clock(segment->inputs_clock);
            if (clock >= 0 && (over || clock < least)) return true;
            over |= clock < 0;
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
    return false;
}

void expect_ended_by_a_client(const attached_segment& segment, program& zk4sim,
                              std::int64_t least) {
    EXPECT_FALSE(reopened_before_the_end(segment, zk4sim, least));
    EXPECT_EQ(zk4sim.wait(), 0);
    EXPECT_LT(io_read_clock(segment->inputs_clock), 0);
    const std::string err = zk4sim.err();
    EXPECT_NE(err.find("zk4sim: un client a terminé la session\nbilan: "), std::string::npos)
        << err;
}

const std::vector<std::vector<std::string>> paces = {
    {"--no-panel"}, {"--no-panel", "--paused"}, {"--no-panel", "--speed", "100"}};

TEST_F(Zk4sim, EndsAtAClockThatAClientWrote) {
    for (const std::vector<std::string>& pace : paces) {
        for (const std::int64_t clock : {std::int64_t{-1}, std::int64_t{-5}, INT64_MIN, largest}) {
            SCOPED_TRACE(pace.back() + " " + std::to_string(clock));
            station running(pace);
            const attached_segment segment(running.ident);
            ASSERT_TRUE(segment);
            io_write_clock(segment->inputs_clock, clock);
            expect_ended_by_a_client(segment, *running.process, largest);
        }
    }
}

// Nothing moves, so that nothing is published: the session ends all the same.
TEST_F(Zk4sim, EndsAtAClockThatAClientWroteAlsoAtRest) {
    for (const std::int64_t clock : {std::int64_t{-5}, largest}) {
        station running({"--no-panel"});
        const attached_segment segment(running.ident);
        ASSERT_TRUE(segment);
        io_write_clock(segment->inputs_clock, clock);
        EXPECT_EQ(running.process->wait(seconds(20)), 0) << clock;
    }
}

TEST_F(Zk4sim, EndsWithItsLastPossiblePublication) {
    for (const std::vector<std::string>& pace : {paces[0], paces[2]}) {
        SCOPED_TRACE(pace.back());
        station running(pace);
        const attached_segment segment(running.ident);
        ASSERT_TRUE(segment);
        io_write_clock(segment->inputs_clock, largest - 1);
        expect_ended_by_a_client(segment, *running.process, largest - 1);
    }
}

TEST_F(Zk4sim, AClockWithOnePublicationLeftIsNoEndWhilePaused) {
    controlled_station running({"--no-panel", "--paused"});
    const attached_segment segment(running.ident);
    ASSERT_TRUE(segment);
    io_write_clock(segment->inputs_clock, largest - 1);
    std::this_thread::sleep_for(std::chrono::milliseconds(700));
    EXPECT_EQ(io_read_clock(segment->inputs_clock), largest - 1);
    command(segment, 1);
    EXPECT_NE(running.ask("step 200"), "");
    expect_ended_by_a_client(segment, *running.process, largest - 1);
}

}  // namespace
