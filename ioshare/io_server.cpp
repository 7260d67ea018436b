#include "ioshare/io_server.h"

#include <sys/ipc.h>
#include <sys/shm.h>

#include "ioshare/io_clocks.h"
#include "ioshare/io_lock.h"
#include "ioshare/io_report.h"
#include "ioshare/io_slots.h"

namespace {

/// One message for both failures: it names shmat() when shmget() failed, too.
[[noreturn]] void refuse(int ident) {
    io_refuse("shmat() serveur refuse pour ident mem=" + std::to_string(ident));
}

void describe(io_segment& segment, io_direction direction, const std::list<std::string>& names) {
    int index = 0;
    for (const std::string& name : names) {
        io_store_value(segment, direction, index, 0);
        io_store_name(segment, direction, index, name);
        ++index;
    }
}

}  // namespace

IOsharemem_server::IOsharemem_server(const std::list<std::string>& inputs,
                                     const std::list<std::string>& outputs)
    : ident(shmget(IPC_PRIVATE, io_segment_size, 0600)) {
    if (ident == -1) refuse(ident);
    void* const address = shmat(ident, nullptr, 0);
    if (address == reinterpret_cast<void*>(-1)) refuse(ident);
    segment = static_cast<io_segment*>(address);
    sem_init(&segment->lock, 0, 0);
    segment->nb_inputs = static_cast<std::int32_t>(inputs.size());
    segment->nb_outputs = static_cast<std::int32_t>(outputs.size());
    describe(*segment, io_direction::input, inputs);
    describe(*segment, io_direction::output, outputs);
    io_write_clock(segment->inputs_clock, 0);
    io_post(*segment);
}

int IOsharemem_server::memory_ident() { return ident; }

void IOsharemem_server::inputs_go() { io_publish(*segment); }

void IOsharemem_server::setreset_input(int index, int value) {
    if (index < 0 || index >= segment->nb_inputs) return;
    const io_lock lock(*segment);
    io_store_value(*segment, io_direction::input, index, value);
}

int IOsharemem_server::output_value(int index) {
    if (index < 0 || index >= segment->nb_outputs) return 0;
    return io_value(*segment, io_direction::output, index);
}

std::int64_t IOsharemem_server::get_outputs_clock() {
    const io_lock lock(*segment);
    return io_read_clock(segment->outputs_clock);
}

void IOsharemem_server::sharing_terminate() { io_end_session(*segment); }
