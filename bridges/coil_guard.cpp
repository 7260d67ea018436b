#include "bridges/coil_guard.h"

#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <sys/prctl.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <string>

namespace {

/// Holds nothing of its maker's but the line and the error stream: whoever reads what its maker
/// prints, or talks to it, must see its end.
void let_go_of_everything_but(int line) {
    const int nowhere = open("/dev/null", O_RDWR);
    dup2(nowhere, STDIN_FILENO);
    dup2(nowhere, STDOUT_FILENO);
    dup2(line, 3);
    close_range(4, ~0U, 0);
}

[[noreturn]] void guard(io_observer& link, int line, const std::string& word) {
    let_go_of_everything_but(line);
    constexpr int own_line = 3;
    char farewell;
    ssize_t got;
    while ((got = read(own_line, &farewell, 1)) < 0 && errno == EINTR) {
    }
    if (got == 1) _exit(0);
    for (int i = 0; i < link.outputs(); ++i) link.write(i, 0);
    // A pipe or terminal that stands still is not waited for.
    pollfd errors{STDERR_FILENO, POLLOUT, 0};
    if (poll(&errors, 1, 0) == 1 && (errors.revents & POLLOUT)) {
        [[maybe_unused]] const ssize_t said = write(STDERR_FILENO, word.data(), word.size());
    }
    _exit(0);
}

}  // namespace

coil_guard::coil_guard(io_observer& link, const char* name, const char* word) {
    int ends[2];
    if (socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends) != 0) return;
    // It begins with every signal blocked, and stays so.
    sigset_t all, before;
    sigfillset(&all);
    sigprocmask(SIG_BLOCK, &all, &before);
    pid_ = fork();
    if (pid_ == 0) {
        setpgid(0, 0);
        prctl(PR_SET_NAME, name);
        close(ends[0]);
        guard(link, ends[1], std::string(word) + "\n");
    }
    setpgid(pid_, pid_);
    sigprocmask(SIG_SETMASK, &before, nullptr);
    close(ends[1]);
    line_ = ends[0];
}

coil_guard::~coil_guard() {
    if (line_ >= 0) {
        [[maybe_unused]] const ssize_t sent = send(line_, "", 1, MSG_NOSIGNAL);
        close(line_);
    }
    if (pid_ <= 0) return;
    // One that somebody has stopped is not waited for.
    constexpr int tries = 2000;
    for (int i = 0; waitpid(pid_, nullptr, WNOHANG) == 0; ++i) {
        if (i == tries) kill(pid_, SIGKILL);
        usleep(500);
    }
}
