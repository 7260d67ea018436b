// Who holds a shared I/O segment: how many processes, and which of them only read.
#pragma once
#include <sys/types.h>

#include <ctime>
#include <optional>

/// How a segment is held.
struct io_holding {
    /// Attachments that exist now.
    unsigned long attached;
    /// When one was last given up, in seconds of the epoch; 0 when none was.
    std::time_t left;
    /// The process that last attached or let go.
    pid_t last;
    bool operator==(const io_holding&) const = default;
};

/// How segment `ident` is held now; nothing when it does not exist, or is somebody else's.
[[nodiscard]] std::optional<io_holding> io_held(int ident);

/// How many attachments to segment `ident` process `pid` has for reading only; 0 when there is no
/// such process, or its mappings may not be read.
[[nodiscard]] unsigned long io_reading_attachments(int ident, pid_t pid);

/// The same for all processes together. None of these attachments can hold the segment's lock.
/// Reads all of /proc, which takes milliseconds.
[[nodiscard]] unsigned long io_all_reading_attachments(int ident);
