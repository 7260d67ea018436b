// Both halves in two real processes: values cross whole, and neither half ever hangs on the lock.
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <csignal>
#include <random>

#include "tests/ioshare/test_segment.h"
#include "tests/support/elapsed.h"

namespace {

class LinkOfTwoProcesses : public testing::Test {
    leaves_nothing nothing_;
};

/// A child process that runs `body` until it is killed.
class other_process {
public:
    explicit other_process(const std::function<void()>& body) : pid_(fork()) {
        if (pid_ == 0) {
            body();
            _exit(0);
        }
    }
    ~other_process() { stop(); }
    other_process(const other_process&) = delete;
    other_process& operator=(const other_process&) = delete;
    pid_t id() const { return pid_; }
    void stop() {
        if (pid_ <= 0) return;
        kill(pid_, SIGKILL);
        waitpid(pid_, nullptr, 0);
        pid_ = 0;
    }

private:
    pid_t pid_;
};

std::list<std::string> twenty_names() {
    std::list<std::string> names;
    for (int i = 0; i < 20; ++i) names.push_back("n" + std::to_string(i));
    return names;
}

void take_no_notice(int) {}

/// Interrupts this process's sleeps and waits, without restarting them.
void let_signals_interrupt(int number) {
    struct sigaction action {};
    action.sa_handler = take_no_notice;
    sigaction(number, &action, nullptr);
}

TEST_F(LinkOfTwoProcesses, BothMakeProgressForTenSecondsWhileBothAreBusyAndInterrupted) {
    test_server server(twenty_names(), twenty_names());
    const int ident = server->memory_ident();
    volatile auto* const segment = server->segment;
    let_signals_interrupt(SIGUSR1);
    other_process client([ident] {
        IOsharemem_client busy = quiet_client(ident);
        for (std::uint32_t n = 1;; ++n) {
            if (busy.receive() < 0) return;
            busy.outputs_refresh();
            busy.setreset_output("n3", static_cast<int>(n));
        }
    });
    ASSERT_TRUE(wait_until([&] { return server->output_value(3) > 0; }));

    // Every quarter of a second, both sides must have moved on.
    const given_clock clock;
    int published = 0, last_output = server->output_value(3), quarters = 0;
    while (clock.now_s() < 10) {
        const int published_before = published;
        const double quarter_s = clock.now_s() + 0.25;
        int interruption = 0;
        while (clock.now_s() < quarter_s) {
            for (int i = 0; i < 20; ++i) server->setreset_input(i, published);
            server->inputs_go();
            server->get_outputs_clock();
            ++published;
            if (++interruption % 64 == 0) kill(client.id(), SIGUSR1);
        }
        EXPECT_GT(published, published_before);
        EXPECT_GT(server->output_value(3), last_output)
            << "the client stood still in quarter " << quarters;
        last_output = server->output_value(3);
        ++quarters;
    }
    EXPECT_GE(quarters, 35);
    EXPECT_GT(segment->outputs_clock, 0);
    server->sharing_terminate();
}

TEST_F(LinkOfTwoProcesses, ASetOfValuesCrossesWhole) {
    test_server server(twenty_names(), {"seen"});
    // The publisher changes all the inputs together, so it holds the lock itself, as no single set
    // does.
    other_process publisher([&] {
        for (int n = 1;; ++n) {
            while (sem_trywait(&server->segment->lock) != 0) usleep(10);
            for (std::int32_t& value : server->segment->input_values) value = n;
            sem_post(&server->segment->lock);
            server->inputs_go();
        }
    });
    IOsharemem_client client = quiet_client(server->memory_ident());
    const detach_at_end detach{client};
    int taken = 0;
    const given_clock clock;
    std::int64_t last = 0;
    while (clock.now_s() < 2) {
        if (client.receive() != 1) continue;
        ++taken;
        for (int i = 1; i < 20; ++i)
            ASSERT_EQ(client.inputs[i], client.inputs[0]) << "a torn publication";
        ASSERT_GT(client.last_clock, last);
        last = client.last_clock;
    }
    EXPECT_GT(taken, 50);
}

TEST_F(LinkOfTwoProcesses, WhatOneWritesTheOtherReads) {
    test_server server({"a", "b"}, {"x", "y"});
    const int ident = server->memory_ident();
    other_process echo([ident] {
        IOsharemem_client client = quiet_client(ident);
        while (client.receive() >= 0) {
            client.setreset_output("x", client.input_is_set("a"));
            client.setreset_output("y", client.input_is_set("b"));
        }
    });
    std::mt19937 random(3);
    for (int round = 0; round < 50; ++round) {
        const int a = static_cast<int>(random()), b = static_cast<int>(random());
        server->setreset_input(0, a);
        server->setreset_input(1, b);
        server->inputs_go();
        ASSERT_TRUE(
            wait_until([&] { return server->output_value(0) == a && server->output_value(1) == b; },
                       seconds(2)));
    }
    server->sharing_terminate();
    EXPECT_EQ(waitpid(echo.id(), nullptr, 0), echo.id())
        << "the client ends by itself at the session's end";
}

}  // namespace
