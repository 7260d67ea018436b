#include "ioshare/io_announcement.h"

#include <unistd.h>

#include <cerrno>
#include <cstddef>
#include <cstring>
#include <string>

sockaddr_un io_announcement_address(int ident, socklen_t& size) {
    const std::string name = "quorin-observers-" + std::to_string(ident);
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    // After a first byte of 0: a name of the system's own, without a file.
    std::memcpy(address.sun_path + 1, name.data(), name.size());
    size = static_cast<socklen_t>(offsetof(sockaddr_un, sun_path) + 1 + name.size());
    return address;
}

void io_announce(int ident, io_access access) {
    constexpr int tries = 500;
    constexpr useconds_t pause_us = 2'000;
    const int line = socket(AF_UNIX, SOCK_DGRAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0);
    if (line < 0) return;
    socklen_t size = 0;
    const sockaddr_un address = io_announcement_address(ident, size);
    const char word = static_cast<char>(access);
    for (int i = 0; i < tries; ++i) {
        const auto* const to = reinterpret_cast<const sockaddr*>(&address);
        if (sendto(line, &word, sizeof word, MSG_NOSIGNAL, to, size) >= 0 || errno != EAGAIN) break;
        usleep(pause_us);
    }
    close(line);
}
