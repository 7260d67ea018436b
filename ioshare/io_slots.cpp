#include "ioshare/io_slots.h"

#include <algorithm>
#include <cstring>

namespace {

struct place {
    std::size_t values, names;  ///< Offsets in bytes of the first of each.
};

constexpr place place_of(io_direction direction) {
    return direction == io_direction::input
               ? place{offsetof(io_segment, input_values), offsetof(io_segment, input_names)}
               : place{offsetof(io_segment, output_values), offsetof(io_segment, output_names)};
}

std::size_t value_offset(io_direction direction, int index) {
    return place_of(direction).values + sizeof(std::int32_t) * static_cast<std::size_t>(index);
}

std::size_t name_offset(io_direction direction, int index) {
    return place_of(direction).names + io_name_size * static_cast<std::size_t>(index);
}

bool inside(int index, int limit) { return index >= 0 && index < limit; }

}  // namespace

int io_value_limit(io_direction direction) {
    return static_cast<int>((io_segment_size - place_of(direction).values) / sizeof(std::int32_t));
}

int io_name_limit(io_direction direction) {
    return static_cast<int>((io_segment_size - place_of(direction).names - 1) / io_name_size + 1);
}

std::int32_t io_value(const io_segment& segment, io_direction direction, int index) {
    if (!inside(index, io_value_limit(direction))) return 0;
    std::int32_t value;
    std::memcpy(&value, reinterpret_cast<const char*>(&segment) + value_offset(direction, index),
                sizeof value);
    return value;
}

void io_store_value(io_segment& segment, io_direction direction, int index, std::int32_t value) {
    if (!inside(index, io_value_limit(direction))) return;
    std::memcpy(reinterpret_cast<char*>(&segment) + value_offset(direction, index), &value,
                sizeof value);
}

std::string_view io_name(const io_segment& segment, io_direction direction, int index) {
    if (!inside(index, io_name_limit(direction))) return {};
    const std::size_t offset = name_offset(direction, index);
    const char* const first = reinterpret_cast<const char*>(&segment) + offset;
    return {first, strnlen(first, io_segment_size - offset)};
}

void io_store_name(io_segment& segment, io_direction direction, int index, std::string_view name) {
    if (!inside(index, io_name_limit(direction))) return;
    const std::size_t offset = name_offset(direction, index);
    const std::size_t room = io_segment_size - offset;
    name = name.substr(0, name.find('\0'));
    char* const first = reinterpret_cast<char*>(&segment) + offset;
    std::memcpy(first, name.data(), std::min(name.size(), room));
    if (name.size() < room) first[name.size()] = '\0';
}
