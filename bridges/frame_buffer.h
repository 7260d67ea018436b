// A client's bytes, cut into Modbus TCP frames, however they come.
//
// A frame is a header of seven bytes (transaction, protocol 0, length of what follows it, unit) and
// the request: 8 to 260 bytes. Nothing is decoded beyond that.
#pragma once
#include <array>
#include <cstddef>
#include <cstdint>
#include <span>

/// The bytes before a request.
inline constexpr std::size_t modbus_header_size = 7;
/// The longest frame.
inline constexpr std::size_t modbus_frame_limit = 260;

class frame_buffer {
public:
    /// Where the next bytes go. Empty only while a whole frame waits, or the bytes are broken.
    [[nodiscard]] std::span<std::uint8_t> room();
    /// Says that `count` bytes were put there.
    void filled(std::size_t count);

    /// Whether the first bytes cannot become a frame: another protocol, a length that none has.
    /// They never will again; the connection is lost.
    [[nodiscard]] bool broken() const;
    /// The first frame, once it is whole; empty before. Valid until the next call of filled() or
    /// drop().
    [[nodiscard]] std::span<const std::uint8_t> frame() const;
    /// Forgets the first frame, if it is whole. What came behind it moves up.
    void drop();

private:
    [[nodiscard]] std::size_t number_at(std::size_t place) const;

    std::array<std::uint8_t, modbus_frame_limit> bytes_{};
    std::size_t size_ = 0;
};
