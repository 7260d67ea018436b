// Who commands, and the safe state: every coil 0 when that one is silent, has gone, or when the
// program ends, however it ends.
#include <list>
#include <mutex>
#include <thread>

#include "tests/bridges/modbus_program.h"

namespace {

using clock_type = std::chrono::steady_clock;

void sleep_ms(int ms) { std::this_thread::sleep_for(std::chrono::milliseconds(ms)); }

class QuorinModbusControl : public QuorinModbus {
protected:
    /// How often the coils were said to be 0 now, for a client.
    static long times_said(const modbus_bridge& bridge, const std::string& why) {
        const std::string err = bridge.process->err(), end = why + ": les bobines valent 0\n";
        long times = 0;
        for (std::size_t at = err.find(end); at != std::string::npos; at = err.find(end, at + 1))
            ++times;
        return times;
    }
};

TEST_F(QuorinModbusControl, CoilIIsOutputI) {
    const modbus_bridge bridge(ident(), {"--control"});
    const modbus_connection client(bridge.port);
    EXPECT_EQ(client.ask("05 0001 ff00"), "05 00 01 ff 00");
    EXPECT_EQ(outputs(), "0 1 0");
    EXPECT_EQ(client.ask("05 0002 ff00"), "05 00 02 ff 00");
    EXPECT_EQ(outputs(), "0 1 1") << "of two outputs named alike, the one that was meant";
    EXPECT_EQ(client.ask("0f 0000 0002 01 01"), "0f 00 00 00 02");
    EXPECT_EQ(outputs(), "1 0 1");
    link->segment->output_values[0] = 5;
    EXPECT_EQ(client.ask("05 0001 ff00"), "05 00 01 ff 00");
    EXPECT_EQ(outputs(), "5 1 1") << "what a request does not name stays as it is";
    EXPECT_EQ(client.ask("06 0000 0001"), "86 02");
    EXPECT_EQ(client.ask("05 0003 ff00"), "85 02");
    EXPECT_EQ(client.ask("0f 0002 0002 01 03"), "8f 02");
    EXPECT_EQ(outputs(), "5 1 1");
}

/// A link, its bridge and a client that commands it.
struct commanded_link {
    test_server link{{"te"}, {"RENT", "SORT"}};
    modbus_bridge bridge{std::to_string(link->memory_ident()),
                         {"--control", "--safe-after", "0.2"}};
    modbus_connection client{bridge.port};
    given_clock clock;
    clock_type::time_point asked;
    double answered_s = 0;

    bool safe() { return link->output_value(0) == 0 && link->output_value(1) == 0; }
    /// The bridge has the request at some moment between the two times.
    void command() {
        asked = clock_type::now();
        EXPECT_EQ(client.ask("0f 0000 0002 01 03"), "0f 00 00 00 02");
        answered_s = clock.now_s();
    }
    void wait_until_safe() {
        while (!safe() && clock.now_s() < answered_s + 5) usleep(500);
    }
};

// A hundred times, ten at once; each is followed to the moment on its own.
TEST_F(QuorinModbusControl, ASilentCommanderIsHeardNoMoreInTime) {
    std::list<commanded_link> links(10);
    std::vector<std::thread> followers;
    std::mutex one;
    double earliest_s = 1e9, latest_s = 0;
    for (commanded_link& each : links) {
        followers.emplace_back([&] {
            for (int i = 0; i < 10; ++i) {
                each.command();
                each.wait_until_safe();
                const double least_s = seconds_since(each.asked);
                const double most_s = each.clock.now_s() - each.answered_s;
                const std::lock_guard held(one);
                earliest_s = std::min(earliest_s, least_s);
                latest_s = std::max(latest_s, most_s);
            }
        });
    }
    for (std::thread& each : followers) each.join();
    EXPECT_GE(earliest_s, 0.2);
    EXPECT_LE(latest_s, 0.4);
    for (const commanded_link& each : links) {
        EXPECT_TRUE(
            wait_until([&] { return times_said(each.bridge, "sans requête depuis 0.2 s") == 10; }));
        EXPECT_EQ(std::ranges::count(each.bridge.process->err(), '\n'), 10);
    }
}

TEST_F(QuorinModbusControl, AnyRequestKeepsTheCommand) {
    const modbus_bridge bridge(ident(), {"--control", "--safe-after", "2"});
    const modbus_connection client(bridge.port);
    EXPECT_EQ(client.ask("05 0000 ff00"), "05 00 00 ff 00");
    for (int i = 0; i < 12; ++i) {
        sleep_ms(300);
        EXPECT_EQ(client.ask(i % 3 == 0   ? "02 0000 0001"
                             : i % 3 == 1 ? "2b 0e 01 00"
                                          : "03 0000 0001"),
                  i % 3 == 0   ? "02 01 00"
                  : i % 3 == 1 ? "ab 01"
                               : "83 02");
        EXPECT_EQ(outputs(), "1 0 0") << i;
    }
    EXPECT_EQ(bridge.process->err(), "");
}

TEST_F(QuorinModbusControl, PartsOfARequestAreNone) {
    const modbus_bridge bridge(ident(), {"--control", "--safe-after", "0.4"});
    const modbus_connection client(bridge.port);
    EXPECT_EQ(client.ask("05 0000 ff00"), "05 00 00 ff 00");
    const std::string frame = frame_of(hex("02 0000 0001"));
    const given_clock clock;
    for (std::size_t i = 0; i + 1 < frame.size() && outputs() == "1 0 0"; ++i) {
        client.send(frame.substr(i, 1));
        sleep_ms(100);
    }
    EXPECT_EQ(outputs(), "0 0 0");
    EXPECT_LT(clock.now_s(), 0.8);
}

TEST_F(QuorinModbusControl, WhoGoesTakesTheCommandAlong) {
    const modbus_bridge bridge(ident(), {"--control", "--safe-after", "60"});
    for (int i = 1; i <= 5; ++i) {
        {
            const modbus_connection client(bridge.port);
            EXPECT_EQ(client.ask("05 0000 ff00"), "05 00 00 ff 00");
        }
        EXPECT_TRUE(outputs_become("0 0 0", seconds(0.2)));
        EXPECT_TRUE(wait_until([&] { return times_said(bridge, "parti") == i; }));
    }
}

TEST_F(QuorinModbusControl, TheOneThatWroteLastCommands) {
    const modbus_bridge bridge(ident(), {"--control", "--safe-after", "2"});
    modbus_connection first(bridge.port), reader(bridge.port);
    const modbus_connection second(bridge.port);
    EXPECT_EQ(first.ask("05 0000 ff00"), "05 00 00 ff 00");
    EXPECT_EQ(reader.ask("02 0000 0001"), "02 01 00");
    EXPECT_EQ(second.ask("05 0001 ff00"), "05 00 01 ff 00");
    EXPECT_EQ(outputs(), "1 1 0");
    EXPECT_EQ(first.ask("05 0009 ff00"), "85 02") << "a refused write is none";
    first.hang_up();
    reader.hang_up();
    sleep_ms(100);
    EXPECT_EQ(outputs(), "1 1 0") << "neither of them commands";
    EXPECT_EQ(bridge.process->err(), "");
    EXPECT_TRUE(outputs_become("0 0 0", seconds(2.5)));
    EXPECT_EQ(times_said(bridge, "sans requête depuis 2 s"), 1);
}

TEST_F(QuorinModbusControl, NobodyCommandsUntilSomebodyWrites) {
    const modbus_bridge bridge(ident(), {"--control", "--safe-after", "0.2"});
    link->segment->output_values[1] = 1;
    {
        const modbus_connection reader(bridge.port);
        EXPECT_EQ(reader.ask("02 0000 0001"), "02 01 00");
        sleep_ms(400);
    }
    sleep_ms(100);
    EXPECT_EQ(outputs(), "0 1 0") << "what somebody else commands is left alone";
    EXPECT_EQ(bridge.process->err(), "");
}

TEST_F(QuorinModbusControl, TheEndOfTheProgramSetsTheCoilsToZero) {
    for (const int number : {SIGTERM, SIGINT, SIGKILL}) {
        const modbus_bridge bridge(ident(), {"--control"});
        const modbus_connection client(bridge.port);
        EXPECT_EQ(client.ask("0f 0000 0003 01 07"), "0f 00 00 00 03");
        bridge.process->signal(number);
        EXPECT_TRUE(outputs_become("0 0 0", seconds(2))) << number;
        EXPECT_EQ(bridge.process->wait(), number == SIGKILL ? 128 + SIGKILL : 0);
        EXPECT_TRUE(bridge.says("les bobines valent 0\n")) << bridge.process->err();
        EXPECT_EQ(std::ranges::count(bridge.process->err(), '\n'), 1);
    }
}

TEST_F(QuorinModbusControl, TheEndOfTheSessionSetsTheCoilsToZero) {
    const modbus_bridge bridge(ident(), {"--control"});
    const modbus_connection client(bridge.port);
    EXPECT_EQ(client.ask("0f 0000 0003 01 07"), "0f 00 00 00 03");
    link->sharing_terminate();
    EXPECT_EQ(bridge.process->wait(), 0);
    EXPECT_EQ(outputs(), "0 0 0");
}

TEST_F(QuorinModbusControl, WithoutItsGuardItEndsInTheSafeState) {
    const modbus_bridge bridge(ident(), {"--control"});
    const modbus_connection client(bridge.port);
    EXPECT_EQ(client.ask("0f 0000 0003 01 07"), "0f 00 00 00 03");
    const auto guard = [&] { return child_named(bridge.process->id(), "modbus-garde"); };
    ASSERT_TRUE(wait_until([&] { return guard() != 0; }));
    kill(guard(), SIGKILL);
    EXPECT_EQ(bridge.process->wait(), 1);
    EXPECT_EQ(outputs(), "0 0 0");
    EXPECT_TRUE(bridge.says("le processus de garde a disparu\n"));
}

TEST_F(QuorinModbusControl, TheCommanderMayBeSilentForLongerThanOthers) {
    const modbus_bridge bridge(ident(), {"--control", "--safe-after", "6.5"});
    const modbus_connection commander(bridge.port), other(bridge.port);
    const auto other_asked = clock_type::now();
    EXPECT_EQ(other.ask("05 0000 ff00"), "05 00 00 ff 00");
    const auto asked = clock_type::now();
    EXPECT_EQ(commander.ask("05 0001 ff00"), "05 00 01 ff 00");
    const given_clock clock;
    EXPECT_TRUE(other.closes());
    EXPECT_GE(seconds_since(other_asked), 5);
    EXPECT_LT(clock.now_s(), 5.5);
    EXPECT_EQ(outputs(), "1 1 0");
    EXPECT_TRUE(commander.closes());
    EXPECT_GE(seconds_since(asked), 6.5);
    EXPECT_EQ(outputs(), "0 0 0");
    EXPECT_EQ(times_said(bridge, "sans requête depuis 6.5 s"), 1);
}

}  // namespace
