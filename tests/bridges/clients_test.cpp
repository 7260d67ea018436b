// Many and hostile clients: none delays another, none stalls or ends the server.
#include <list>
#include <thread>

#include "tests/bridges/modbus_program.h"

namespace {

using clock_type = std::chrono::steady_clock;

const std::string read_inputs = frame_of(hex("02 0000 000a"));
const std::string inputs_read = frame_of(hex("02 02 00 00"));

class QuorinModbusClients : public QuorinModbus {};

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
    const auto before = clock_type::now();
    const modbus_connection silent(bridge.port), half(bridge.port), dripping(bridge.port),
        asking(bridge.port);
    half.send(read_inputs.substr(0, 7));
    const given_clock clock;
    std::thread drips([&] {
        for (std::size_t i = 0; i < 10; ++i) {
            dripping.send(read_inputs.substr(i, 1));
            EXPECT_EQ(asking.ask("02 0000 000a"), "02 02 00 00");
            usleep(600'000);
        }
    });
    for (const modbus_connection* const each : {&silent, &half, &dripping}) {
        EXPECT_TRUE(each->closes());
        EXPECT_GE(seconds_since(before), 5);
        EXPECT_LT(clock.now_s(), 5.5);
    }
    drips.join();
    EXPECT_EQ(asking.ask("02 0000 000a"), "02 02 00 00");
}

TEST_F(QuorinModbusClients, WhoReadsNoAnswersIsNotHeardAndDropped) {
    const modbus_bridge bridge(ident(), {"--clients", "2"});
    const modbus_connection deaf(bridge.port), other(bridge.port);
    std::string many;
    for (int i = 0; i < 1000; ++i) many += read_inputs;
    // Its place is free once it is dropped; until then whoever comes is one too many.
    std::size_t sent = 0;
    const auto start = clock_type::now();
    const given_clock clock;
    for (bool dropped = false; !dropped && clock.now_s() < 60;) {
        for (int i = 0; i < 20; ++i) {
            const ssize_t taken = ::send(deaf.socket(), many.data() + sent, many.size() - sent,
                                         MSG_NOSIGNAL | MSG_DONTWAIT);
            if (taken > 0) sent = (sent + static_cast<std::size_t>(taken)) % many.size();
            usleep(1000);
        }
        const double asked_s = clock.now_s();
        EXPECT_EQ(other.ask("02 0000 000a"), "02 02 00 00");
        EXPECT_LT(clock.now_s() - asked_s, 1);
        const modbus_connection next(bridge.port);
        dropped = next.ask("02 0000 000a") == "02 02 00 00";
    }
    EXPECT_GT(seconds_since(start), 5);
    EXPECT_LT(clock.now_s(), 60);
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

}  // namespace
