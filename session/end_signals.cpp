#include "session/end_signals.h"

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <cerrno>
#include <csignal>

#include "ioshare/io_clocks.h"
#include "session/system_errors.h"

namespace {

// The handler reads and writes these: each is lock-free.
std::atomic<bool> asked_to_end = false, child_ended = false, woken = false;
std::atomic<io_segment*> served = nullptr;
std::array<std::atomic<pid_t>, 2> children = {};
int wake_up[2] = {-1, -1};
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
    if (end_signals::due() && segment) io_end_session(*segment);
}

/// A pipe that is full already wakes whoever waits.
void wake() {
    woken = true;
    [[maybe_unused]] const ssize_t written = write(wake_up[1], "", 1);
}

void note(int number) {
    const int error = errno;
    if (number != SIGCHLD)
        asked_to_end = true;
    else if (std::ranges::any_of(children, is_over))
        child_ended = true;
    announce_when_due();
    wake();
    errno = error;
}

}  // namespace

void end_signals::watch() {
    or_refuse(pipe2(wake_up, O_CLOEXEC | O_NONBLOCK), "session");
    struct sigaction action {};
    action.sa_handler = note;
    action.sa_flags = SA_NOCLDSTOP;
    sigset_t numbers;
    sigemptyset(&numbers);
    for (const int number : {SIGINT, SIGTERM, SIGCHLD}) {
        sigaction(number, &action, nullptr);
        sigaddset(&numbers, number);
    }
    sigprocmask(SIG_UNBLOCK, &numbers, nullptr);  // Whoever started it may have blocked them.
    struct sigaction hangup {};
    sigaction(SIGHUP, nullptr, &hangup);
    if (hangup.sa_handler != SIG_IGN) sigaction(SIGHUP, &action, nullptr);
    std::signal(SIGPIPE, SIG_IGN);
}

void end_signals::announce_on(io_segment& segment) {
    served = &segment;
    announce_when_due();
}

void end_signals::depend_on(pid_t child) {
    (children[0] == 0 ? children[0] : children[1]) = child;
    if (!is_over(child)) return;  // It may have ended before it was known here.
    child_ended = true;
    announce_when_due();
    wake();
}

void end_signals::ask() {
    asked_to_end = true;
    announce_when_due();
    wake();
}

bool end_signals::asked() { return asked_to_end; }

bool end_signals::due() { return asked_to_end || child_ended; }

int end_signals::descriptor() { return wake_up[0]; }

void end_signals::settle() {
    if (!woken.exchange(false)) return;
    char bytes[64];
    while (read(wake_up[0], bytes, sizeof bytes) > 0) {
    }
}
