#include "session/session_end.h"

#include <sys/wait.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <cerrno>
#include <csignal>

#include "ioshare/io_clocks.h"

namespace {

// The handler reads and writes these: each is lock-free.
std::atomic<bool> asked_to_end = false, child_ended = false;
std::atomic<io_segment*> served = nullptr;
std::array<std::atomic<pid_t>, 2> children = {};
static_assert(std::atomic<pid_t>::is_always_lock_free && std::atomic<void*>::is_always_lock_free);

/// Leaves the child's status to whoever waits for it.
bool is_over(pid_t child) {
    siginfo_t end{};
    return child > 0 &&
           waitid(P_PID, static_cast<id_t>(child), &end, WEXITED | WNOHANG | WNOWAIT) == 0 &&
           end.si_pid == child;
}

void announce_when_due() {
    io_segment* const segment = served;
    if (session_end::due() && segment) io_end_session(*segment);
}

void note(int number) {
    const int error = errno;
    if (number != SIGCHLD)
        asked_to_end = true;
    else if (std::ranges::any_of(children, is_over))
        child_ended = true;
    announce_when_due();
    errno = error;
}

}  // namespace

void session_end::watch() {
    struct sigaction action {};
    action.sa_handler = note;
    action.sa_flags = SA_NOCLDSTOP;
    for (const int number : {SIGINT, SIGTERM, SIGCHLD}) sigaction(number, &action, nullptr);
    struct sigaction hangup {};
    sigaction(SIGHUP, nullptr, &hangup);
    if (hangup.sa_handler != SIG_IGN) sigaction(SIGHUP, &action, nullptr);
    std::signal(SIGPIPE, SIG_IGN);
}

void session_end::announce_on(io_segment& segment) {
    served = &segment;
    announce_when_due();
}

void session_end::depend_on(pid_t child) {
    (children[0] == 0 ? children[0] : children[1]) = child;
    if (!is_over(child)) return;  // It may have ended before it was known here.
    child_ended = true;
    announce_when_due();
}

bool session_end::asked() { return asked_to_end; }

bool session_end::due() { return asked_to_end || child_ended; }
