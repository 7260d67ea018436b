#include "session/served_segment.h"

#include <sys/ipc.h>
#include <sys/shm.h>

#include "ioshare/io_clocks.h"

namespace {

IOsharemem_server make_one(const name_list& inputs, const name_list& outputs) {
    IOsharemem_server server(inputs, outputs);
    shmctl(server.ident, IPC_RMID, nullptr);
    return server;
}

}  // namespace

IOsharemem_server make_station_server(const name_list& inputs, const name_list& outputs) {
    const IOsharemem_server first = make_one(inputs, outputs);
    if (!io_ident_refused(first.ident)) return first;
    const IOsharemem_server second = make_one(inputs, outputs);
    shmdt(first.segment);
    return second;
}
