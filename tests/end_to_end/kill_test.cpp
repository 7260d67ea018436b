// kill -9 of each process of a session, and of two at once, at a hundred random moments each:
// nobody hangs, whoever is left knows, and no segment or process stays behind. How soon they know
// is for a test that is alone on the machine: zk4sim_pace_test.cpp.
#include "tests/end_to_end/kill_dash_nine.h"

namespace {

TEST_F(KillDashNine, OfThePanelEndsTheStation) {
    for (int i = 0; i < kills(); ++i) {
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
    for (int i = 0; i < kills(); ++i) {
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
    for (int i = 0; i < kills(); ++i) {
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
    for (int i = 0; i < kills(); ++i) {
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
