// The shared I/O segment: the bytes that a simulator and its control panel share.
//
// One System V shared-memory block of 4561 bytes, native byte order. The simulator writes the names
// of its inputs (sensors) and outputs (commands) once, then publishes input values; the panel
// writes output values. docs/segment.md draws the bytes and walks through an exchange.
#pragma once
#include <semaphore.h>

#include <cstddef>
#include <cstdint>

/// What both halves allocate, attach and stay within. Fewer bytes than sizeof(io_segment), whose
/// end is rounded up to its alignment: never copy or clear a whole io_segment.
inline constexpr std::size_t io_segment_size = 4561;

inline constexpr int io_values = 50;     ///< Values in each direction.
inline constexpr int io_names = 41;      ///< Names in each direction.
inline constexpr int io_name_size = 50;  ///< Bytes of a name's slot, its terminating NUL included.

// The server writes all but outputs_clock and output_values, which are its clients'. Locked or
// unlocked says whether the writer holds the lock.
struct io_segment {
    std::int64_t inputs_clock;   ///< Raised at each publication, unlocked; -1 at the end.
    std::int64_t outputs_clock;  ///< Raised at each announcement, locked; 0 when a client attaches.
    sem_t lock;                  ///< Held until the server has filled the segment.
    std::int32_t nb_inputs;      ///< Written once.
    std::int32_t nb_outputs;     ///< Written once.
    std::int32_t input_values[io_values];       ///< Locked.
    std::int32_t output_values[io_values];      ///< Unlocked.
    char input_names[io_names][io_name_size];   ///< NUL-terminated; written once.
    char output_names[io_names][io_name_size];  ///< NUL-terminated; written once.
    /// To fill the 4561 bytes; nobody reads or writes it.
    char unused[5];
};

static_assert(sizeof(sem_t) == 32);
static_assert(offsetof(io_segment, inputs_clock) == 0);
static_assert(offsetof(io_segment, outputs_clock) == 8);
static_assert(offsetof(io_segment, lock) == 16);
static_assert(offsetof(io_segment, nb_inputs) == 48);
static_assert(offsetof(io_segment, nb_outputs) == 52);
static_assert(offsetof(io_segment, input_values) == 56);
static_assert(offsetof(io_segment, output_values) == 256);
static_assert(offsetof(io_segment, input_names) == 456);
static_assert(offsetof(io_segment, output_names) == 2506);
static_assert(offsetof(io_segment, unused) == 4556);
static_assert(offsetof(io_segment, unused) + sizeof(io_segment::unused) == io_segment_size);
static_assert(sizeof(io_segment) > io_segment_size);
