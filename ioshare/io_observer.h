// Looking at a shared I/O segment from beside the link: by identifier, without a client's effect on
// it.
#pragma once
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "ioshare/io_slots.h"

/// One input or output as it stands.
struct io_entry {
    io_direction direction;
    std::string name;
    std::int32_t value;
    bool operator==(const io_entry&) const = default;
};

class segment_view {
public:
    enum class access { read, write };

    /// Attaches to segment `ident`; detaches at the end. `problem()` tells when that could not be
    /// done.
    segment_view(int ident, access wanted);
    ~segment_view();
    segment_view(const segment_view&) = delete;
    segment_view& operator=(const segment_view&) = delete;

    /// Why it could not attach, in one line without an end of line; empty when it could. Nothing
    /// else may be called then.
    const std::string& problem() const { return problem_; }

    bool session_over() const;

    /// Every input, then every output, in the order of the segment. The inputs are those of one
    /// publication, as far as can be told without the lock: they were read twice, alike, under an
    /// unmoved clock.
    std::vector<io_entry> entries() const;

    /// Writes `value` for every output of that name. Only with access::write.
    void write_output(const std::string& name, std::int32_t value);

private:
    std::vector<io_entry> read_once() const;
    void append(std::vector<io_entry>& to, io_direction direction, std::int32_t count) const;

    io_segment* segment_ = nullptr;
    std::string problem_;
};
