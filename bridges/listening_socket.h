// Where a server takes its connections.
#pragma once
#include <string>
#include <utility>

/// Whether `text` is an address of this or another machine, in figures: "127.0.0.1", "::1".
[[nodiscard]] bool is_ip_address(const std::string& text);

/// Whether an address in figures is this machine's own, which no other one reaches: 127.0.0.0/8,
/// ::1.
[[nodiscard]] bool is_loopback(const std::string& address);

/// An address in figures and a port, as they are written together: "127.0.0.1:1502", "[::1]:1502".
[[nodiscard]] std::string endpoint(const std::string& address, int port);

class listening_socket {
public:
    /// Listens on that address, in figures, and that port. A failure is told by `problem()`.
    listening_socket(const std::string& address, int port);
    ~listening_socket();
    listening_socket(const listening_socket&) = delete;
    listening_socket& operator=(const listening_socket&) = delete;

    /// Why it does not listen, in French, without an end of line; empty when it does.
    [[nodiscard]] const std::string& problem() const { return problem_; }
    [[nodiscard]] int descriptor() const { return socket_; }

    struct connection {
        /// Never waits, and sends at once; -1 when there was none to be taken.
        int socket = -1;
        /// Where it comes from: "127.0.0.1:40312".
        std::string name = {};
        /// Whether the process or the machine has no room for one more; it still waits.
        bool no_room = false;
    };
    /// Takes the next connection that waits.
    [[nodiscard]] connection take() const;

private:
    int socket_ = -1;
    std::string problem_;
};
