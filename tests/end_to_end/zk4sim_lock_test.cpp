// A session whose lock's bytes somebody overwrites.
#include <cstring>
#include <random>
#include <thread>

#include "tests/end_to_end/zk4sim_session.h"

namespace {

const std::vector<std::vector<std::string>> paces = {
    {"--no-panel"}, {"--no-panel", "--paused"}, {"--no-panel", "--speed", "100"}};

void command(const attached_segment& segment, std::int32_t value) {
    for (int i = 0; i < segment->nb_outputs; ++i) segment->output_values[i] = value;
}

/// Pushes every command to and fro for a while, so that the lock is taken.
void keep_busy(const attached_segment& segment, program& zk4sim, int ms) {
    for (int i = 0; i < ms / 10 && zk4sim.running(); ++i) {
        command(segment, i / 10 % 2);
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
    }
}

/// A count, somebody who waits, and a flag that no semaphore has.
void damage(io_segment& segment, std::uint32_t count) {
    const std::uint32_t words[] = {count, 1, 7};
    std::memcpy(&segment.lock, words, sizeof words);
}

TEST_F(Zk4sim, EndsWithALineWhenItsLockIsDamaged) {
    for (const std::vector<std::string>& pace : paces) {
        for (const std::uint32_t count : {0u, 1u}) {
            SCOPED_TRACE(pace.back() + " " + std::to_string(count));
            station running(pace);
            const attached_segment segment(running.ident);
            ASSERT_TRUE(segment);
            damage(*segment, count);
            keep_busy(segment, *running.process, 3000);
            EXPECT_EQ(running.process->wait(seconds(20)), 0);
            EXPECT_TRUE(segment.session_over());
            const std::string err = running.process->err();
            EXPECT_NE(err.find("zk4sim: le verrou de la liaison a été abîmé\nbilan: "),
                      std::string::npos)
                << err;
        }
    }
}

TEST_F(Zk4sim, AnyCountOfASoundLockIsServed) {
    for (const std::uint64_t counts : {0x7fff'ffffULL, 0x8000'0000ULL, 0xffff'ffffULL,
                                       0xffff'ffff'0000'0001ULL, 0xffff'ffff'ffff'ffffULL}) {
        SCOPED_TRACE(counts);
        station running({"--no-panel", "--speed", "20"});
        const attached_segment segment(running.ident);
        ASSERT_TRUE(segment);
        std::memcpy(&segment->lock, &counts, sizeof counts);
        EXPECT_EQ(running.io({"set", "BZ1=1", "--until", "b1s=1", "--timeout", "15"}).status, 0);
        running.process->signal(SIGTERM);
        EXPECT_EQ(running.process->wait(), 0) << running.process->err();
    }
}

/// Random bytes over the lock, half of them with a flag of a semaphore.
void scribble(io_segment& segment, std::mt19937& random) {
    std::uint32_t words[8];
    for (std::uint32_t& each : words) each = static_cast<std::uint32_t>(random());
    if (random() % 2) words[2] = random() % 2 ? 0 : 128;
    if (random() % 4 == 0) words[0] = 0;
    std::memcpy(&segment.lock, words, sizeof words);
}

// A lock that is found taken is freed by the supervisor, one that is none ends the session.
TEST_F(Zk4sim, RandomBytesOverItsLockEndItByItselfOrNotAtAll) {
    std::mt19937 random(12);
    for (int i = 0; i < 30; ++i) {
        SCOPED_TRACE(i);
        station running(paces[static_cast<std::size_t>(i) % paces.size()]);
        const attached_segment segment(running.ident);
        ASSERT_TRUE(segment);
        scribble(*segment, random);
        keep_busy(segment, *running.process, 700);
        running.process->signal(SIGTERM);
        EXPECT_EQ(running.process->wait(seconds(20)), 0);
        EXPECT_TRUE(segment.session_over());
        const std::string err = running.process->err();
        EXPECT_TRUE(err.find("le verrou de la liaison a été abîmé\n") != std::string::npos ||
                    err.find("fin demandée\n") != std::string::npos)
            << err;
    }
}

}  // namespace
