#include "session/served_segment.h"

#include <sys/ipc.h>
#include <sys/shm.h>

#include <cerrno>

#include "ioshare/io_clocks.h"
#include "session/failure.h"
#include "session/system_errors.h"

namespace {

/// Throws when the system gives no segment now: the server itself would end the program with a
/// report of its own.
void try_one() {
    const int ident = shmget(IPC_PRIVATE, io_segment_size, 0600);
    void* const nowhere = reinterpret_cast<void*>(-1);
    void* const address = ident < 0 ? nowhere : shmat(ident, nullptr, 0);
    const int error = address == nowhere ? errno : 0;
    if (address != nowhere) shmdt(address);
    if (ident >= 0) shmctl(ident, IPC_RMID, nullptr);
    // The words for a full disk would be wrong here: it is the number of segments, or their size.
    if (error == ENOSPC) throw refusal("segment: la limite du système est atteinte (ipcs -l)");
    if (error != 0) throw refusal("segment: " + system_error_words(error));
}

IOsharemem_server make_one(const name_list& inputs, const name_list& outputs) {
    IOsharemem_server server(inputs, outputs);
    shmctl(server.ident, IPC_RMID, nullptr);
    return server;
}

}  // namespace

IOsharemem_server make_station_server(const name_list& inputs, const name_list& outputs) {
    try_one();
    const IOsharemem_server first = make_one(inputs, outputs);
    if (!io_ident_refused(first.ident)) return first;
    const IOsharemem_server second = make_one(inputs, outputs);
    shmdt(first.segment);
    return second;
}
