// A Modbus TCP client of the tests' own: bytes as they please, whole or in pieces.
#pragma once
#include <arpa/inet.h>
#include <netinet/in.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <cstdint>
#include <string>

/// Bytes written "00 01 ff".
inline std::string hex(const std::string& digits) {
    std::string bytes;
    for (std::size_t at = 0; at + 1 < digits.size(); at += digits[at] == ' ' ? 1 : 2)
        if (digits[at] != ' ')
            bytes += static_cast<char>(std::stoi(digits.substr(at, 2), nullptr, 16));
    return bytes;
}

/// The other way.
inline std::string in_hex(const std::string& bytes) {
    constexpr char digits[] = "0123456789abcdef";
    std::string text;
    for (const unsigned char each : bytes) {
        if (!text.empty()) text += ' ';
        text += {digits[each / 16], digits[each % 16]};
    }
    return text;
}

/// A frame with the header that `request` needs.
inline std::string frame_of(const std::string& request, int transaction = 0x0102, int unit = 1) {
    const std::size_t length = request.size() + 1;
    const auto byte = [](std::size_t value) { return static_cast<char>(value & 0xFF); };
    const auto number = static_cast<std::size_t>(transaction);
    return std::string{byte(number >> 8),
                       byte(number),
                       0,
                       0,
                       byte(length >> 8),
                       byte(length),
                       byte(static_cast<std::size_t>(unit))} +
           request;
}

class modbus_connection {
public:
    explicit modbus_connection(int port) : socket_(::socket(AF_INET, SOCK_STREAM, 0)) {
        sockaddr_in to{};
        to.sin_family = AF_INET;
        to.sin_port = htons(static_cast<std::uint16_t>(port));
        to.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        connected_ = connect(socket_, reinterpret_cast<sockaddr*>(&to), sizeof to) == 0;
    }
    ~modbus_connection() { hang_up(); }
    modbus_connection(const modbus_connection&) = delete;
    modbus_connection& operator=(const modbus_connection&) = delete;

    bool connected() const { return connected_; }
    int socket() const { return socket_; }
    void hang_up() {
        if (socket_ >= 0) close(socket_);
        socket_ = -1;
    }
    void send(const std::string& bytes) const {
        [[maybe_unused]] const ssize_t sent =
            ::send(socket_, bytes.data(), bytes.size(), MSG_NOSIGNAL);
    }
    /// As many bytes as come, up to `count`, within a time; fewer once the server has closed. A
    /// pause of the machine between two looks does not count.
    std::string read(std::size_t count, double limit_s = 10) const {
        constexpr int look_ms = 5;
        std::string bytes;
        for (double left_ms = limit_s * 1000; bytes.size() < count && left_ms > 0;) {
            pollfd wanted{socket_, POLLIN, 0};
            if (poll(&wanted, 1, look_ms) <= 0) {
                left_ms -= look_ms;
                continue;
            }
            char some[512];
            const ssize_t got = recv(socket_, some, std::min(sizeof some, count - bytes.size()), 0);
            if (got <= 0) {
                closed_ = true;
                break;
            }
            bytes.append(some, static_cast<std::size_t>(got));
        }
        return bytes;
    }
    /// One whole frame; what came of it when none did.
    std::string read_frame(double limit_s = 10) const {
        std::string frame = read(6, limit_s);
        if (frame.size() < 6) return frame;
        const auto byte = [&](std::size_t at) { return static_cast<unsigned char>(frame[at]); };
        return frame + read(byte(4) * 256U + byte(5), limit_s);
    }
    /// Asks, and what is answered, both without the header and in figures: "02 00 00 00 01".
    std::string ask(const std::string& request, double limit_s = 10) const {
        send(frame_of(hex(request)));
        const std::string frame = read_frame(limit_s);
        return frame.size() < 8 ? (closed_ ? "closed" : "nothing") : in_hex(frame.substr(7));
    }
    /// Whether the server closes the connection, within a time, and sends nothing before.
    bool closes(double limit_s = 10) const { return read(1, limit_s).empty() && closed_; }

private:
    int socket_;
    bool connected_ = false;
    mutable bool closed_ = false;
};
