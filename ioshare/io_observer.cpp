#include "ioshare/io_observer.h"

#include <sys/ipc.h>
#include <sys/shm.h>

#include <algorithm>
#include <cerrno>
#include <cstring>

#include "ioshare/io_lock.h"

namespace {

/// What shmat() means by its error, in words of French.
std::string refusal(int error) {
    if (error == EACCES) return "accès refusé";
    if (error == EINVAL || error == EIDRM) return "il n'existe pas";
    return std::strerror(error);
}

}  // namespace

segment_view::segment_view(int ident, access wanted) {
    const std::string segment = "segment " + std::to_string(ident) + ": ";
    if (ident == 0) {
        problem_ = segment + "identifiant refusé";
        return;
    }
    void* const address = shmat(ident, nullptr, wanted == access::read ? SHM_RDONLY : 0);
    if (address == reinterpret_cast<void*>(-1)) {
        problem_ = segment + refusal(errno);
        return;
    }
    shmid_ds status;
    if (shmctl(ident, IPC_STAT, &status) != 0 || status.shm_segsz < io_segment_size) {
        problem_ = segment + "trop court pour la liaison";
        shmdt(address);
        return;
    }
    segment_ = static_cast<io_segment*>(address);
}

segment_view::~segment_view() {
    if (segment_) shmdt(segment_);
}

bool segment_view::session_over() const { return io_read_clock(segment_->inputs_clock) < 0; }

std::vector<io_entry> segment_view::entries() const {
    // A simulator publishes every 10 ms or so; one that never rests is taken as it is.
    constexpr int tries = 1000;
    std::vector<io_entry> now = read_once();
    for (int i = 0; i < tries; ++i) {
        const std::int64_t clock = io_read_clock(segment_->inputs_clock);
        std::vector<io_entry> again = read_once();
        const bool still = again == now && io_read_clock(segment_->inputs_clock) == clock;
        now = std::move(again);
        if (still) break;
    }
    return now;
}

std::vector<io_entry> segment_view::read_once() const {
    std::vector<io_entry> all;
    append(all, io_direction::input, segment_->nb_inputs);
    append(all, io_direction::output, segment_->nb_outputs);
    return all;
}

void segment_view::append(std::vector<io_entry>& to, io_direction direction,
                          std::int32_t count) const {
    const int present = std::min(count, io_name_limit(direction));
    for (int i = 0; i < present; ++i) {
        to.push_back({direction, std::string(io_name(*segment_, direction, i)),
                      io_value(*segment_, direction, i)});
    }
}

void segment_view::write_output(const std::string& name, std::int32_t value) {
    const int present = std::min(segment_->nb_outputs, io_name_limit(io_direction::output));
    for (int i = 0; i < present; ++i) {
        if (io_name(*segment_, io_direction::output, i) == name) {
            io_store_value(*segment_, io_direction::output, i, value);
        }
    }
}
