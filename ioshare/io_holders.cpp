#include "ioshare/io_holders.h"

#include <sys/ipc.h>
#include <sys/shm.h>

#include <cstdio>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <string>

#include "ioshare/io_segment.h"

namespace {

namespace files = std::filesystem;

/// Whether a line of /proc/<pid>/maps is a mapping of segment `ident` for reading only: such as
/// "7f1c...-7f1c... r--s 00000000 00:01 32769    /SYSV00000000 (deleted)". The segment's identifier
/// stands as the inode.
bool maps_for_reading(const std::string& line, int ident) {
    char permissions[5] = "";
    long long inode = -1;
    int end = 0;
    if (std::sscanf(line.c_str(), "%*s %4s %*s %*s %lld %n", permissions, &inode, &end) < 2)
        return false;
    return inode == ident && permissions[0] == 'r' && permissions[1] == '-' &&
           line.compare(static_cast<std::size_t>(end), 5, "/SYSV") == 0;
}

}  // namespace

std::optional<io_holding> io_held(int ident) {
    shmid_ds status;
    if (shmctl(ident, IPC_STAT, &status) != 0) return std::nullopt;
    return io_holding{status.shm_nattch, status.shm_dtime, status.shm_lpid};
}

unsigned long io_reading_attachments(int ident, pid_t pid) {
    std::ifstream maps("/proc/" + std::to_string(pid) + "/maps");
    unsigned long count = 0;
    for (std::string line; std::getline(maps, line);) count += maps_for_reading(line, ident);
    return count;
}

unsigned long io_all_reading_attachments(int ident) {
    unsigned long count = 0;
    std::error_code error;
    for (files::directory_iterator entry("/proc", error), end; !error && entry != end;
         entry.increment(error)) {
        const std::string name = entry->path().filename();
        if (name.find_first_not_of("0123456789") == std::string::npos)
            count += io_reading_attachments(ident, static_cast<pid_t>(std::stol(name)));
    }
    return count;
}
