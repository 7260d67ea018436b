#include "session/panel_process.h"

#include <fcntl.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <filesystem>

namespace {

std::string default_panel() {
    std::error_code error;
    const std::filesystem::path self = std::filesystem::read_symlink("/proc/self/exe", error);
    const std::filesystem::path beside = self.parent_path() / "quorin";
    return !error && access(beside.c_str(), X_OK) == 0 ? beside.string() : "quorin";
}

/// In the child. Returns only when the program cannot be started; errno says why.
void become(const std::string& program, const std::string& ident) {
    dup2(STDERR_FILENO, STDOUT_FILENO);
    signal(SIGPIPE, SIG_DFL);  // Signals that are caught go back to their defaults by themselves.
    execlp(program.c_str(), program.c_str(), "-automemlink", ident.c_str(),
           static_cast<char*>(nullptr));
}

}  // namespace

panel_process::panel_process(const std::string& program, int ident) {
    const std::string path = program.empty() ? default_panel() : program;
    const std::string number = std::to_string(ident);
    int report[2];  // Closed by a start that succeeds; else it brings errno.
    if (pipe2(report, O_CLOEXEC) != 0 || (pid_ = fork()) < 0) {
        problem_ = std::strerror(errno);
        ended_ = true;
        return;
    }
    if (pid_ == 0) {
        become(path, number);
        const int why = errno;
        _exit(write(report[1], &why, sizeof why) == sizeof why ? 127 : 126);
    }
    close(report[1]);
    int why = 0;
    ssize_t got;
    while ((got = read(report[0], &why, sizeof why)) < 0 && errno == EINTR) {
    }
    close(report[0]);
    if (got != sizeof why) return;
    waitpid(pid_, nullptr, 0);
    ended_ = true;
    problem_ = "panneau " + path + ": " + std::strerror(why);
}

bool panel_process::ended() {
    if (!ended_ && waitpid(pid_, &wait_status_, WNOHANG) == pid_) ended_ = true;
    return ended_;
}

std::string panel_process::bad_end() const {
    if (WIFSIGNALED(wait_status_)) return "signal " + std::to_string(WTERMSIG(wait_status_));
    if (WEXITSTATUS(wait_status_) != 0)
        return "statut " + std::to_string(WEXITSTATUS(wait_status_));
    return "";
}
