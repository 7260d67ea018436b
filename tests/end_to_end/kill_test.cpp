// kill -9 of each process of a session, and of two at once, at a hundred random moments each:
// nobody hangs, whoever is left knows within a second, and no segment or process stays behind.
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/shm.h>

#include <algorithm>
#include <chrono>
#include <random>
#include <thread>

#include "ioshare/io_segment.h"
#include "tests/support/programs.h"
#include "tests/support/screen.h"

namespace {

constexpr int kills = 100;

void sleep_ms(double ms) {
    std::this_thread::sleep_for(std::chrono::duration<double, std::milli>(ms));
}

/// A view of a running station's segment, so that the test sees the end of the session.
class attached {
public:
    explicit attached(const std::string& ident_line) {
        if (ident_line.rfind("ident_mem=", 0) != 0 || ident_line.back() != '\n') return;
        void* const address = shmat(std::stoi(ident_line.substr(10)), nullptr, 0);
        if (address != reinterpret_cast<void*>(-1)) segment_ = static_cast<io_segment*>(address);
    }
    ~attached() {
        if (segment_) shmdt(segment_);
    }
    attached(const attached&) = delete;
    attached& operator=(const attached&) = delete;

    /// Keeps the station busy publishing: everything moves.
    void command_everything() {
        for (int i = 0; segment_ && i < 13; ++i) segment_->output_values[i] = 1;
    }
    bool session_over() const {
        return !segment_ || *const_cast<volatile std::int64_t*>(&segment_->inputs_clock) < 0;
    }

private:
    io_segment* segment_ = nullptr;
};

class KillDashNine : public testing::Test {
protected:
    /// A moment after the start: half of them within the start-up itself.
    double random_ms() {
        return static_cast<double>(random() % 1000) / 1000 * (random() % 2 ? 60 : 300);
    }

    std::unique_ptr<program> new_station() {
        display.retire_window_ids();
        return std::make_unique<program>(
            std::vector<std::string>{built("zk4sim"), "--headless", "--speed", "20"});
    }

    /// Presses Return on whatever message is there until no marked process is left.
    bool all_end_when_messages_are_dismissed() {
        return wait_until(
            [&] {
                if (leftovers::processes().empty()) return true;
                const std::vector<x_window> all = display.windows();
                if (all.size() > 1) {
                    display.give_focus(all.back());
                    display.key(XK_Return);
                }
                return false;
            },
            seconds(10));
    }

    void expect_nothing_left() {
        wait_until([] { return leftovers::processes().empty() && leftovers::segments().empty(); },
                   seconds(3));
        EXPECT_EQ(leftovers::processes(), std::set<pid_t>());
        EXPECT_EQ(leftovers::segments(), std::set<int>());
    }

    /// After all those deaths a session starts and ends as ever.
    void expect_a_next_session_to_work() {
        auto station = new_station();
        const x_window panel = display.wait_for_window("quorin");
        ASSERT_NE(panel, 0u) << display.windows().size() << " windows; " << station->err();
        display.close(panel);
        EXPECT_EQ(station->wait(), 0);
        expect_nothing_left();
    }

    std::mt19937 random{20260711};
    screen display;
};

TEST_F(KillDashNine, OfThePanelEndsTheStation) {
    for (int i = 0; i < kills; ++i) {
        SCOPED_TRACE(i);
        auto station = new_station();
        pid_t panel = 0;
        ASSERT_TRUE(
            wait_until([&] { return (panel = child_named(station->id(), "quorin")) != 0; }));
        {
            attached segment(station->out());
            segment.command_everything();
            sleep_ms(random_ms());
            ::kill(panel, SIGKILL);
            EXPECT_TRUE(wait_until([&] { return segment.session_over(); }, seconds(1)));
        }
        EXPECT_EQ(station->wait(seconds(1)), 0);
        EXPECT_NE(station->err().find("zk4sim: panneau terminé (signal 9)"), std::string::npos);
        expect_nothing_left();
    }
    expect_a_next_session_to_work();
}

TEST_F(KillDashNine, OfTheSimulatorEndsTheSessionForThePanel) {
    for (int i = 0; i < kills; ++i) {
        SCOPED_TRACE(i);
        auto station = new_station();
        const double moment_ms = random_ms();
        sleep_ms(moment_ms / 2);
        {
            attached segment(station->out());
            segment.command_everything();
            sleep_ms(moment_ms / 2);
            station->signal(SIGKILL);
            EXPECT_TRUE(wait_until([&] { return segment.session_over(); }, seconds(1)));
        }
        EXPECT_TRUE(all_end_when_messages_are_dismissed())
            << "the panel must say that the session is over";
        EXPECT_EQ(station->wait(), 128 + SIGKILL);
        expect_nothing_left();
    }
    expect_a_next_session_to_work();
}

TEST_F(KillDashNine, OfTheSupervisorMakesTheStationEndTheSession) {
    for (int i = 0; i < kills; ++i) {
        SCOPED_TRACE(i);
        auto station = new_station();
        pid_t supervisor = 0;
        ASSERT_TRUE(wait_until(
            [&] { return (supervisor = child_named(station->id(), "zk4sim-garde")) != 0; }));
        sleep_ms(random_ms());
        const attached segment(station->out());
        ::kill(supervisor, SIGKILL);
        EXPECT_TRUE(wait_until([&] { return segment.session_over(); }, seconds(1)));
        EXPECT_TRUE(all_end_when_messages_are_dismissed());
        // One killed before it held the segment is a failed start.
        EXPECT_LE(station->wait().value_or(-1), 1) << station->err();
    }
    expect_nothing_left();
    expect_a_next_session_to_work();
}

TEST_F(KillDashNine, OfBothProgramsLeavesNothing) {
    for (int i = 0; i < kills; ++i) {
        SCOPED_TRACE(i);
        auto station = new_station();
        pid_t panel = 0;
        ASSERT_TRUE(
            wait_until([&] { return (panel = child_named(station->id(), "quorin")) != 0; }));
        sleep_ms(random_ms());
        const bool station_first = random() % 2;
        ::kill(station_first ? station->id() : panel, SIGKILL);
        ::kill(station_first ? panel : station->id(), SIGKILL);
        station->wait();
        expect_nothing_left();
    }
    expect_a_next_session_to_work();
}

}  // namespace
