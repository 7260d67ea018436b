#include "session/control_socket.h"

#include <sys/epoll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>

#include "ioshare/io_printable.h"
#include "session/control_folder.h"
#include "session/system_errors.h"
#include "session/trusted_user.h"

namespace {

constexpr auto patience = std::chrono::seconds(1);
constexpr std::size_t longest_request = control_request_limit, most_clients = 256;
constexpr int most_at_once = 64;

const control_answer no_request = {exit_status::misuse,
                                   "ce n'est pas une demande: des mots, un blanc entre deux, "
                                   "et une fin de ligne\n"};

/// Words with one blank between two, and nothing else: no control bytes.
bool is_request(const std::string& line) {
    if (line.empty() || line.front() == ' ' || line.back() == ' ') return false;
    if (line.find("  ") != std::string::npos) return false;
    return std::ranges::none_of(line, io_is_control);
}

}  // namespace

control_socket::control_socket(int ident)
    : path_(control_path(control_folder(), ident)),
      events_(or_refuse(epoll_create1(EPOLL_CLOEXEC), "prise de contrôle")) {
    try {
        prepare_control_folder();
        listener_ = listen_at(path_);
    } catch (...) {
        close(events_);
        throw;
    }
    listen_for(listener_, EPOLLIN, EPOLL_CTL_ADD);
}

control_socket::~control_socket() {
    unlink(path_.c_str());
    for (const connection& each : clients_) close(each.descriptor);
    close(listener_);
    close(events_);
}

void control_socket::listen_for(int descriptor, unsigned events, int change) const {
    epoll_event wanted{};
    wanted.events = events;
    wanted.data.fd = descriptor;
    epoll_ctl(events_, change, descriptor, &wanted);
}

std::optional<control_socket::moment> control_socket::next_deadline() const {
    std::optional<moment> first;
    for (const connection& each : clients_)
        if (each.at != stage::waiting && (!first || each.deadline < *first)) first = each.deadline;
    return first;
}

void control_socket::service(moment now, const handler& carry_out) {
    epoll_event ready[most_at_once];
    const int count = epoll_wait(events_, ready, most_at_once, 0);
    for (int i = 0; i < count; ++i) {
        const auto client = std::ranges::find(clients_, ready[i].data.fd, &connection::descriptor);
        if (client != clients_.end())
            take_bytes(*client, (ready[i].events & (EPOLLHUP | EPOLLERR)) != 0, now, carry_out);
        else
            accept_clients(now);
    }
    for (auto client = clients_.begin(); client != clients_.end();) {
        const auto each = client++;
        const bool late = each->at != stage::waiting && each->deadline <= now;
        if (late || each->descriptor < 0) drop(each);
    }
}

void control_socket::accept_clients(moment now) {
    for (int i = 0; i < most_at_once; ++i) {
        const int client = accept4(listener_, nullptr, nullptr, SOCK_CLOEXEC | SOCK_NONBLOCK);
        if (client < 0) {
            // Out of descriptors: whoever waits to be taken is, with the next look.
            if (errno == EMFILE || errno == ENFILE) make_room();
            return;
        }
        if (!peer_is_trusted(client)) {
            close(client);
            continue;
        }
        if (clients_.size() >= most_clients) make_room();
        clients_.push_back({client, now + patience});
        listen_for(client, EPOLLIN, EPOLL_CTL_ADD);
    }
}

// The oldest goes that has been silent for longest. One that waits for its answer is not silent.
void control_socket::make_room() {
    const auto oldest = std::ranges::find_if(
        clients_, [](const connection& each) { return each.at != stage::waiting; });
    if (oldest != clients_.end()) drop(oldest);
}

void control_socket::take_bytes(connection& client, bool gone, moment now,
                                const handler& carry_out) {
    char bytes[longest_request + 1];
    const ssize_t got = recv(client.descriptor, bytes, sizeof bytes, MSG_DONTWAIT);
    if (got < 0 && errno == EAGAIN) return;
    const bool at_end = got <= 0;
    if (client.at == stage::reading) {
        if (got > 0) client.received.append(bytes, static_cast<std::size_t>(got));
        take_request(client, now, carry_out, at_end);
    }
    if (!at_end) return;
    if (client.at == stage::waiting && !gone) {
        listen_for(client.descriptor, 0, EPOLL_CTL_MOD);  // It says no more, but it still reads.
        return;
    }
    close(client.descriptor);  // It has gone, or has its answer.
    client.descriptor = -1;
}

void control_socket::take_request(connection& client, moment now, const handler& carry_out,
                                  bool at_end) {
    const std::size_t end = client.received.find('\n');
    const bool whole = end < longest_request;  // None at all is no end, and the largest number.
    if (!whole && !at_end && client.received.size() < longest_request) return;
    const std::string line = client.received.substr(0, end);
    if (!whole || end + 1 != client.received.size() || !is_request(line)) {
        if (!at_end || !client.received.empty()) answer(client, now, no_request);
        return;
    }
    const std::optional<control_answer> result = carry_out(line);
    if (result)
        answer(client, now, *result);
    else
        client.at = stage::waiting;
}

// A socket that is closed with bytes unread takes the answer away from its reader: it is read to
// its end first, for as long as the patience goes.
void control_socket::answer(connection& client, moment now, const control_answer& answer) {
    const std::string bytes = std::to_string(static_cast<int>(answer.status)) + '\n' + answer.text;
    send(client.descriptor, bytes.data(), bytes.size(), MSG_DONTWAIT | MSG_NOSIGNAL);
    shutdown(client.descriptor, SHUT_WR);
    client.at = stage::answered;
    client.deadline = now + patience;
}

bool control_socket::anybody_waiting() const {
    return std::ranges::count(clients_, stage::waiting, &connection::at) > 0;
}

void control_socket::answer_waiting(moment now, const control_answer& result) {
    for (connection& each : clients_)
        if (each.at == stage::waiting) answer(each, now, result);
}

void control_socket::drop(connections::iterator client) {
    if (client->descriptor >= 0) close(client->descriptor);
    clients_.erase(client);
}
