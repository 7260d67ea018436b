// Freeing the lock of a segment whose holder is dead: at times that the tests make up.
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/ipc.h>
#include <sys/shm.h>
#include <sys/wait.h>
#include <unistd.h>

#include <atomic>
#include <cstring>
#include <fstream>
#include <thread>

#include "ioshare/io_server.h"
#include "session/dead_lock_watch.h"
#include "session/served_segment.h"
#include "tests/support/programs.h"

namespace {

/// A segment that this process and a sleeping one hold, as a supervisor and its simulator do.
struct watched_lock {
    watched_lock() : simulator(fork()) {
        if (simulator == 0)
            for (;;) pause();
    }
    ~watched_lock() {
        kill(simulator, SIGKILL);
        waitpid(simulator, nullptr, 0);
        shmctl(server.ident, IPC_RMID, nullptr);
        shmdt(server.segment);
    }
    void look(int ms) {
        watch.look(*server.segment, server.ident, start + std::chrono::milliseconds(ms));
    }
    void take() { ASSERT_EQ(sem_trywait(&server.segment->lock), 0); }
    int count() {
        int value = -1;
        sem_getvalue(&server.segment->lock, &value);
        return value;
    }
    /// Looks every 100 ms of this time; whether the lock was free at the end.
    bool free_after_looks(int from_ms, int to_ms) {
        for (int ms = from_ms; ms <= to_ms; ms += 100) look(ms);
        return count() == 1;
    }

    IOsharemem_server server{{"s1"}, {"C1"}};
    const pid_t simulator;
    dead_lock_watch watch{simulator};
    const dead_lock_watch::moment start{std::chrono::hours(1000)};
};

/// Another mapping of the segment: somebody who might hold the lock.
struct attached_client {
    attached_client(int ident, int flags) : address(shmat(ident, nullptr, flags)) {}
    ~attached_client() { shmdt(address); }
    void* address;
};

TEST(DeadLockWatch, FreesALockThatNobodyCouldHoldAfterHalfASecond) {
    watched_lock test;
    test.look(0);
    test.take();
    EXPECT_FALSE(test.free_after_looks(100, 500));
    EXPECT_TRUE(test.free_after_looks(600, 700));
    EXPECT_EQ(sem_trywait(&test.server.segment->lock), 0) << "whoever comes gets it";
}

TEST(DeadLockWatch, FreesItAfterTwoSecondsWhileSomebodyIsAttached) {
    watched_lock test;
    const attached_client client(test.server.ident, 0);
    test.look(0);
    test.take();
    EXPECT_FALSE(test.free_after_looks(100, 2000));
    EXPECT_TRUE(test.free_after_looks(2100, 2200));
}

TEST(DeadLockWatch, SomebodyWhoOnlyReadsCannotHoldIt) {
    watched_lock test;
    const attached_client observer(test.server.ident, SHM_RDONLY);
    test.look(0);
    test.take();
    EXPECT_TRUE(test.free_after_looks(100, 700));
}

TEST(DeadLockWatch, NeverPostsTwice) {
    watched_lock test;
    test.look(0);
    test.take();
    EXPECT_TRUE(test.free_after_looks(100, 10'000));
    EXPECT_EQ(test.count(), 1);
}

TEST(DeadLockWatch, LeavesAFreeLockAlone) {
    watched_lock test;
    EXPECT_TRUE(test.free_after_looks(0, 10'000));
    EXPECT_EQ(test.count(), 1);
}

TEST(DeadLockWatch, NeverFreesItWhilePublicationsGoOn) {
    watched_lock test;
    test.take();
    for (int ms = 0; ms <= 20'000; ms += 100) {
        ++test.server.segment->inputs_clock;
        test.look(ms);
    }
    EXPECT_EQ(test.count(), 0);
}

TEST(DeadLockWatch, ALockThatIsFreeInBetweenIsNotFreed) {
    watched_lock test;
    for (int ms = 0; ms <= 20'000; ms += 100) {
        const bool taken = ms % 500 != 0;
        if (taken && test.count() == 1) test.take();
        if (!taken && test.count() == 0) sem_post(&test.server.segment->lock);
        test.look(ms);
        ASSERT_EQ(test.count(), taken ? 0 : 1) << ms;
    }
}

char state_of(pid_t process) {
    std::ifstream in("/proc/" + std::to_string(process) + "/stat");
    std::string stat;
    std::getline(in, stat);
    return stat.at(stat.rfind(')') + 2);
}

TEST(DeadLockWatch, NeverFreesItWhileTheSimulatorIsStopped) {
    watched_lock test;
    test.look(0);
    test.take();
    kill(test.simulator, SIGSTOP);
    ASSERT_TRUE(wait_until([&] { return state_of(test.simulator) == 'T'; }));
    EXPECT_FALSE(test.free_after_looks(100, 20'000));
    kill(test.simulator, SIGCONT);
    ASSERT_TRUE(wait_until([&] { return state_of(test.simulator) == 'S'; }));
    EXPECT_FALSE(test.free_after_looks(20'100, 20'500)) << "the time begins anew";
    EXPECT_TRUE(test.free_after_looks(20'600, 20'800));
}

TEST(DeadLockWatch, NeverPostsWhatIsNoLock) {
    watched_lock test;
    test.look(0);
    const std::uint32_t damaged[] = {0, 1, 7};  // Taken, somebody waits, and an impossible flag.
    std::memcpy(&test.server.segment->lock, damaged, sizeof damaged);
    for (int ms = 100; ms <= 10'000; ms += 100) test.look(ms);
    EXPECT_EQ(std::memcmp(&test.server.segment->lock, damaged, sizeof damaged), 0);
}

TEST(DeadLockWatch, FreesOneAfterAnother) {
    watched_lock test;
    for (int i = 0; i < 5; ++i) {
        test.look(10'000 * i);
        test.take();
        EXPECT_TRUE(test.free_after_looks(10'000 * i + 100, 10'000 * i + 900));
    }
}

void spin(std::chrono::microseconds time) {
    const auto until = std::chrono::steady_clock::now() + time;
    while (std::chrono::steady_clock::now() < until) {
    }
}

// Their hands are on it most of the time, and nothing is published meanwhile.
TEST(DeadLockWatch, LeavesALockAloneThatBusyClientsTakeInTurn) {
    for (int round = 0; round < 30; ++round) {
        watched_lock test;
        const attached_client client(test.server.ident, 0);
        std::atomic<bool> stop = false;
        std::atomic<int> turns = 0;
        std::thread busy([&] {
            while (!stop) {
                if (sem_trywait(&test.server.segment->lock) != 0) continue;
                spin(std::chrono::microseconds(20));
                sem_post(&test.server.segment->lock);
                ++turns;
                spin(std::chrono::microseconds(5));
            }
        });
        // Turns are taken between two looks, however the machine shares itself out.
        for (int ms = 0; ms <= 2400; ms += 300) {
            for (const int before = turns; turns < before + 50;) usleep(2000);
            test.look(ms);
        }
        stop = true;
        busy.join();
        ASSERT_EQ(test.count(), 1) << "freed in round " << round;
    }
}

}  // namespace
