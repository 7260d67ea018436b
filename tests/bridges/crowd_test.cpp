// Those who ask are answered in time, whatever others send.
#include <fcntl.h>

#include <atomic>
#include <cstdlib>
#include <iostream>
#include <list>
#include <random>
#include <thread>

#include "tests/bridges/modbus_program.h"

namespace {

using clock_type = std::chrono::steady_clock;

const std::string read_inputs = frame_of(hex("02 0000 000a"));
const std::string inputs_read = frame_of(hex("02 02 00 00"));

class QuorinModbusCrowd : public QuorinModbus {
protected:
    /// Keeps a client's answers coming, and their times.
    static void ask_for(double limit_s, int port, std::vector<double>& answered_s) {
        const modbus_connection client(port);
        const given_clock clock;
        while (clock.now_s() < limit_s) {
            const double asked_s = clock.now_s();
            client.send(read_inputs);
            EXPECT_EQ(in_hex(client.read_frame()), in_hex(inputs_read));
            answered_s.push_back(clock.now_s() - asked_s);
            usleep(2000);
        }
    }
    static double percentile_99(std::vector<double> values) {
        EXPECT_GT(values.size(), 100u);
        std::sort(values.begin(), values.end());
        const double s = values[values.size() * 99 / 100];
        std::cout << values.size() << " answers, 99 % within " << s * 1000 << " ms\n";
        return s;
    }
};

// Silent ones, half frames, single bytes, requests whose answers nobody reads, and four who ask.
TEST_F(QuorinModbusCrowd, ThirtyTwoAtOnceAndThoseWhoAskAreAnswered) {
    const modbus_bridge bridge(ident(), {"--clients", "32"});
    std::string many;
    for (int i = 0; i < 100; ++i) many += read_inputs;
    std::list<modbus_connection> idle;
    for (int i = 0; i < 28; ++i) idle.emplace_back(bridge.port);
    std::vector<std::vector<double>> answered_s(4);
    std::vector<std::thread> asking;
    for (auto& each : answered_s)
        asking.emplace_back([&each, &bridge] { ask_for(3, bridge.port, each); });
    const auto start = clock_type::now();
    for (std::size_t turn = 0; seconds_since(start) < 2.8; ++turn) {
        int place = 0;
        for (const modbus_connection& each : idle) {
            const int kind = place < 16 ? 0 : 1 + place % 3;  // Sixteen are silent.
            ++place;
            fcntl(each.socket(), F_SETFL, O_NONBLOCK);
            if (kind == 1 && turn == 0) each.send(read_inputs.substr(0, 9));
            if (kind == 2 && turn % 50 == 0) each.send(read_inputs.substr(turn / 50 % 12, 1));
            if (kind == 3) each.send(many);
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

TEST_F(QuorinModbusCrowd, RandomFramesNeitherEndNorStallItNorOthers) {
    const modbus_bridge bridge(ident(), {"--control"});
    const std::string names = bytes_at(link.bytes(), 456, 4100);
    std::vector<double> answered_s;
    std::atomic<bool> over = false;
    std::thread asking([&] {
        while (!over) ask_for(1.5, bridge.port, answered_s);
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
