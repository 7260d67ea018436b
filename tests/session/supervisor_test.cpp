// A supervisor that does not answer: the wait for it has a limit, and hears of the session's end.
#include "session/supervisor.h"

#include <gtest/gtest.h>
#include <signal.h>
#include <sys/ipc.h>
#include <sys/shm.h>

#include <chrono>
#include <thread>

#include "ioshare/io_segment.h"
#include "session/end_signals.h"
#include "tests/support/elapsed.h"
#include "tests/support/programs.h"

namespace {

/// In a child process: asks a stopped supervisor to watch a segment, and for the session's end
/// after a while. Whether it was found watching, and how long that took.
outcome ask_a_stopped_one(std::chrono::milliseconds end_after) {
    return run_in_child([end_after] {
        end_signals::watch();
        const int ident = shmget(IPC_PRIVATE, io_segment_size, 0600);
        {
            supervisor guard("essai");
            kill(guard.id(), SIGSTOP);
            std::thread ending([end_after] {
                std::this_thread::sleep_for(end_after);
                end_signals::ask();
            });
            const given_clock clock;
            const bool watching = guard.watch(ident);
            std::printf("%d %.3f", watching, clock.now_s());
            std::fflush(stdout);
            ending.join();
        }
        shmctl(ident, IPC_RMID, nullptr);
    });
}

TEST(Supervisor, AStoppedOneIsWaitedForTwoSecondsAtMost) {
    const outcome end = ask_a_stopped_one(std::chrono::seconds(3));
    EXPECT_EQ(end.status, 0);
    ASSERT_TRUE(end.out.starts_with("0 ")) << end.out;
    EXPECT_LT(std::stoi(end.out.substr(2)), 3) << end.out;
}

TEST(Supervisor, AStoppedOneIsWaitedForNoLongerOnceTheSessionIsToEnd) {
    const outcome end = ask_a_stopped_one(std::chrono::milliseconds(300));
    EXPECT_EQ(end.status, 0);
    ASSERT_TRUE(end.out.starts_with("0 ")) << end.out;
    EXPECT_LT(std::stoi(end.out.substr(2)), 1) << end.out;
}

}  // namespace
