#include "session/served_segment.h"

#include <sys/ipc.h>
#include <sys/shm.h>

#include <cerrno>
#include <list>
#include <string>

#include "ioshare/io_clocks.h"
#include "ioshare/io_holders.h"
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

IOsharemem_server make_one(name_span inputs, name_span outputs) {
    // As the link's server takes names.
    const auto list = [](name_span names) {
        return std::list<std::string>(names.begin(), names.end());
    };
    IOsharemem_server server(list(inputs), list(outputs));
    shmctl(server.ident, IPC_RMID, nullptr);
    return server;
}

}  // namespace

IOsharemem_server make_station_server(name_span inputs, name_span outputs) {
    try_one();
    const IOsharemem_server first = make_one(inputs, outputs);
    if (!io_ident_refused(first.ident)) return first;
    const IOsharemem_server second = make_one(inputs, outputs);
    shmdt(first.segment);
    return second;
}

bool held_by_no_more_than(int ident, unsigned long others) {
    const std::optional<io_holding> held = io_held(ident);
    return held && held->attached <= station_holders + others;
}
