#include "tests/support/programs.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <ctime>
#include <iostream>
#include <locale>
#include <sstream>
#include <thread>

namespace {

/// When this program began, as the system dates segments.
const std::time_t begun_s = std::time(nullptr);

/// Words read as the system wrote them: without the
/// marks that a locale puts between a number's digits.
std::istringstream plain(const std::string& text) {
    std::istringstream words(text);
    words.imbue(std::locale::classic());
    return words;
}

/// Marks every program that this test process starts,
/// and through the environment all that those start.
const std::string& mark() {
    static const std::string text = "QUORIN_TEST_MARK=" + std::to_string(getpid());
    return text;
}

/// Ids of every marked process ever seen: a segment names its creator, who may be dead by now.
std::set<pid_t>& started() {
    static std::set<pid_t> ids = {getpid()};
    return ids;
}

int exit_status(int wait_status) {
    return WIFEXITED(wait_status) ? WEXITSTATUS(wait_status) : 128 + WTERMSIG(wait_status);
}

void redirect(const std::string& path, int descriptor) {
    const int file = open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600);
    if (file < 0 || dup2(file, descriptor) < 0) _exit(127);
    close(file);
}

[[noreturn]] void become(const std::vector<std::string>& command,
                         const std::vector<std::string>& environment) {
    putenv(const_cast<char*>(mark().c_str()));
    for (const std::string& each : environment) putenv(const_cast<char*>(each.c_str()));
    std::vector<char*> words;
    for (const std::string& word : command) words.push_back(const_cast<char*>(word.c_str()));
    words.push_back(nullptr);
    execvp(words[0], words.data());
    _exit(127);
}

}  // namespace

bool wait_until(const std::function<bool()>& done, seconds limit) {
    using clock = std::chrono::steady_clock;
    const seconds longest_pause(0.01);
    seconds waited(0);
    for (clock::time_point from = clock::now(); !done(); from = clock::now()) {
        waited += clock::now() - from;
        if (waited > limit) return false;
        const clock::time_point paused = clock::now();
        std::this_thread::sleep_for(std::chrono::milliseconds(5));
        waited += std::min<seconds>(clock::now() - paused, longest_pause);
    }
    return true;
}

double processor_seconds(pid_t pid) {
    const std::string stat = bytes_of("/proc/" + std::to_string(pid) + "/stat");
    std::istringstream rest = plain(stat.substr(stat.rfind(')') + 1));
    std::string skipped;
    for (int i = 0; i < 11; ++i) rest >> skipped;
    double user = 0, system = 0;
    rest >> user >> system;
    return (user + system) / static_cast<double>(sysconf(_SC_CLK_TCK));
}

program::program(const std::vector<std::string>& command,
                 const std::vector<std::string>& environment) {
    mark();  // this process's, not the child's
    pid_ = fork();
    if (pid_ == 0) {
        redirect(folder_ / "out", STDOUT_FILENO);
        redirect(folder_ / "err", STDERR_FILENO);
        become(command, environment);
    }
    started().insert(pid_);
}

program::~program() {
    if (running()) {
        signal(SIGTERM);
        if (!wait(seconds(5))) signal(SIGKILL);
        wait();
    }
}

bool program::running() {
    if (status_ || pid_ <= 0) return false;
    int status;
    if (waitpid(pid_, &status, WNOHANG) == pid_) status_ = exit_status(status);
    return !status_;
}

void program::signal(int number) const { kill(pid_, number); }

std::optional<int> program::wait(seconds limit) {
    wait_until([this] { return !running(); }, limit);
    return status_;
}

std::string program::out() const { return bytes_of(folder_ / "out"); }
std::string program::err() const { return bytes_of(folder_ / "err"); }

outcome run_program(const std::vector<std::string>& command,
                    const std::vector<std::string>& environment, seconds limit) {
    program run(command, environment);
    const std::optional<int> status = run.wait(limit);
    if (!status) run.signal(SIGKILL);
    return {status.value_or(-1), run.out(), run.err()};
}

outcome run_in_child(const std::function<void()>& body) {
    const temporary_folder folder;
    std::cout.flush();
    std::cerr.flush();
    const pid_t pid = fork();
    if (pid == 0) {
        redirect(folder / "out", STDOUT_FILENO);
        redirect(folder / "err", STDERR_FILENO);
        body();
        std::cout.flush();
        std::cerr.flush();
        _exit(0);
    }
    int status = 0;
    waitpid(pid, &status, 0);
    return {exit_status(status), bytes_of(folder / "out"), bytes_of(folder / "err")};
}

std::set<pid_t> leftovers::processes() {
    std::set<pid_t> found;
    for (const std::filesystem::directory_entry& entry :
         std::filesystem::directory_iterator("/proc")) {
        const std::string name = entry.path().filename();
        if (name.find_first_not_of("0123456789") != std::string::npos) continue;
        // A zombie's environment is empty, so that only the living are found.
        const std::string environment = '\0' + bytes_of(entry.path() / "environ");
        if (environment.find('\0' + mark() + '\0') == std::string::npos) continue;
        found.insert(std::stoi(name));
        started().insert(std::stoi(name));
    }
    return found;
}

bool leftovers::no_process() {
    return !wait_until([] { return !processes().empty(); }, seconds(0.02));
}

// A segment that is older than this program is nobody's here, though a process of ours may by now
// have the number that its maker had.
std::set<int> leftovers::segments() {
    processes();
    std::set<int> found;
    std::istringstream table(bytes_of("/proc/sysvipc/shm"));
    std::string line;
    std::getline(table, line);
    while (std::getline(table, line)) {
        std::istringstream fields = plain(line);
        long key = 0, id = 0, size = 0, creator = 0, skipped = 0, changed_s = 0;
        std::string mode;
        fields >> key >> id >> mode >> size >> creator;
        for (int i = 0; i < 8; ++i) fields >> skipped;  // who used it last, users, owners, times
        fields >> changed_s;
        if (changed_s >= begun_s && started().contains(static_cast<pid_t>(creator)))
            found.insert(static_cast<int>(id));
    }
    return found;
}

leaves_nothing::leaves_nothing()
    : processes_(leftovers::processes()), segments_(leftovers::segments()) {}

leaves_nothing::~leaves_nothing() {
    // A process that was just asked to end gets the time to do so.
    wait_until(
        [this] {
            return leftovers::processes() == processes_ && leftovers::segments() == segments_;
        },
        seconds(5));
    EXPECT_EQ(leftovers::processes(), processes_) << "processes left behind";
    EXPECT_EQ(leftovers::segments(), segments_) << "segments left behind";
}

pid_t child_named(pid_t parent, const std::string& name) {
    const std::string folder =
        "/proc/" + std::to_string(parent) + "/task/" + std::to_string(parent) + "/children";
    std::istringstream children = plain(bytes_of(folder));
    for (pid_t child; children >> child;) {
        if (bytes_of("/proc/" + std::to_string(child) + "/comm") == name + "\n") return child;
    }
    return 0;
}
