// kill -9 of each process of a session, and of two at once, at a hundred random moments each:
// nobody hangs, whoever is left knows, and no segment or process stays behind. How soon they know
// is for a test that is alone on the machine: zk4sim_pace_test.cpp.
#include <gtest/gtest.h>
#include <signal.h>

#include <chrono>
#include <random>
#include <thread>

#include "tests/support/programs.h"
#include "tests/support/screen.h"
#include "tests/support/station.h"

namespace {

constexpr int kills = 100;

void sleep_ms(double ms) {
    std::this_thread::sleep_for(std::chrono::duration<double, std::milli>(ms));
}

/// Keeps the station busy publishing: everything moves.
void command_everything(const attached_segment& segment) {
    for (int i = 0; segment && i < segment->nb_outputs; ++i) segment->output_values[i] = 1;
}

/// A session that had not begun is over.
bool ends(const attached_segment& segment) {
    return wait_until([&] { return !segment || segment.session_over(); });
}

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
            seconds(30));
    }

    void expect_nothing_left() {
        wait_until([] { return leftovers::processes().empty() && leftovers::segments().empty(); });
        EXPECT_EQ(leftovers::processes(), std::set<pid_t>());
        EXPECT_EQ(leftovers::segments(), std::set<int>());
    }

    /// After all those deaths a session starts and ends as ever.
    void expect_a_next_session_to_work() {
        const auto running = new_station();
        const x_window panel = display.wait_for_window("quorin");
        ASSERT_NE(panel, 0u) << display.windows().size() << " windows; " << running->err();
        display.close(panel);
        EXPECT_EQ(running->wait(), 0);
        expect_nothing_left();
    }

    std::mt19937 random{20260711};
    screen display;
};

TEST_F(KillDashNine, OfThePanelEndsTheStation) {
    for (int i = 0; i < kills; ++i) {
        SCOPED_TRACE(i);
        const auto running = new_station();
        pid_t panel = 0;
        ASSERT_TRUE(
            wait_until([&] { return (panel = child_named(running->id(), "quorin")) != 0; }));
        {
            const attached_segment segment(printed_ident(*running));
            command_everything(segment);
            sleep_ms(random_ms());
            ::kill(panel, SIGKILL);
            EXPECT_TRUE(ends(segment));
        }
        EXPECT_EQ(running->wait(), 0);
        EXPECT_NE(running->err().find("zk4sim: panneau terminé (signal 9)"), std::string::npos);
        expect_nothing_left();
    }
    expect_a_next_session_to_work();
}

TEST_F(KillDashNine, OfTheSimulatorEndsTheSessionForThePanel) {
    for (int i = 0; i < kills; ++i) {
        SCOPED_TRACE(i);
        const auto running = new_station();
        const double moment_ms = random_ms();
        sleep_ms(moment_ms / 2);
        {
            const attached_segment segment(printed_ident(*running));
            command_everything(segment);
            sleep_ms(moment_ms / 2);
            running->signal(SIGKILL);
            EXPECT_TRUE(ends(segment));
        }
        EXPECT_TRUE(all_end_when_messages_are_dismissed())
            << "the panel must say that the session is over";
        EXPECT_EQ(running->wait(), 128 + SIGKILL);
        expect_nothing_left();
    }
    expect_a_next_session_to_work();
}

TEST_F(KillDashNine, OfTheSupervisorMakesTheStationEndTheSession) {
    for (int i = 0; i < kills; ++i) {
        SCOPED_TRACE(i);
        const auto running = new_station();
        pid_t supervisor = 0;
        ASSERT_TRUE(wait_until(
            [&] { return (supervisor = child_named(running->id(), "zk4sim-garde")) != 0; }));
        sleep_ms(random_ms());
        const attached_segment segment(printed_ident(*running));
        ::kill(supervisor, SIGKILL);
        EXPECT_TRUE(ends(segment));
        EXPECT_TRUE(all_end_when_messages_are_dismissed());
        // One killed before it held the segment is a failed start.
        const int status = running->wait().value_or(-1);
        EXPECT_TRUE(status == 0 || status == 1) << status << ": " << running->err();
    }
    expect_nothing_left();
    expect_a_next_session_to_work();
}

TEST_F(KillDashNine, OfBothProgramsLeavesNothing) {
    for (int i = 0; i < kills; ++i) {
        SCOPED_TRACE(i);
        const auto running = new_station();
        pid_t panel = 0;
        ASSERT_TRUE(
            wait_until([&] { return (panel = child_named(running->id(), "quorin")) != 0; }));
        sleep_ms(random_ms());
        const bool station_first = random() % 2;
        ::kill(station_first ? running->id() : panel, SIGKILL);
        ::kill(station_first ? panel : running->id(), SIGKILL);
        running->wait();
        expect_nothing_left();
    }
    expect_a_next_session_to_work();
}

}  // namespace
