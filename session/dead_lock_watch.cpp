#include "session/dead_lock_watch.h"

#include <sys/shm.h>

#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>

#include "ioshare/io_lock.h"
#include "session/served_segment.h"

namespace {

namespace files = std::filesystem;

constexpr auto alone_limit = std::chrono::milliseconds(500);
constexpr auto attended_limit = std::chrono::seconds(2);

/// The letter that the system gives its state; 'T' and 't' are stopped ones.
char process_state(pid_t pid) {
    std::ifstream in("/proc/" + std::to_string(pid) + "/stat");
    std::string stat;
    std::getline(in, stat);
    const std::size_t end = stat.rfind(") ");
    return end == std::string::npos || end + 2 >= stat.size() ? '?' : stat[end + 2];
}

bool is_stopped(pid_t pid) {
    const char state = process_state(pid);
    return state == 'T' || state == 't';
}

bool is_taken(io_segment& segment) {
    int count = 1;
    return sem_getvalue(&segment.lock, &count) == 0 && count == 0;
}

/// A line of /proc/PID/maps: "FIRST-LAST rw-s OFFSET DEVICE INODE /SYSV00000000 (deleted)", where
/// the inode of a segment is its identifier.
bool maps_for_writing(const std::string& line, int ident) {
    if (line.find("/SYSV") == std::string::npos) return false;
    std::istringstream fields(line);
    std::string range, rights, offset, device, inode;
    fields >> range >> rights >> offset >> device >> inode;
    return rights.size() > 1 && rights[1] == 'w' && inode == std::to_string(ident);
}

/// Whether only the station's own processes could hold the lock. Mappings that could not be seen
/// count as somebody's.
bool nobody_else(int ident) {
    shmid_ds status;
    if (shmctl(ident, IPC_STAT, &status) != 0) return false;
    return status.shm_nattch <= station_holders || writable_mappings(ident) <= station_holders;
}

}  // namespace

unsigned long writable_mappings(int ident) {
    unsigned long count = 0;
    std::error_code error;
    for (const files::directory_entry& each : files::directory_iterator("/proc", error)) {
        const std::string name = each.path().filename();
        if (name.find_first_not_of("0123456789") != std::string::npos) continue;
        std::ifstream maps(each.path() / "maps");
        for (std::string line; std::getline(maps, line);) count += maps_for_writing(line, ident);
    }
    return count;
}

void dead_lock_watch::look(io_segment& segment, int ident, moment now) {
    const std::int64_t clock = io_read_clock(segment.inputs_clock);
    const bool moved = clock != clock_;
    clock_ = clock;
    if (!is_taken(segment) || moved || is_stopped(simulator_)) {
        taken_since_.reset();
        return;
    }
    if (!taken_since_) taken_since_ = now;
    const auto taken_for = now - *taken_since_;
    if (taken_for < alone_limit || (taken_for < attended_limit && !nobody_else(ident))) return;
    sem_post(&segment.lock);
    taken_since_.reset();
}
