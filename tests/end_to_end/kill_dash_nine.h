// What the tests of kill -9 share: how often they kill, a station under way, and what must be left
// of it.
#pragma once
#include <gtest/gtest.h>
#include <signal.h>

#include <chrono>
#include <cstdlib>
#include <memory>
#include <random>
#include <thread>

#include "tests/support/programs.h"
#include "tests/support/screen.h"
#include "tests/support/station.h"

/// How many rounds of killing a test makes: a hundred, or QUORIN_KILLS of the environment.
inline int kills() {
    const char* const wanted = std::getenv("QUORIN_KILLS");
    return wanted ? std::atoi(wanted) : 100;
}

inline void sleep_ms(double ms) {
    std::this_thread::sleep_for(std::chrono::duration<double, std::milli>(ms));
}

/// Keeps the station busy publishing: everything moves.
inline void command_everything(const attached_segment& segment) {
    for (int i = 0; segment && i < segment->nb_outputs; ++i) segment->output_values[i] = 1;
}

/// A session that had not begun is over.
inline bool ends(const attached_segment& segment) {
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
                if (leftovers::no_process()) return true;
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
