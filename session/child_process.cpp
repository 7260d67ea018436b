#include "session/child_process.h"

#include <fcntl.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <initializer_list>

#include "ioshare/io_printable.h"
#include "session/failure.h"
#include "session/system_errors.h"

namespace {

std::string default_panel() {
    std::error_code error;
    const std::filesystem::path self = std::filesystem::read_symlink(own_program, error);
    const std::filesystem::path beside = self.parent_path() / "quorin";
    return !error && access(beside.c_str(), X_OK) == 0 ? beside.string() : "quorin";
}

/// A process group in the background that reads from its terminal is stopped, and a session would
/// wait for it for ever: it finds the end of its input instead.
void leave_the_terminals_input() {
    if (!isatty(STDIN_FILENO)) return;
    const int nowhere = open("/dev/null", O_RDONLY | O_CLOEXEC);
    dup2(nowhere, STDIN_FILENO);
}

/// In the child. Returns only when the program cannot be started; errno says why.
void become(const child_command& command, const std::vector<char*>& words) {
    if (command.own_group) {
        setpgid(0, 0);
        leave_the_terminals_input();
    }
    dup2(STDERR_FILENO, STDOUT_FILENO);
    signal(SIGPIPE, SIG_DFL);  // Those that are caught go back to their defaults by themselves.
    if (!command.environment.empty()) putenv(const_cast<char*>(command.environment.c_str()));
    execvp(words[0], words.data());
}

std::vector<char*> as_arguments(const std::vector<std::string>& words) {
    std::vector<char*> arguments;
    for (const std::string& word : words) arguments.push_back(const_cast<char*>(word.c_str()));
    arguments.push_back(nullptr);
    return arguments;
}

/// What the child reports through the pipe: errno when it could not start, nothing when it could.
int reported_error(int from) {
    int why = 0;
    ssize_t got;
    while ((got = read(from, &why, sizeof why)) < 0 && errno == EINTR) {
    }
    return got == sizeof why ? why : 0;
}

}  // namespace

child_command panel_command(const std::string& program, int ident) {
    return {{program.empty() ? default_panel() : program, "-automemlink", std::to_string(ident)}};
}

child_command shell_command(const std::string& command, int ident) {
    return {{"sh", "-c", command}, "QUORIN_IDENT=" + std::to_string(ident), true};
}

child_process::child_process(const std::string& what, const child_command& command) {
    const std::vector<char*> words = as_arguments(command.words);
    const std::string& program = command.words[0];
    const std::string start_of_line =
        what + (program == own_program ? "" : " " + io_printable(program)) + ": ";
    int report[2];  // Closed by a start that succeeds; else it brings errno.
    if (pipe2(report, O_CLOEXEC) != 0 || (pid_ = fork()) < 0)
        throw refusal(start_of_line + system_error_words(errno));
    if (pid_ == 0) {
        become(command, words);
        const int why = errno;
        _exit(write(report[1], &why, sizeof why) == sizeof why ? 127 : 126);
    }
    if (command.own_group) setpgid(pid_, pid_);
    close(report[1]);
    const int why = reported_error(report[0]);
    close(report[0]);
    if (why == 0) return;
    waitpid(pid_, nullptr, 0);
    throw refusal(start_of_line + system_error_words(why));
}

void child_process::ask_to_end() const {
    kill(-pid_, SIGTERM);
    kill(-pid_, SIGCONT);
}

void child_process::end_by_force() {
    kill(-pid_, SIGKILL);
    while (!ended()) usleep(1000);
}

bool child_process::ended() {
    if (!ended_ && waitpid(pid_, &wait_status_, WNOHANG) == pid_) ended_ = true;
    return ended_;
}

bool child_process::ended_by_itself() const { return !WIFSIGNALED(wait_status_); }

int child_process::status() const {
    return ended_by_itself() ? WEXITSTATUS(wait_status_) : 128 + WTERMSIG(wait_status_);
}

std::string child_process::bad_end() const {
    if (!ended_by_itself()) return "signal " + std::to_string(WTERMSIG(wait_status_));
    if (status() != 0) return "statut " + std::to_string(status());
    return "";
}
