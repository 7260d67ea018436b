// One connection of a Modbus server: requests come in, answers go out, and nothing waits.
#pragma once
#include <array>
#include <chrono>
#include <cstdint>
#include <span>
#include <string>

#include "bridges/frame_buffer.h"

class modbus_client {
public:
    using clock = std::chrono::steady_clock;

    /// Takes over a connected socket that never waits. `name` is where it comes from, fit to be
    /// shown.
    modbus_client(int socket, std::string name, clock::time_point now);
    ~modbus_client();
    modbus_client(const modbus_client&) = delete;
    modbus_client& operator=(const modbus_client&) = delete;

    [[nodiscard]] int socket() const { return socket_; }
    [[nodiscard]] const std::string& name() const { return name_; }
    /// When its last whole request came; when it connected, if none did.
    [[nodiscard]] clock::time_point last_request() const { return last_request_; }

    /// What poll() is to look for.
    [[nodiscard]] short wanted() const;
    /// Takes what has come. Nothing while an answer has not gone out whole: who reads no answers is
    /// asked for no requests.
    void receive();
    /// The next whole request; empty when none waits, or when an answer has not gone out whole.
    [[nodiscard]] std::span<const std::uint8_t> request() const;
    /// Answers that request, and is done with it. An empty answer ends the connection.
    void answer(std::span<const std::uint8_t> bytes, clock::time_point now);
    /// Sends what is left of the answer, as much as the connection takes.
    void send();

    /// Whether nothing more will come of it: closed by the other side and all answered, broken, or
    /// speaking another protocol.
    [[nodiscard]] bool over() const;

private:
    [[nodiscard]] bool answering() const { return sent_ < answer_size_; }

    int socket_;
    std::string name_;
    clock::time_point last_request_;
    frame_buffer received_;
    std::array<std::uint8_t, modbus_frame_limit> answer_{};
    std::size_t answer_size_ = 0, sent_ = 0;
    bool no_more_ = false, broken_ = false;
};
