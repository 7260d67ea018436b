#include "ioshare/io_sessions.h"

#include <signal.h>
#include <sys/ipc.h>
#include <sys/shm.h>
#include <unistd.h>

#include <cerrno>
#include <ctime>
#include <utility>

#include "ioshare/io_clocks.h"
#include "ioshare/io_observer.h"

namespace {

bool alive(pid_t process) { return kill(process, 0) == 0 || errno == EPERM; }

bool may_be_a_session(int ident, const shmid_ds& status) {
    return !io_ident_refused(ident) && status.shm_segsz == io_segment_size &&
           status.shm_perm.uid == geteuid() && status.shm_nattch > 0 && alive(status.shm_cpid);
}

}  // namespace

std::optional<int> io_youngest_session() {
    // Of those made in one second the younger one has the greater identifier.
    std::optional<std::pair<std::time_t, int>> youngest;
    shm_info unused;
    const int last = shmctl(0, SHM_INFO, reinterpret_cast<shmid_ds*>(&unused));
    for (int slot = 0; slot <= last; ++slot) {
        shmid_ds status;
        const int ident = shmctl(slot, SHM_STAT, &status);
        if (ident < 0 || !may_be_a_session(ident, status)) continue;
        const std::pair born(status.shm_ctime, ident);
        if (youngest && born < *youngest) continue;
        const io_observer session(ident, io_access::read);
        if (!session.session_over()) youngest = born;
    }
    if (!youngest) return std::nullopt;
    return youngest->second;
}
