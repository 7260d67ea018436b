// Which requests a server of this map takes, by their function and their shape, before anything is
// looked up in the map.
#pragma once
#include <cstdint>
#include <span>

/// The exceptions that Modbus answers with.
enum class modbus_exception : std::uint8_t {
    none = 0,
    illegal_function = 1,
    illegal_address = 2,
    illegal_value = 3,
};

/// What is wrong with a whole frame: a function that is not served, or that writes where nothing
/// may be written; a request that is shorter or longer than its function and its counts say.
/// `none` for one whose addresses, counts and values are still to be looked at.
[[nodiscard]] modbus_exception objection_to(std::span<const std::uint8_t> frame, bool may_write);

/// The coils that a request names.
struct coil_range {
    int first = 0, count = 0;
};

/// The coils that a request writes, in a frame to which there is no objection; none in others.
[[nodiscard]] coil_range coils_written_by(std::span<const std::uint8_t> frame);
