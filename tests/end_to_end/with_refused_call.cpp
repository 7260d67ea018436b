// Runs a command for which the system refuses one call, as a machine without memory does:
//     with_refused_call shmget|shmat COMMAND...
// Status 77 on a system that lets nobody filter calls.
#include <linux/filter.h>
#include <linux/seccomp.h>
#include <sys/prctl.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <cerrno>
#include <cstddef>
#include <cstdio>
#include <cstring>

namespace {

constexpr int impossible = 77;

#if defined(SYS_shmget) && defined(SYS_shmat)
int number_of(const char* call) {
    return std::strcmp(call, "shmget") == 0  ? SYS_shmget
           : std::strcmp(call, "shmat") == 0 ? SYS_shmat
                                             : -1;
}
#else
// One call for all that processes share.
int number_of(const char*) { return -1; }
#endif

/// From now on, and for whatever this process becomes.
bool refuse(int call) {
    sock_filter lines[] = {
        BPF_STMT(BPF_LD | BPF_W | BPF_ABS, offsetof(seccomp_data, nr)),
        BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, static_cast<unsigned>(call), 0, 1),
        BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ERRNO | ENOMEM),
        BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ALLOW),
    };
    sock_fprog filter = {sizeof lines / sizeof *lines, lines};
    return prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) == 0 &&
           prctl(PR_SET_SECCOMP, SECCOMP_MODE_FILTER, &filter) == 0;
}

}  // namespace

int main(int argc, char** argv) {
    if (argc < 3) return 2;
    const int call = number_of(argv[1]);
    if (call < 0 || !refuse(call)) return impossible;
    execvp(argv[2], argv + 2);
    std::perror(argv[2]);
    return 127;
}
