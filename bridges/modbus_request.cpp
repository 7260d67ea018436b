#include "bridges/modbus_request.h"

#include <algorithm>
#include <cstddef>

#include "bridges/frame_buffer.h"

namespace {

enum class access : bool { reads, writes };

/// A function, and how long its request is, its own byte included.
struct function_row {
    std::uint8_t function;
    access does;
    std::size_t length;
    /// Where a number of bytes stands, which are added to the length; 0: nowhere.
    std::size_t bytes_at;
    /// Where the number of values stands that these bytes hold, and the bits of one.
    std::size_t values_at, bits;
};

// The registers' functions are served too: they say that there is no such address.
constexpr function_row functions[] = {
    {1, access::reads, 5, 0, 0, 0},     // read coils
    {2, access::reads, 5, 0, 0, 0},     // read discrete inputs
    {3, access::reads, 5, 0, 0, 0},     // read holding registers
    {4, access::reads, 5, 0, 0, 0},     // read input registers
    {5, access::writes, 5, 0, 0, 0},    // write one coil
    {6, access::writes, 5, 0, 0, 0},    // write one register
    {15, access::writes, 6, 5, 3, 1},   // write coils
    {16, access::writes, 6, 5, 3, 16},  // write registers
    {22, access::writes, 7, 0, 0, 0},   // mask a register
    {23, access::writes, 10, 9, 7, 16}  // read and write registers
};

constexpr std::uint8_t write_one_coil = 5, write_coils = 15;

int number_at(std::span<const std::uint8_t> bytes, std::size_t place) {
    return bytes[place] * 256 + bytes[place + 1];
}

bool well_formed(const function_row& row, std::span<const std::uint8_t> request) {
    if (row.bytes_at == 0) return request.size() == row.length;
    if (request.size() <= row.bytes_at) return false;
    const std::size_t bytes = request[row.bytes_at];
    const auto values = static_cast<std::size_t>(number_at(request, row.values_at));
    return request.size() == row.length + bytes && bytes == (values * row.bits + 7) / 8;
}

}  // namespace

modbus_exception objection_to(std::span<const std::uint8_t> frame, bool may_write) {
    const std::span<const std::uint8_t> request = frame.subspan(modbus_header_size);
    const auto row = std::ranges::find(functions, request[0], &function_row::function);
    if (row == std::end(functions) || (row->does == access::writes && !may_write))
        return modbus_exception::illegal_function;
    return well_formed(*row, request) ? modbus_exception::none : modbus_exception::illegal_value;
}

coil_range coils_written_by(std::span<const std::uint8_t> frame) {
    const std::span<const std::uint8_t> request = frame.subspan(modbus_header_size);
    if (request[0] == write_one_coil) return {number_at(request, 1), 1};
    if (request[0] == write_coils) return {number_at(request, 1), number_at(request, 3)};
    return {};
}
