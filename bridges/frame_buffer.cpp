#include "bridges/frame_buffer.h"

#include <algorithm>

namespace {

constexpr std::size_t protocol_at = 2, length_at = 4, counted_from = 6;
// Unit and function at least, unit and 253 bytes at most.
constexpr std::size_t least_length = 2, most_length = modbus_frame_limit - counted_from;

}  // namespace

std::size_t frame_buffer::number_at(std::size_t place) const {
    return bytes_[place] * 256U + bytes_[place + 1];
}

std::span<std::uint8_t> frame_buffer::room() {
    if (broken()) return {};
    return std::span(bytes_).subspan(size_);
}

void frame_buffer::filled(std::size_t count) { size_ += std::min(count, bytes_.size() - size_); }

bool frame_buffer::broken() const {
    if (size_ >= length_at && number_at(protocol_at) != 0) return true;
    if (size_ < counted_from) return false;
    return number_at(length_at) < least_length || number_at(length_at) > most_length;
}

std::span<const std::uint8_t> frame_buffer::frame() const {
    if (size_ < counted_from || broken()) return {};
    const std::size_t whole = counted_from + number_at(length_at);
    return size_ < whole ? std::span<const std::uint8_t>() : std::span(bytes_).first(whole);
}

void frame_buffer::drop() {
    const std::size_t gone = frame().size();
    std::copy(bytes_.begin() + static_cast<std::ptrdiff_t>(gone),
              bytes_.begin() + static_cast<std::ptrdiff_t>(size_), bytes_.begin());
    size_ -= gone;
}
