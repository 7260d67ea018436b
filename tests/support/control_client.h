// A client of a session's control socket, which can be as slow and as wrong as a test wants it.
#pragma once
#include <poll.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <optional>
#include <string>

/// The control socket of a session of this user, in the runtime folder of the test.
inline std::string control_socket_path(const std::string& ident) {
    const char* const folder = std::getenv("XDG_RUNTIME_DIR");
    return std::string(folder ? folder : "/nowhere") + "/quorin/" + ident;
}
inline std::string control_socket_path(int ident) {
    return control_socket_path(std::to_string(ident));
}

class control_client {
public:
    /// Connects; `connected` tells whether that could be done.
    explicit control_client(const std::string& path)
        : descriptor_(socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0)) {
        sockaddr_un address{};
        address.sun_family = AF_UNIX;
        if (path.size() >= sizeof address.sun_path) return;
        std::ranges::copy(path, address.sun_path);
        connected_ =
            connect(descriptor_, reinterpret_cast<sockaddr*>(&address), sizeof address) == 0;
    }
    ~control_client() { close(descriptor_); }
    control_client(const control_client&) = delete;
    control_client& operator=(const control_client&) = delete;

    bool connected() const { return connected_; }
    /// Sends these bytes; false once the other side has gone.
    bool send_bytes(const std::string& bytes) const {
        return send(descriptor_, bytes.data(), bytes.size(), MSG_NOSIGNAL) ==
               static_cast<ssize_t>(bytes.size());
    }
    /// Sends nothing more.
    void finish() const { shutdown(descriptor_, SHUT_WR); }
    /// Whether something, an end for one, is there to be read.
    bool heard(int wait_ms = 0) const {
        pollfd there{descriptor_, POLLIN, 0};
        return poll(&there, 1, wait_ms) > 0;
    }
    /// All that comes until the connection is closed; nothing when that does not happen in time.
    std::optional<std::string> answer(int wait_ms = 20'000) const {
        std::string all;
        char bytes[4096];
        while (heard(wait_ms)) {
            const ssize_t count = recv(descriptor_, bytes, sizeof bytes, 0);
            if (count <= 0) return all;
            all.append(bytes, static_cast<std::size_t>(count));
        }
        return std::nullopt;
    }

private:
    int descriptor_;
    bool connected_ = false;
};

/// One request and its answer; empty when nobody answers.
inline std::string ask_session(const std::string& path, const std::string& request) {
    const control_client client(path);
    if (!client.connected() || !client.send_bytes(request + "\n")) return "";
    return client.answer().value_or("");
}
