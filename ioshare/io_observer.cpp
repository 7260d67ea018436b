#include "ioshare/io_observer.h"

#include <sys/ipc.h>
#include <sys/shm.h>

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <cstring>

#include "ioshare/io_clocks.h"

namespace {

/// What shmat() means by its error, in words of French.
std::string refusal(int error) {
    if (error == EACCES) return "accès refusé";
    if (error == EINVAL || error == EIDRM) return "il n'existe pas";
    if (error == ENOMEM) return "mémoire insuffisante";
    return std::strerror(error);
}

}  // namespace

io_observer::io_observer(int ident, io_access access) : access_(access) {
    attach(ident);
    if (!segment_) return;
    read_names(io_direction::input, segment_->nb_inputs);
    inputs_ = signals_.size();
    read_names(io_direction::output, segment_->nb_outputs);
    now_.resize(signals_.size());
    again_.resize(signals_.size());
    look();
    for (io_signal& each : signals_) each.changed = false;
}

io_observer::~io_observer() {
    if (segment_) shmdt(segment_);
}

void io_observer::attach(int ident) {
    const std::string segment = "segment " + std::to_string(ident) + ": ";
    if (io_ident_refused(ident)) {
        problem_ = segment + "identifiant refusé";
        return;
    }
    io_announce(ident, access_);
    void* const address = shmat(ident, nullptr, access_ == io_access::read ? SHM_RDONLY : 0);
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

void io_observer::read_names(io_direction direction, std::int32_t count) {
    const int present = std::min(count, io_name_limit(direction));
    for (int i = 0; i < present; ++i)
        signals_.push_back({direction, std::string(io_name(*segment_, direction, i)), 0, false});
}

bool io_observer::session_over() const { return !segment_ || io_session_over(*segment_); }

bool io_observer::look() {
    // A simulator publishes every 10 ms or so; one that never rests is taken as it is.
    constexpr int tries = 1000;
    if (!segment_) return false;
    read_values(now_);
    for (int i = 0; i < tries; ++i) {
        publication_ = io_read_clock(segment_->inputs_clock);
        read_values(again_);
        const bool still = again_ == now_ && io_read_clock(segment_->inputs_clock) == publication_;
        now_.swap(again_);
        if (still) break;
    }
    bool any = false;
    for (std::size_t i = 0; i < signals_.size(); ++i) {
        signals_[i].changed = signals_[i].value != now_[i];
        signals_[i].value = now_[i];
        any |= signals_[i].changed;
    }
    return any;
}

void io_observer::read_values(std::vector<std::int32_t>& to) const {
    // Two readings in a row are two: the compiler may not take the first for the second.
    std::atomic_signal_fence(std::memory_order_seq_cst);
    for (std::size_t i = 0; i < signals_.size(); ++i) {
        const io_direction direction = signals_[i].direction;
        const std::size_t index = direction == io_direction::input ? i : i - inputs_;
        to[i] = io_value(*segment_, direction, static_cast<int>(index));
    }
}

const io_signal* io_observer::find(std::string_view name) const {
    const io_signal* const input = find(io_direction::input, name);
    return input ? input : find(io_direction::output, name);
}

const io_signal* io_observer::find(io_direction direction, std::string_view name) const {
    const auto found = std::find_if(signals_.rbegin(), signals_.rend(), [&](const io_signal& each) {
        return each.direction == direction && each.name == name;
    });
    return found == signals_.rend() ? nullptr : &*found;
}

void io_observer::write(std::string_view name, std::int32_t value) {
    if (access_ != io_access::write) return;
    for (std::size_t i = inputs_; i < signals_.size(); ++i) {
        if (signals_[i].name == name)
            io_store_value(*segment_, io_direction::output, static_cast<int>(i - inputs_), value);
    }
}

void io_observer::write(int index, std::int32_t value) {
    if (access_ == io_access::write && index >= 0 && index < outputs())
        io_store_value(*segment_, io_direction::output, index, value);
}
