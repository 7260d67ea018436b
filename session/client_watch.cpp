#include "session/client_watch.h"

#include <fcntl.h>
#include <signal.h>
#include <sys/socket.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <fstream>
#include <string>
#include <utility>

#include "ioshare/io_announcement.h"
#include "session/trusted_user.h"

namespace {

/// Where announcements come in, with who sent them; -1 when the place is taken.
int listen_for_announcements(int ident) {
    const int line = socket(AF_UNIX, SOCK_DGRAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0);
    if (line < 0) return -1;
    const int wanted = 1;
    socklen_t size = 0;
    const sockaddr_un address = io_announcement_address(ident, size);
    if (setsockopt(line, SOL_SOCKET, SO_PASSCRED, &wanted, sizeof wanted) == 0 &&
        bind(line, reinterpret_cast<const sockaddr*>(&address), size) == 0)
        return line;
    close(line);
    return -1;
}

struct announcement {
    char word[2];  // One byte more than there should be, so that a longer one is known.
    alignas(cmsghdr) char control[CMSG_SPACE(sizeof(ucred))];
};

/// The sender, as the system names it; a pid of 0 when it does not.
ucred sender(msghdr& message) {
    ucred who{};
    const cmsghdr* const first = CMSG_FIRSTHDR(&message);
    if (first && first->cmsg_level == SOL_SOCKET && first->cmsg_type == SCM_CREDENTIALS &&
        first->cmsg_len == CMSG_LEN(sizeof who))
        std::memcpy(&who, CMSG_DATA(first), sizeof who);
    return who;
}

bool gone(pid_t process) { return kill(process, 0) != 0 && errno == ESRCH; }

/// Whether the process lives and has no memory any more: it is about to end. Its attachments are
/// counted for a moment longer than they can be seen.
bool about_to_end(pid_t process) {
    const std::string folder = "/proc/" + std::to_string(process);
    std::string line;
    if (std::ifstream maps(folder + "/maps"); std::getline(maps, line)) return false;
    std::ifstream stat(folder + "/stat");
    const bool there = static_cast<bool>(std::getline(stat, line));
    const std::size_t state = line.rfind(") ") + 2;
    return there && state < line.size() && line[state] != 'Z';
}

}  // namespace

client_watch::client_watch(int ident, unsigned long holders)
    : ident_(ident),
      holders_(holders),
      line_(listen_for_announcements(ident)),
      last_(io_held(ident).value_or(io_holding{})),
      last_seen_(clock::now()) {}

client_watch::~client_watch() {
    if (line_ >= 0) close(line_);
}

double client_watch::seconds_alone() {
    const auto now = clock::now();
    const bool seen = client_seen();
    if (std::exchange(commander_came_, false) || seen) last_seen_ = now;
    forget_the_gone();
    return std::chrono::duration<double>(now - last_seen_).count();
}

/// A look counts when nobody came or went while it was taken, since observers come and go within a
/// millisecond; without such a moment the last one's answer stands. Whoever holds the segment has
/// announced itself before it attached, so its announcement is there.
bool client_watch::client_seen() {
    constexpr int tries = 20;
    for (int i = 0; i < tries; ++i) {
        take_announcements();
        const std::optional<io_holding> held = io_held(ident_);
        if (!held) break;
        const unsigned long others = held->attached > holders_ ? held->attached - holders_ : 0;
        const bool there = others > 0 && others > observing();
        if (take_announcements() || io_held(ident_) != held) continue;
        const bool came_and_went = *held != last_ && !observers_.contains(held->last);
        last_ = *held;
        there_ = there;
        return there_ || came_and_went;
    }
    return there_;
}

/// An attachment is counted by the system a moment before it can be seen, and a moment after. So a
/// process that has just announced itself has one at least, and so has one that is about to end.
unsigned long client_watch::observing() const {
    constexpr std::chrono::seconds arriving{1};
    const auto now = clock::now();
    unsigned long count = 0;
    for (const auto& [process, known] : observers_) {
        const unsigned long seen = io_reading_attachments(ident_, process);
        const bool moving = seen == 0 && !gone(process) &&
                            (now - known.announced < arriving || about_to_end(process));
        count += moving ? 1 : seen;
    }
    return count;
}

/// Takes one datagram off the queue, and says whether it announced somebody; nothing when there is
/// none. What is no announcement, or another user's, is dropped.
std::optional<bool> client_watch::take_announcement() {
    announcement got;
    iovec words{got.word, sizeof got.word};
    msghdr message{};
    message.msg_iov = &words;
    message.msg_iovlen = 1;
    message.msg_control = got.control;
    message.msg_controllen = sizeof got.control;
    const ssize_t length = recvmsg(line_, &message, MSG_DONTWAIT | MSG_CMSG_CLOEXEC);
    if (length < 0) return std::nullopt;
    const ucred who = sender(message);
    if (length != 1 || who.pid <= 0 || !is_trusted_user(who.uid)) return false;
    const bool observer = got.word[0] == static_cast<char>(io_access::read);
    const bool commander = got.word[0] == static_cast<char>(io_access::write);
    if (observer) observers_[who.pid] = {clock::now(), clock::now()};
    commander_came_ |= commander;
    return observer || commander;
}

/// Takes those that wait, a bounded number of them. Whether they announced anybody.
bool client_watch::take_announcements() {
    constexpr int most = 1000;
    bool anybody = false;
    for (int i = 0; line_ >= 0 && i < most; ++i) {
        const std::optional<bool> announced = take_announcement();
        if (!announced) break;
        anybody |= *announced;
    }
    return anybody;
}

void client_watch::forget_the_gone() {
    constexpr std::chrono::seconds kept{5};
    const auto now = clock::now();
    for (auto& [process, known] : observers_)
        if (!gone(process)) known.lived = now;
    std::erase_if(observers_, [&](const auto& each) { return now - each.second.lived > kept; });
}
