// Runs a command for which the system refuses one call, as a machine without memory does, or ends
// the process that makes it, as kill -9 at that moment does:
//     with_refused_call shmget|shmat|fsync COMMAND...
// Status 77 on a system that lets nobody filter calls.
#include <linux/filter.h>
#include <linux/seccomp.h>
#include <sys/prctl.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstddef>
#include <cstdio>
#include <iterator>
#include <string_view>

namespace {

constexpr int impossible = 77;

struct call_row {
    std::string_view name;
    unsigned number, instead;
};

constexpr unsigned unknown = ~0u;
#ifdef SYS_ipc  // where all that processes share is one call
constexpr unsigned making = unknown, attaching = unknown;
#else
constexpr unsigned making = SYS_shmget, attaching = SYS_shmat;
#endif

constexpr call_row calls[] = {
    {"shmget", making, SECCOMP_RET_ERRNO | ENOMEM},
    {"shmat", attaching, SECCOMP_RET_ERRNO | ENOMEM},
    {"fsync", SYS_fsync, SECCOMP_RET_KILL_PROCESS},
};

/// From now on, and for whatever this process becomes.
bool refuse(const call_row& call) {
    sock_filter lines[] = {
        BPF_STMT(BPF_LD | BPF_W | BPF_ABS, offsetof(seccomp_data, nr)),
        BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, call.number, 0, 1),
        BPF_STMT(BPF_RET | BPF_K, call.instead),
        BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ALLOW),
    };
    sock_fprog filter = {sizeof lines / sizeof *lines, lines};
    return prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) == 0 &&
           prctl(PR_SET_SECCOMP, SECCOMP_MODE_FILTER, &filter) == 0;
}

}  // namespace

int main(int argc, char** argv) {
    if (argc < 3) return 2;
    const call_row* const call =
        std::ranges::find(calls, std::string_view(argv[1]), &call_row::name);
    if (call == std::end(calls)) return 2;
    if (call->number == unknown || !refuse(*call)) return impossible;
    execvp(argv[2], argv + 2);
    std::perror(argv[2]);
    return 127;
}
