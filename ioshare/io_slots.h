// Names and values of the shared I/O segment by index, kept inside its 4561 bytes.
//
// The segment does not check its own capacity: name i stands 50 * i bytes after the first, value i
// 4 * i bytes after the first, whatever i is. So a long name runs on into the next slot, and inputs
// beyond the capacity run into the outputs. The functions here do exactly that within the segment,
// and nothing beyond its end.
#pragma once
#include <cstdint>
#include <string_view>

#include "ioshare/io_segment.h"

/// Seen from the panel: inputs are what the simulator publishes, outputs what the panel commands.
enum class io_direction { input, output };

/// How many values of that direction begin and end inside the segment, overruns included: 1126
/// inputs, 1076 outputs.
[[nodiscard]] int io_value_limit(io_direction direction);

/// How many name slots of that direction begin inside the segment, overruns included: 83 of inputs,
/// 42 of outputs.
[[nodiscard]] int io_name_limit(io_direction direction);

/// The value at `index`; 0 when `index` lies outside the segment.
[[nodiscard]] std::int32_t io_value(const io_segment& segment, io_direction direction, int index);

/// Stores `value` at `index`; does nothing when `index` lies outside the segment.
void io_store_value(io_segment& segment, io_direction direction, int index, std::int32_t value);

/// The bytes of name `index` up to its NUL or the segment's end; a view into the segment, valid
/// while it is attached. Empty when `index` lies outside the segment.
///
///     io_segment segment{};
///     io_store_name(segment, io_direction::input, 0, "b1e");
///     io_name(segment, io_direction::input, 0)  // "b1e"
[[nodiscard]] std::string_view io_name(const io_segment& segment, io_direction direction,
                                       int index);

/// Copies `name`, up to its first NUL, and a NUL into slot `index`, as far as the segment goes.
void io_store_name(io_segment& segment, io_direction direction, int index, std::string_view name);
