#include "bridges/modbus_client.h"

#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <utility>

namespace {

bool only_later(int error) { return error == EAGAIN || error == EWOULDBLOCK || error == EINTR; }

}  // namespace

modbus_client::modbus_client(int socket, std::string name, clock::time_point now)
    : socket_(socket), name_(std::move(name)), last_request_(now) {}

modbus_client::~modbus_client() { close(socket_); }

short modbus_client::wanted() const { return answering() ? POLLOUT : no_more_ ? 0 : POLLIN; }

void modbus_client::receive() {
    const std::span<std::uint8_t> room = received_.room();
    if (answering() || no_more_ || room.empty()) return;
    const ssize_t got = recv(socket_, room.data(), room.size(), 0);
    if (got > 0) received_.filled(static_cast<std::size_t>(got));
    if (got == 0) no_more_ = true;
    if (got < 0 && !only_later(errno)) broken_ = true;
}

std::span<const std::uint8_t> modbus_client::request() const {
    return answering() || broken_ ? std::span<const std::uint8_t>() : received_.frame();
}

void modbus_client::answer(std::span<const std::uint8_t> bytes, clock::time_point now) {
    received_.drop();
    last_request_ = now;
    answer_size_ = std::min(bytes.size(), answer_.size());
    sent_ = 0;
    std::copy_n(bytes.begin(), answer_size_, answer_.begin());
    if (bytes.empty()) broken_ = true;
    send();
}

void modbus_client::send() {
    if (!answering() || broken_) return;
    const std::size_t left = answer_size_ - sent_;
    const ssize_t gone = ::send(socket_, answer_.data() + sent_, left, MSG_NOSIGNAL);
    if (gone > 0) sent_ += static_cast<std::size_t>(gone);
    if (gone < 0 && !only_later(errno)) broken_ = true;
}

bool modbus_client::over() const {
    if (broken_ || received_.broken()) return true;
    return no_more_ && !answering() && received_.frame().empty();
}
