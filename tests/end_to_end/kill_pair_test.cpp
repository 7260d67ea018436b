// kill -9 of any two of a session's processes, its process group among them, at any moment and in
// any order: whoever is left tells, and nothing is left but what nobody lived to remove.
#include <sys/ipc.h>
#include <sys/shm.h>
#include <unistd.h>

#include <algorithm>
#include <filesystem>
#include <iostream>

#include "tests/end_to_end/kill_dash_nine.h"
#include "tests/support/runtime_folder.h"

namespace {

using clock_type = std::chrono::steady_clock;

enum class victim { group, simulator, supervisor, panel };
constexpr const char* names[] = {"group", "simulator", "supervisor", "panel"};

/// What a kill goes to at this moment; 0 where it is not there yet.
struct targets {
    explicit targets(pid_t simulator)
        : simulator(simulator),
          supervisor(child_named(simulator, "zk4sim-garde")),
          panel(child_named(simulator, "quorin")) {}
    pid_t of(victim each) const {
        if (each == victim::group) return getpgid(simulator) == simulator ? -simulator : 0;
        if (each == victim::simulator) return simulator;
        return each == victim::supervisor ? supervisor : panel;
    }
    pid_t simulator, supervisor, panel;
};

class KillPair : public KillDashNine {
protected:
    ~KillPair() override {
        std::cout << rounds_ << " pairs: told after " << slowest_s_ << " s at most, " << late_
                  << " after more than 2 s; nobody left to tell the panel " << untold_
                  << "; unmarked segments left " << segments_ << ", control sockets " << sockets_
                  << "\n";
    }

    /// Two different ones, in any order.
    void choose() {
        first_ = static_cast<victim>(random() % 4);
        do second_ = static_cast<victim>(random() % 4);
        while (second_ == first_);
    }
    bool both(victim a, victim b) const {
        return (first_ == a && second_ == b) || (first_ == b && second_ == a);
    }
    bool any(victim a) const { return first_ == a || second_ == a; }
    /// Whether neither is left that can end a session.
    bool nobody_guards() const {
        return both(victim::simulator, victim::supervisor) ||
               both(victim::group, victim::supervisor);
    }

    /// Waits until one of them is there: else nobody would be killed.
    void kill_both(pid_t simulator) {
        targets at(simulator);
        wait_until([&] {
            at = targets(simulator);
            return at.of(first_) != 0 || at.of(second_) != 0;
        });
        panel_left_ = at.panel != 0 && !any(victim::group) && !any(victim::panel);
        for (const victim each : {first_, second_}) {
            if (at.of(each) != 0) ::kill(at.of(each), SIGKILL);
            if (each == first_ && random() % 2) sleep_ms(random_ms() / 10);
        }
    }

    /// The end is told, unless both who can do that were gone before they could: then by the test.
    void expect_told(const attached_segment& segment) {
        if (!segment) return;
        const auto from = clock_type::now();
        if (nobody_guards()) {
            if (wait_until([&] { return segment.session_over(); }, seconds(0.2))) return;
            untold_ += panel_left_;
            return io_end_session(*segment);
        }
        EXPECT_TRUE(ends(segment));
        const double taken_s = std::chrono::duration<double>(clock_type::now() - from).count();
        slowest_s_ = std::max(slowest_s_, taken_s);
        late_ += taken_s > 2;
    }

    /// Segments that were not marked for removal yet, and sockets, are left where nobody lived to
    /// remove them, and nowhere else.
    void count_what_is_left() {
        wait_until([this] { return nothing_left(); }, seconds(nobody_guards() ? 0.1 : 10));
        for (const int ident : leftovers::segments()) {
            shmid_ds status;
            // The system may still be at it, after the death of the last who held a marked one.
            const auto marked = [&] { return (status.shm_perm.mode & SHM_DEST) != 0; };
            const auto gone = [&] { return shmctl(ident, IPC_STAT, &status) != 0; };
            if (gone() || (marked() && wait_until(gone))) continue;
            EXPECT_TRUE(nobody_guards());
            EXPECT_FALSE(marked());
            shmctl(ident, IPC_RMID, nullptr);
            ++segments_;
        }
        if (sockets_left() == 0) return;
        EXPECT_TRUE(nobody_guards());
        ++sockets_;
        std::filesystem::remove_all(folder_.path / "quorin");
    }

    void round() {
        choose();
        SCOPED_TRACE(std::string(names[static_cast<int>(first_)]) + ", " +
                     names[static_cast<int>(second_)]);
        display.retire_window_ids();
        program running({"setsid", built("zk4sim"), "--headless", "--speed", "20"});
        const double moment_ms = random_ms();
        sleep_ms(moment_ms / 2);
        {
            const attached_segment segment(printed_ident(running));
            command_everything(segment);
            sleep_ms(moment_ms / 2);
            kill_both(running.id());
            // One that was not printed yet before may be by now, with whoever holds it.
            segment ? expect_told(segment) : expect_told(attached_segment(printed_ident(running)));
        }
        EXPECT_TRUE(all_end_when_messages_are_dismissed());
        EXPECT_TRUE(running.wait());
        count_what_is_left();
        ++rounds_;
    }

private:
    long sockets_left() const {
        std::error_code none;
        return std::distance(std::filesystem::directory_iterator(folder_.path / "quorin", none),
                             std::filesystem::directory_iterator());
    }
    bool nothing_left() const { return leftovers::segments().empty() && sockets_left() == 0; }

    const runtime_folder folder_;
    victim first_ = victim::group, second_ = victim::panel;
    bool panel_left_ = false;
    double slowest_s_ = 0;
    int rounds_ = 0, late_ = 0, untold_ = 0, segments_ = 0, sockets_ = 0;
};

TEST_F(KillPair, LeavesNobodyWaiting) {
    for (int i = 0; i < kills() && !HasFailure(); ++i) {
        SCOPED_TRACE(i);
        round();
    }
    expect_a_next_session_to_work();
}

}  // namespace
