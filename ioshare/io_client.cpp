#include "ioshare/io_client.h"

#include <sys/ipc.h>
#include <sys/shm.h>
#include <unistd.h>

#include <algorithm>
#include <iostream>

#include "ioshare/io_clocks.h"
#include "ioshare/io_lock.h"
#include "ioshare/io_report.h"
#include "ioshare/io_slots.h"

namespace {

constexpr useconds_t idle_pause_us = 10'000;

/// Whether the identifier's segment holds the whole layout. A shorter one, some other program's,
/// would be read beyond its end.
bool long_enough(int ident_mem) {
    shmid_ds status;
    return shmctl(ident_mem, IPC_STAT, &status) == 0 && status.shm_segsz >= io_segment_size;
}

io_segment* attach(int ident_mem) {
    if (io_ident_refused(ident_mem)) io_refuse("ident_mem ==0 !");
    std::cerr << "ident_mem=" << ident_mem << std::endl;
    void* const address = shmat(ident_mem, nullptr, 0);
    if (address == reinterpret_cast<void*>(-1) || !long_enough(ident_mem) ||
        !io_lock_is_sound(*static_cast<io_segment*>(address))) {
        io_refuse("shmat() client refuse pour ident mem=" + std::to_string(ident_mem));
    }
    return static_cast<io_segment*>(address);
}

/// How many of `count` stated values or names exist, given that `limit` fit in the segment.
int within(std::int32_t count, int limit) { return std::clamp(count, 0, limit); }

}  // namespace

IOsharemem_client::IOsharemem_client(int ident_mem) : segment(attach(ident_mem)), last_clock(0) {
    io_write_clock(segment->outputs_clock, 0);
    nb_inputs = segment->nb_inputs;
    nb_outputs = segment->nb_outputs;
    inputs = new std::int32_t[static_cast<std::size_t>(
        within(nb_inputs, io_value_limit(io_direction::input)))]();
}

int IOsharemem_client::receive() {
    const std::int64_t clock = io_read_clock(segment->inputs_clock);
    if (io_over(clock)) return -1;
    if (clock <= last_clock) {
        usleep(idle_pause_us);
        return 0;
    }
    const io_lock lock(*segment);
    if (!lock.held()) return -1;
    last_clock = io_read_clock(segment->inputs_clock);
    const int count = within(nb_inputs, io_value_limit(io_direction::input));
    for (int i = 0; i < count; ++i) inputs[i] = io_value(*segment, io_direction::input, i);
    return 1;
}

int IOsharemem_client::input_is_set(const std::string& name) {
    int value = 0;
    const int count = within(nb_inputs, io_name_limit(io_direction::input));
    for (int i = 0; i < count; ++i) {
        if (io_name(*segment, io_direction::input, i) == name) value = inputs[i];
    }
    return value;
}

void IOsharemem_client::setreset_output(const std::string& name, int value) {
    const int count = within(nb_outputs, io_name_limit(io_direction::output));
    for (int i = 0; i < count; ++i) {
        if (io_name(*segment, io_direction::output, i) == name) {
            io_store_value(*segment, io_direction::output, i, value);
        }
    }
}

void IOsharemem_client::outputs_refresh() {
    const io_lock lock(*segment);
    io_raise_clock(segment->outputs_clock);
}
