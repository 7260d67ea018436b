// A session as whoever runs it sees it: for how long it wants to be left alone.
#include "session/live_session.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <thread>

#include "ioshare/io_observer.h"
#include "session/end_signals.h"
#include "tests/session/fake_station.h"

namespace {

using namespace std::chrono_literals;

struct served_station {
    served_station() {
        options.no_panel = true;
        end_signals::watch();
        session.begin();
    }
    ~served_station() {
        session.end("essai terminé");
        while (!session.over()) session.service();
        EXPECT_EQ(session.finish(), 0);
    }

    /// Makes the steps of that time, as fast as it can.
    void make_steps(std::chrono::milliseconds simulated) {
        session.time().pause();
        session.time().run(simulated / 10ms);
        while (session.time().steps_left() > 0) session.service();
        session.time().resume(std::chrono::steady_clock::now());
    }
    void command(std::int32_t value) {
        io_observer(session.ident(), io_access::write).write("C1", value);
    }
    /// How long it wants to be left alone after a step: the longest of a few, as one for which the
    /// machine has no time is late for the next.
    live_session::duration rest() {
        for (const auto before = session.run().ms(); session.run().ms() == before;)
            std::this_thread::sleep_for(session.service());
        live_session::duration longest{};
        for (int i = 0; i < 5; ++i) longest = std::max(longest, session.service());
        return longest;
    }

    fake_station model;
    session_options options;
    message_stream messages{"essai"};
    live_session session{model, options, messages};
};

// One a process.
TEST(LiveSession, IsLeftAloneForThreeStepsWhileItsStationRests) {
    served_station running;
    EXPECT_LE(running.rest(), 10ms) << "at its start";
    running.make_steps(1100ms);
    EXPECT_EQ(running.rest(), 30ms) << "after a second without an event";

    running.command(1);
    EXPECT_LE(running.rest(), 10ms) << "with the step that takes a command";
    running.make_steps(5000ms);
    EXPECT_LE(running.rest(), 10ms) << "as long as something is commanded";
    running.command(0);
    running.make_steps(1100ms);
    EXPECT_EQ(running.rest(), 30ms);

    running.model.sensors = {1, 0, 0};
    EXPECT_LE(running.rest(), 10ms) << "after an event";
    running.make_steps(1100ms);
    EXPECT_EQ(running.rest(), 30ms);
    const auto before = running.session.run().ms();
    std::this_thread::sleep_for(31ms);
    running.session.service();
    EXPECT_GE(running.session.run().ms() - before, 30) << "no step is left out";

    {
        const io_observer somebody(running.session.ident(), io_access::write);
        EXPECT_LE(running.rest(), 10ms) << "whose commands may be short";
    }
    EXPECT_EQ(running.rest(), 30ms);

    running.session.time().set_speed(1.1, std::chrono::steady_clock::now());
    EXPECT_LE(running.rest(), 10ms) << "at a higher speed";
    running.session.time().set_speed(0.2, std::chrono::steady_clock::now());
    EXPECT_GT(running.rest(), 30ms) << "at a low speed each step, no more often than it is due";

    running.session.time().pause();
    EXPECT_EQ(running.session.service(), 500ms) << "a pause is longer";
    running.session.time().run(3);
    running.session.service();
    EXPECT_EQ(running.session.time().steps_left(), 0) << "steps asked for do not wait";
}

}  // namespace
