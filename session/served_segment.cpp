#include "session/served_segment.h"

#include <sys/ipc.h>
#include <sys/shm.h>

namespace {

IOsharemem_server make_one(const name_list& inputs, const name_list& outputs) {
    IOsharemem_server server(inputs, outputs);
    shmctl(server.ident, IPC_RMID, nullptr);
    return server;
}

}  // namespace

IOsharemem_server make_station_server(const name_list& inputs, const name_list& outputs) {
    const IOsharemem_server first = make_one(inputs, outputs);
    if (first.ident != 0) return first;
    const IOsharemem_server second = make_one(inputs, outputs);
    shmdt(first.segment);
    return second;
}

client_watch::client_watch(int ident, unsigned long holders)
    : ident_(ident), holders_(holders), last_seen_(std::chrono::steady_clock::now()) {}

double client_watch::seconds_alone() {
    const auto now = std::chrono::steady_clock::now();
    shmid_ds status;
    if (shmctl(ident_, IPC_STAT, &status) == 0) {
        // A client may come and go between two looks: its leaving is dated to the second, and the
        // last process to attach or detach has its id kept.
        const std::pair leaving(status.shm_dtime, status.shm_lpid);
        const bool came_and_went = leaving != last_leaving_;
        last_leaving_ = leaving;
        if (status.shm_nattch > holders_ || came_and_went) last_seen_ = now;
    }
    return std::chrono::duration<double>(now - last_seen_).count();
}
