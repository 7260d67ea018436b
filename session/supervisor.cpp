#include "session/supervisor.h"

#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <sys/prctl.h>
#include <sys/shm.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <ctime>
#include <initializer_list>

#include "ioshare/io_clocks.h"
#include "session/control_folder.h"
#include "session/dead_lock_watch.h"
#include "session/end_signals.h"
#include "session/failure.h"
#include "session/system_errors.h"

namespace {

// For a supervisor that does not answer.
constexpr auto patience = std::chrono::seconds(2);

/// Removes the segments that a dead simulator made and had no time to mark. Those from before its
/// `start` are another's, which had the same id once.
void remove_segments_of(pid_t creator, std::time_t start) {
    shm_info unused;
    const int last = shmctl(0, SHM_INFO, reinterpret_cast<shmid_ds*>(&unused));
    for (int slot = 0; slot <= last; ++slot) {
        shmid_ds status;
        const int ident = shmctl(slot, SHM_STAT, &status);
        if (ident >= 0 && status.shm_cpid == creator && status.shm_ctime >= start &&
            status.shm_segsz == io_segment_size) {
            shmctl(ident, IPC_RMID, nullptr);
        }
    }
}

bool read_whole(int from, std::int32_t& value) {
    ssize_t got;
    while ((got = read(from, &value, sizeof value)) < 0 && errno == EINTR) {
    }
    return got == sizeof value;
}

/// Holds nothing of the simulator's but the pipe: whoever reads the simulator's output must see its
/// end.
void let_go_of_everything_but(int descriptor) {
    const int nowhere = open("/dev/null", O_RDWR);
    for (int stream = 0; stream <= 2; ++stream) dup2(nowhere, stream);
    dup2(descriptor, 3);
    close_range(4, ~0U, 0);
}

/// Returns when the simulator has sent something, or has ended. Looks after the lock meanwhile.
void await_simulator(int line, pid_t simulator, io_segment* segment, int ident) {
    constexpr int look_ms = 300;
    dead_lock_watch lock(simulator);
    pollfd wanted{line, POLLIN, 0};
    while (poll(&wanted, 1, look_ms) <= 0) {
        if (segment) lock.look(*segment, ident, std::chrono::steady_clock::now());
    }
}

[[noreturn]] void supervise(const std::string& program, int from_simulator, pid_t simulator,
                            std::time_t start) {
    prctl(PR_SET_NAME, (program.substr(0, 9) + "-garde").c_str());
    let_go_of_everything_but(from_simulator);
    constexpr int simulator_line = 3;

    io_segment* segment = nullptr;
    std::int32_t ident = 0;
    for (;;) {
        await_simulator(simulator_line, simulator, segment, ident);
        if (!read_whole(simulator_line, ident)) break;
        void* const address = shmat(ident, nullptr, 0);
        if (address == reinterpret_cast<void*>(-1)) break;  // no answer: it does not hold it
        segment = static_cast<io_segment*>(address);
        if (write(simulator_line, &ident, sizeof ident) != sizeof ident) break;
    }
    if (segment) {
        io_end_session(*segment);
        remove_socket_of(simulator, ident);
    }
    remove_segments_of(simulator, start);
    _exit(0);
}

void ignore_the_terminal() {
    for (const int number : {SIGINT, SIGTERM, SIGHUP, SIGQUIT, SIGPIPE}) signal(number, SIG_IGN);
}

}  // namespace

supervisor::supervisor(const std::string& program) {
    int ends[2];
    const pid_t simulator = getpid();
    const std::time_t start = std::time(nullptr);
    // No signal reaches the child before it ignores those that end the simulator.
    sigset_t all, before;
    sigfillset(&all);
    sigprocmask(SIG_BLOCK, &all, &before);
    if (socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends) != 0 || (pid_ = fork()) < 0) {
        const int error = errno;
        sigprocmask(SIG_SETMASK, &before, nullptr);
        throw refusal("processus de garde: " + system_error_words(error));
    }
    if (pid_ == 0) {
        setpgid(0, 0);
        ignore_the_terminal();
        sigprocmask(SIG_SETMASK, &before, nullptr);
        close(ends[0]);
        supervise(program, ends[1], simulator, start);
    }
    setpgid(pid_, pid_);
    sigprocmask(SIG_SETMASK, &before, nullptr);
    close(ends[1]);
    pipe_ = ends[0];
}

supervisor::~supervisor() {
    close(pipe_);
    const auto limit = std::chrono::steady_clock::now() + patience;
    while (!gone()) {
        // One that somebody has stopped is not waited for.
        if (std::chrono::steady_clock::now() > limit) kill(pid_, SIGKILL);
        usleep(500);
    }
}

bool supervisor::watch(std::int32_t ident) {
    if (send(pipe_, &ident, sizeof ident, MSG_NOSIGNAL) != sizeof ident) return false;
    pollfd answer{pipe_, POLLIN, 0};
    for (const auto limit = std::chrono::steady_clock::now() + patience;
         std::chrono::steady_clock::now() < limit && !end_signals::due();) {
        constexpr int look_ms = 100;
        if (poll(&answer, 1, look_ms) <= 0) continue;
        std::int32_t held = 0;
        return read_whole(pipe_, held) && held == ident;
    }
    return false;
}

bool supervisor::gone() {
    if (pid_ > 0 && waitpid(pid_, nullptr, WNOHANG) == pid_) pid_ = 0;
    return pid_ == 0;
}
