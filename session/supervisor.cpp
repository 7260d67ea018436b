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
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <initializer_list>

#include "ioshare/io_clocks.h"
#include "session/served_segment.h"

namespace {

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

/// Frees a lock whose holder is dead. A foreign client may be killed while it holds the lock, and
/// the simulator then waits for it: two looks in a row find the lock taken, no client attached and
/// nothing published in between.
class dead_lock_watch {
public:
    void look(io_segment& segment, int ident) {
        const std::int64_t clock = io_read_clock(segment.inputs_clock);
        const bool taken = taken_by_no_client(segment, ident);
        if (taken && taken_before_ && clock == clock_before_) sem_post(&segment.lock);
        taken_before_ = taken;
        clock_before_ = clock;
    }

private:
    static bool taken_by_no_client(io_segment& segment, int ident) {
        int count = 1;
        shmid_ds status;
        return sem_getvalue(&segment.lock, &count) == 0 && count == 0 &&
               shmctl(ident, IPC_STAT, &status) == 0 && status.shm_nattch <= station_holders;
    }

    bool taken_before_ = false;
    std::int64_t clock_before_ = 0;
};

/// Returns when the simulator has sent something, or has ended. Looks after the lock meanwhile.
void await_simulator(int line, io_segment* segment, int ident) {
    constexpr int look_ms = 300;
    dead_lock_watch lock;
    pollfd wanted{line, POLLIN, 0};
    while (poll(&wanted, 1, look_ms) <= 0) {
        if (segment) lock.look(*segment, ident);
    }
}

[[noreturn]] void supervise(int from_simulator, pid_t simulator, std::time_t start) {
    prctl(PR_SET_NAME, "zk4sim-garde");
    let_go_of_everything_but(from_simulator);
    constexpr int simulator_line = 3;

    io_segment* segment = nullptr;
    std::int32_t ident = 0;
    for (;;) {
        await_simulator(simulator_line, segment, ident);
        if (!read_whole(simulator_line, ident)) break;
        void* const address = shmat(ident, nullptr, 0);
        if (address == reinterpret_cast<void*>(-1)) break;  // no answer: it does not hold it
        segment = static_cast<io_segment*>(address);
        if (write(simulator_line, &ident, sizeof ident) != sizeof ident) break;
    }
    if (segment) io_end_session(*segment);
    remove_segments_of(simulator, start);
    _exit(0);
}

void ignore_the_terminal() {
    for (const int number : {SIGINT, SIGTERM, SIGHUP, SIGQUIT, SIGPIPE}) signal(number, SIG_IGN);
}

}  // namespace

supervisor::supervisor() {
    int ends[2];
    const pid_t simulator = getpid();
    const std::time_t start = std::time(nullptr);
    // No signal reaches the child before it ignores those that end the simulator.
    sigset_t all, before;
    sigfillset(&all);
    sigprocmask(SIG_BLOCK, &all, &before);
    if (socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends) != 0 || (pid_ = fork()) < 0) {
        std::perror("zk4sim: fork");
        std::exit(1);
    }
    if (pid_ == 0) {
        ignore_the_terminal();
        sigprocmask(SIG_SETMASK, &before, nullptr);
        close(ends[0]);
        supervise(ends[1], simulator, start);
    }
    sigprocmask(SIG_SETMASK, &before, nullptr);
    close(ends[1]);
    pipe_ = ends[0];
}

supervisor::~supervisor() {
    close(pipe_);
    if (pid_ > 0) waitpid(pid_, nullptr, 0);
}

bool supervisor::watch(std::int32_t ident) {
    std::int32_t answer = 0;
    return send(pipe_, &ident, sizeof ident, MSG_NOSIGNAL) == sizeof ident &&
           read_whole(pipe_, answer) && answer == ident;
}

bool supervisor::gone() {
    if (pid_ > 0 && waitpid(pid_, nullptr, WNOHANG) == pid_) pid_ = 0;
    return pid_ == 0;
}
