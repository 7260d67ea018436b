#include "bench/soak/hostile_segment.h"

#include <sys/ipc.h>
#include <sys/shm.h>

#include <cstring>
#include <limits>

#include "workcell/station_names.h"

const std::array<std::string, 6> asked_names = {
    "", "te", "a", "RENT", std::string(49, 'a'), std::string(4000, 'a')};

namespace {

std::size_t some_size(attack& run) {
    constexpr std::size_t edges[] = {1,    15,   16,   47,   48,   56,   455,  456,  2506, 4095,
                                     4096, 4097, 4556, 4560, 4562, 4568, 8191, 8192, 8193, 20480};
    if (run.one_in(2)) return io_segment_size;
    return run.one_in(2) ? edges[run.below(std::size(edges))] : 1 + run.below(20480);
}

constexpr std::int32_t counts[] = {std::numeric_limits<std::int32_t>::min(),
                                   -1,
                                   0,
                                   1,
                                   22,
                                   41,
                                   42,
                                   50,
                                   51,
                                   83,
                                   84,
                                   1126,
                                   1127,
                                   65536,
                                   std::numeric_limits<std::int32_t>::max()};
constexpr std::int64_t clocks[] = {std::numeric_limits<std::int64_t>::min(),
                                   -2,
                                   -1,
                                   0,
                                   1,
                                   1000,
                                   std::numeric_limits<std::int64_t>::max() - 1,
                                   std::numeric_limits<std::int64_t>::max()};

}  // namespace

hostile_segment::hostile_segment(attack& run)
    : size_(some_size(run)),
      ident_(shmget(IPC_PRIVATE, size_, 0600)),
      bytes_(static_cast<unsigned char*>(shmat(ident_, nullptr, 0))) {
    shmctl(ident_, IPC_RMID, nullptr);
    fill(run);
}

hostile_segment::~hostile_segment() { shmdt(bytes_); }

void hostile_segment::store(std::size_t at, const void* value, std::size_t length) {
    if (at + length <= size_) std::memcpy(bytes_ + at, value, length);
}

void hostile_segment::fill(attack& run) {
    const std::size_t kind = run.below(4);
    if (kind == 0) {
        std::memset(bytes_, static_cast<int>(run.below(256)), size_);
    } else if (kind == 1) {
        for (std::size_t at = 0; at < size_; at += 4) {
            const auto four = static_cast<std::uint32_t>(run.random());
            store(at, &four, std::min<std::size_t>(4, size_ - at));
        }
    } else {
        fill_like_a_station(run);
    }
    if (kind != 1 || run.one_in(2)) set_limits(run);
}

void hostile_segment::fill_like_a_station(attack& run) {
    std::memset(bytes_, run.one_in(3) ? 'a' : 0, size_);
    const auto write_names = [&](const auto& names, std::size_t first) {
        std::size_t at = first;
        for (const std::string_view name : names) {
            store(at, name.data(), name.size());
            at += io_name_size;
        }
    };
    write_names(station_inputs, offsetof(io_segment, input_names));
    write_names(station_outputs, offsetof(io_segment, output_names));
    disturb(run);
}

// A lock of either flag, a third of the time of another one; counts and clocks at their limits.
void hostile_segment::set_limits(attack& run) {
    constexpr std::uint32_t flags[] = {0, 128, 7};
    store(offsetof(io_segment, lock) + 8, &flags[run.below(3)], 4);
    for (const std::size_t at : {offsetof(io_segment, nb_inputs), offsetof(io_segment, nb_outputs)})
        store(at, &counts[run.below(std::size(counts))], 4);
    for (const std::size_t at :
         {offsetof(io_segment, inputs_clock), offsetof(io_segment, outputs_clock)})
        store(at, &clocks[run.below(std::size(clocks))], 8);
}

void hostile_segment::disturb(attack& run) {
    for (std::size_t i = run.below(40); i > 0; --i)
        bytes_[run.below(size_)] = static_cast<unsigned char>(run.one_in(3) ? 0 : run.random());
}

void hostile_segment::open_lock() {
    constexpr std::size_t lock = offsetof(io_segment, lock);
    if (size_ > lock) bytes_[lock] |= 1;
}
