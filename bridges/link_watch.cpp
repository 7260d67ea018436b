#include "bridges/link_watch.h"

#include <poll.h>
#include <sys/shm.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <limits>

#include "ioshare/io_clocks.h"

// A maker of another world of processes has the number 0, and is taken to live.
link_watch::link_watch(int ident, const io_observer& link, clock::time_point now)
    : link_(link), publication_(link.publication()), published_(now) {
    shmid_ds status;
    if (shmctl(ident, IPC_STAT, &status) == 0 && status.shm_cpid > 0) {
        maker_ = static_cast<int>(syscall(SYS_pidfd_open, status.shm_cpid, 0));
        maker_known_gone_ = maker_ < 0 && errno == ESRCH;
    }
    look(now);
}

link_watch::~link_watch() {
    if (maker_ >= 0) close(maker_);
}

bool link_watch::maker_gone() const {
    pollfd end{maker_, POLLIN, 0};
    return maker_known_gone_ || (maker_ >= 0 && poll(&end, 1, 0) == 1);
}

void link_watch::look(clock::time_point now) {
    if (ended_) return;
    if (io_over(link_.publication())) {
        ended_ = now;
        state_ = link_state::ended;
        return;
    }
    if (link_.publication() != publication_) published_ = now;
    publication_ = link_.publication();
    // An end that was announced before the maker went may have come after the look.
    if (maker_gone() && !link_.session_over()) state_ = link_state::lost;
}

std::uint16_t link_watch::age_tenths(clock::time_point now) const {
    using tenths = std::chrono::duration<std::int64_t, std::deci>;
    constexpr std::int64_t most = std::numeric_limits<std::uint16_t>::max();
    const std::int64_t age = std::chrono::duration_cast<tenths>(now - published_).count();
    return static_cast<std::uint16_t>(std::clamp<std::int64_t>(age, 0, most));
}
