// The answers of a Modbus server, made by libmodbus from a table of bits and registers. The only
// place that knows that library.
#pragma once
#include <modbus.h>

#include <array>
#include <cstdint>
#include <memory>
#include <span>

#include "bridges/frame_buffer.h"
#include "bridges/modbus_request.h"

/// What is answered to one frame.
struct modbus_answer {
    /// A whole frame, valid until the next one is asked for; empty when none could be made, for
    /// want of memory.
    std::span<const std::uint8_t> bytes;
    /// The coils that the request has written into the table; none for one that was refused.
    coil_range written;
};

class modbus_answers {
public:
    /// A table of so many bits and input registers, all 0, and of no holding registers. Throws
    /// `std::bad_alloc` when the machine has no room, or no socket, for it.
    modbus_answers(int coils, int discrete_inputs, int input_registers);
    ~modbus_answers();
    modbus_answers(const modbus_answers&) = delete;
    modbus_answers& operator=(const modbus_answers&) = delete;

    /// The table, to be filled before each answer.
    [[nodiscard]] std::span<std::uint8_t> coils();
    [[nodiscard]] std::span<std::uint8_t> discrete_inputs();
    [[nodiscard]] std::span<std::uint16_t> input_registers();

    /// Answers one whole frame, at once. Without `may_write` what writes is an unknown function.
    /// Every unit is answered, under its own number.
    [[nodiscard]] modbus_answer to(std::span<const std::uint8_t> frame, bool may_write);

private:
    void refuse(std::span<const std::uint8_t> frame, modbus_exception why);
    std::span<const std::uint8_t> take();

    struct freed {
        void operator()(modbus_t* context) const { modbus_free(context); }
        void operator()(modbus_mapping_t* table) const { modbus_mapping_free(table); }
    };
    std::unique_ptr<modbus_t, freed> context_;
    std::unique_ptr<modbus_mapping_t, freed> table_;
    // The library sends into the one, the answer is taken from the other.
    std::array<int, 2> line_{-1, -1};
    std::array<std::uint8_t, modbus_frame_limit> answer_{};
};
