#include "bridges/listening_socket.h"

#include <arpa/inet.h>
#include <netdb.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <sys/socket.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <memory>

namespace {

using address_list = std::unique_ptr<addrinfo, decltype(&freeaddrinfo)>;

/// The address that the figures are; null for any other text.
address_list figures(const std::string& address, const char* port) {
    addrinfo hints{}, *found = nullptr;
    in_addr four;  // "127.1" and "1502" are none.
    const bool six = address.find(':') != std::string::npos;
    if (!six && inet_pton(AF_INET, address.c_str(), &four) != 1) return {nullptr, &freeaddrinfo};
    hints.ai_socktype = SOCK_STREAM;
    hints.ai_flags = AI_NUMERICHOST | AI_NUMERICSERV | AI_PASSIVE;
    if (getaddrinfo(address.c_str(), port, &hints, &found) != 0) found = nullptr;
    return {found, &freeaddrinfo};
}

/// What the system means, in words of French.
std::string words_of(int error) {
    if (error == EADDRINUSE) return "déjà pris";
    if (error == EACCES) return "accès refusé";
    if (error == EADDRNOTAVAIL) return "cette machine n'a pas cette adresse";
    return std::strerror(error);
}

std::string name_of(const sockaddr_storage& from, socklen_t size) {
    char host[NI_MAXHOST], port[NI_MAXSERV];
    if (getnameinfo(reinterpret_cast<const sockaddr*>(&from), size, host, sizeof host, port,
                    sizeof port, NI_NUMERICHOST | NI_NUMERICSERV) != 0)
        return "client";
    return endpoint(host, std::atoi(port));
}

/// Whether a server may go on listening, once there is room again.
bool out_of_room(int error) {
    return error == EMFILE || error == ENFILE || error == ENOBUFS || error == ENOMEM;
}

}  // namespace

bool is_ip_address(const std::string& text) { return figures(text, "1") != nullptr; }

bool is_loopback(const std::string& address) {
    const address_list found = figures(address, "1");
    if (!found) return false;
    if (found->ai_family == AF_INET) {
        const auto* const four = reinterpret_cast<const sockaddr_in*>(found->ai_addr);
        return ntohl(four->sin_addr.s_addr) >> 24 == 127;
    }
    const in6_addr& six = reinterpret_cast<const sockaddr_in6*>(found->ai_addr)->sin6_addr;
    return IN6_IS_ADDR_LOOPBACK(&six) || (IN6_IS_ADDR_V4MAPPED(&six) && six.s6_addr[12] == 127);
}

std::string endpoint(const std::string& address, int port) {
    const bool six = address.find(':') != std::string::npos;
    return (six ? "[" + address + "]" : address) + ":" + std::to_string(port);
}

listening_socket::listening_socket(const std::string& address, int port) {
    const address_list at = figures(address, std::to_string(port).c_str());
    const int on = 1;
    constexpr int waiting = 64;
    if (at) {
        socket_ = socket(at->ai_family, SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0);
        setsockopt(socket_, SOL_SOCKET, SO_REUSEADDR, &on, sizeof on);
        if (socket_ >= 0 && bind(socket_, at->ai_addr, at->ai_addrlen) == 0 &&
            listen(socket_, waiting) == 0)
            return;
    }
    problem_ = endpoint(address, port) + ": " + (at ? words_of(errno) : "adresse inconnue");
}

listening_socket::~listening_socket() {
    if (socket_ >= 0) close(socket_);
}

listening_socket::connection listening_socket::take() const {
    sockaddr_storage from{};
    socklen_t size = sizeof from;
    const int taken =
        accept4(socket_, reinterpret_cast<sockaddr*>(&from), &size, SOCK_NONBLOCK | SOCK_CLOEXEC);
    if (taken < 0) return {-1, {}, out_of_room(errno)};
    const int on = 1;
    setsockopt(taken, IPPROTO_TCP, TCP_NODELAY, &on, sizeof on);
    return {taken, name_of(from, size)};
}
