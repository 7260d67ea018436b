// Many and hostile clients: none delays another, none stalls or ends the server.
#include <fcntl.h>

#include <cstdlib>
#include <list>
#include <random>
#include <thread>

#include "tests/bridges/modbus_program.h"

namespace {

using clock_type = std::chrono::steady_clock;

double seconds_since(clock_type::time_point start) {
    return std::chrono::duration<double>(clock_type::now() - start).count();
}

const std::string read_inputs = frame_of(hex("02 0000 000a"));
const std::string inputs_read = frame_of(hex("02 02 00 00"));

class QuorinModbusClients : public QuorinModbus {
protected:
    /// Keeps a client's answers coming, and their times.
    static void ask_for(double limit_s, int port, std::vector<double>& answered_s) {
        const modbus_connection client(port);
        const auto start = clock_type::now();
        while (seconds_since(start) < limit_s) {
            const auto asked = clock_type::now();
            client.send(read_inputs);
            EXPECT_EQ(in_hex(client.read_frame()), in_hex(inputs_read));
            answered_s.push_back(seconds_since(asked));
            usleep(2000);
        }
    }
    static double percentile_99(std::vector<double> values) {
        EXPECT_GT(values.size(), 100u);
        std::sort(values.begin(), values.end());
        return values[values.size() * 99 / 100];
    }
};

TEST_F(QuorinModbusClients, AFrameMayComeByteByByteOrManyAtOnce) {
    const modbus_bridge bridge(ident(), {});
    const modbus_connection client(bridge.port);
    for (const char each : read_inputs) {
        client.send({each});
        usleep(20'000);
    }
    EXPECT_EQ(client.read_frame(), inputs_read);
    std::string many, wanted;
    for (int i = 0; i < 200; ++i) {
        many += frame_of(hex("02 0000 000a"), i);
        wanted += frame_of(hex("02 02 00 00"), i);
    }
    client.send(many);
    EXPECT_EQ(in_hex(client.read(wanted.size())), in_hex(wanted));
}

TEST_F(QuorinModbusClients, WhoHasStoppedSendingStillGetsItsAnswers) {
    const modbus_bridge bridge(ident(), {});
    const modbus_connection client(bridge.port);
    client.send(read_inputs + read_inputs + read_inputs.substr(0, 5));
    shutdown(client.socket(), SHUT_WR);
    EXPECT_EQ(client.read(1000), inputs_read + inputs_read);
    EXPECT_TRUE(client.closes());
}

TEST_F(QuorinModbusClients, WhatIsNoFrameEndsItsConnectionAndNoOther) {
    const modbus_bridge bridge(ident(), {});
    const modbus_connection other(bridge.port);
    for (const char* const bytes :
         {"00 00 00 01 00 06 01 02 00 00 00 01", "00 00 00 00 00 00", "00 00 00 00 00 01 01",
          "00 00 00 00 00 ff 01 02", "00 00 00 00 ff ff", "47 45 54 20 2f 20 48 54 54 50"}) {
        const modbus_connection client(bridge.port);
        client.send(hex(bytes));
        EXPECT_TRUE(client.closes(2)) << bytes;
        EXPECT_EQ(other.ask("02 0000 000a"), "02 02 00 00");
    }
}

TEST_F(QuorinModbusClients, WithoutAWholeRequestForFiveSecondsAClientIsDropped) {
    const modbus_bridge bridge(ident(), {});
    const modbus_connection silent(bridge.port), half(bridge.port), dripping(bridge.port),
        asking(bridge.port);
    half.send(read_inputs.substr(0, 7));
    const auto start = clock_type::now();
    std::thread drips([&] {
        for (std::size_t i = 0; i < 10; ++i) {
            dripping.send(read_inputs.substr(i, 1));
            EXPECT_EQ(asking.ask("02 0000 000a"), "02 02 00 00");
            usleep(600'000);
        }
    });
    for (const modbus_connection* const each : {&silent, &half, &dripping}) {
        EXPECT_TRUE(each->closes());
        EXPECT_GT(seconds_since(start), 4.8);
        EXPECT_LT(seconds_since(start), 5.5);
    }
    drips.join();
    EXPECT_EQ(asking.ask("02 0000 000a"), "02 02 00 00");
}

TEST_F(QuorinModbusClients, OverTheLimitAClientIsRefusedAtOnce) {
    const modbus_bridge bridge(ident(), {"--clients", "3"});
    std::list<modbus_connection> clients;
    for (int i = 0; i < 3; ++i)
        EXPECT_EQ(clients.emplace_back(bridge.port).ask("02 0000 000a"), "02 02 00 00");
    for (int i = 0; i < 20; ++i) {
        const modbus_connection refused(bridge.port);
        EXPECT_TRUE(refused.closes(0.5));
        EXPECT_EQ(clients.back().ask("02 0000 000a"), "02 02 00 00");
    }
    clients.pop_front();
    EXPECT_TRUE(wait_until([&] {
        const modbus_connection next(bridge.port);
        return next.ask("02 0000 000a") == "02 02 00 00";
    }));
    EXPECT_EQ(clients.back().ask("02 0000 000a"), "02 02 00 00");
}

// Silent ones, half frames, single bytes, requests whose answers nobody reads, and four who ask.
TEST_F(QuorinModbusClients, ThirtyTwoAtOnceAndThoseWhoAskAreAnswered) {
    const modbus_bridge bridge(ident(), {"--clients", "32"});
    std::list<modbus_connection> idle;
    for (int i = 0; i < 28; ++i) idle.emplace_back(bridge.port);
    std::vector<std::vector<double>> answered_s(4);
    std::vector<std::thread> asking;
    for (auto& each : answered_s)
        asking.emplace_back([&each, &bridge] { ask_for(6, bridge.port, each); });
    const auto start = clock_type::now();
    for (std::size_t turn = 0; seconds_since(start) < 5.5; ++turn) {
        int place = 0;
        for (const modbus_connection& each : idle) {
            const int kind = place++ < 16 ? 0 : place % 3;  // Sixteen are silent.
            fcntl(each.socket(), F_SETFL, O_NONBLOCK);
            if (kind == 1 && turn % 50 == 0) each.send(read_inputs.substr(turn / 50 % 12, 1));
            if (kind == 2) each.send(read_inputs + read_inputs);
        }
        usleep(5000);
    }
    for (std::thread& each : asking) each.join();
    std::vector<double> all;
    for (const auto& each : answered_s) all.insert(all.end(), each.begin(), each.end());
    EXPECT_LE(percentile_99(all), 0.1);
    EXPECT_TRUE(bridge.process->running());
    EXPECT_EQ(bridge.process->err(), "");
}

// With no descriptor left, who comes waits; nobody else does, and no time is burnt.
TEST_F(QuorinModbusClients, WithoutADescriptorLeftItGoesOn) {
    const int port = free_port();
    program bridge({"sh", "-c",
                    "ulimit -n 12; exec " + built("quorin-modbus") + " " + ident() +
                        " --clients 100 --port " + std::to_string(port)});
    ASSERT_TRUE(wait_until([&] { return !bridge.out().empty(); })) << bridge.err();
    std::list<modbus_connection> clients;
    for (int i = 0; i < 12; ++i) clients.emplace_back(port);
    const double before_s = processor_seconds(bridge.id());
    for (int i = 0; i < 20; ++i) {
        EXPECT_EQ(clients.front().ask("02 0000 000a"), "02 02 00 00");
        usleep(50'000);
    }
    EXPECT_LT(processor_seconds(bridge.id()) - before_s, 0.3);
    const modbus_connection& last = clients.back();
    while (clients.size() > 1) clients.pop_front();
    EXPECT_EQ(last.ask("02 0000 000a"), "02 02 00 00");
}

/// How many random frames a test sends: ten thousand, or QUORIN_FRAMES of the environment.
int frames() {
    const char* const wanted = std::getenv("QUORIN_FRAMES");
    return wanted ? std::atoi(wanted) : 10'000;
}

class random_client {
public:
    random_client(int port, unsigned seed) : port_(port), random_(seed), line_(port) {}

    /// Some frames whose header is sound: each is answered under it.
    int sound_frames() {
        std::string sent;
        std::vector<std::string> heads;
        for (std::size_t i = 0, count = random_() % 20 + 1; i < count; ++i) {
            sent += frame_of(request(), ++transaction_, 5);
            heads.push_back(frame_of("xx", transaction_, 5).substr(0, 4));
        }
        line_->send(sent);
        for (const std::string& each : heads) {
            const std::string answer = line_->read_frame();
            EXPECT_EQ(in_hex(answer.substr(0, 4)), in_hex(each));
        }
        return static_cast<int>(heads.size());
    }
    /// Bytes of any kind, and the end of the connection.
    int noise() {
        std::string bytes = random_bytes(random_() % 600);
        if (random_() % 2) bytes = frame_of(request()).substr(0, random_() % 12) + bytes;
        line_->send(bytes);
        if (random_() % 2) shutdown(line_->socket(), SHUT_WR);
        line_.emplace(port_);
        return 1;
    }

private:
    std::string random_bytes(std::size_t count) {
        std::string bytes(count, '\0');
        for (char& each : bytes) each = static_cast<char>(random_());
        return bytes;
    }
    /// Half of them nearly sound.
    std::string request() {
        if (random_() % 2) return random_bytes(random_() % 253 + 1);
        constexpr char functions[] = {1, 2, 3, 4, 5, 6, 7, 15, 16, 17, 20, 22, 23, 24, 43};
        std::string bytes(1, functions[random_() % sizeof functions]);
        bytes += hex("00") + random_bytes(1) + hex("00") + random_bytes(1);
        if (random_() % 2) bytes[4] = static_cast<char>(random_() % 4);
        if (bytes[0] >= 15) bytes += std::string(1, 1) + random_bytes(random_() % 3);
        return bytes;
    }

    int port_;
    std::mt19937 random_;
    std::optional<modbus_connection> line_;
    int transaction_ = 0;
};

TEST_F(QuorinModbusClients, RandomFramesNeitherEndNorStallItNorOthers) {
    const modbus_bridge bridge(ident(), {"--control"});
    const std::string names = bytes_at(link.bytes(), 456, 4100);
    std::vector<double> answered_s;
    bool over = false;
    std::thread asking([&] {
        while (!over) ask_for(0.5, bridge.port, answered_s);
    });
    random_client hostile(bridge.port, 29);
    for (int sent = 0, turn = 0; sent < frames() && !HasFailure(); ++turn)
        sent += turn % 10 == 9 ? hostile.noise() : hostile.sound_frames();
    over = true;
    asking.join();
    EXPECT_LE(percentile_99(answered_s), 0.1);
    EXPECT_EQ(bytes_at(link.bytes(), 456, 4100), names);
    for (const int each : {0, 1, 2}) EXPECT_EQ(link->output_value(each) & ~1, 0);
    bridge.process->signal(SIGTERM);
    EXPECT_EQ(bridge.process->wait(), 0) << bridge.process->err();
}

}  // namespace
