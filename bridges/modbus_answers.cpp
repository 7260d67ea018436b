#include "bridges/modbus_answers.h"

#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <new>

namespace {

template <class Value>
std::span<Value> span_of(Value* values, int count) {
    return {values, static_cast<std::size_t>(count)};
}

}  // namespace

// The library answers into a socket, and may wait for room in it. One of its own always has room,
// since each answer is taken at once; a client that reads nothing then holds nobody up. After some
// refusals the library sleeps for the response timeout: the shortest that it knows.
modbus_answers::modbus_answers(int coils, int discrete_inputs, int input_registers)
    : context_(modbus_new_tcp("127.0.0.1", MODBUS_TCP_DEFAULT_PORT)),
      table_(modbus_mapping_new(coils, discrete_inputs, 0, input_registers)) {
    constexpr int kind = SOCK_SEQPACKET | SOCK_CLOEXEC | SOCK_NONBLOCK;
    if (!context_ || !table_ || socketpair(AF_UNIX, kind, 0, line_.data()) != 0)
        throw std::bad_alloc();
    modbus_set_response_timeout(context_.get(), 0, 1);
    modbus_set_socket(context_.get(), line_[0]);
}

modbus_answers::~modbus_answers() {
    for (const int each : line_) close(each);
}

std::span<std::uint8_t> modbus_answers::coils() {
    return span_of(table_->tab_bits, table_->nb_bits);
}

std::span<std::uint8_t> modbus_answers::discrete_inputs() {
    return span_of(table_->tab_input_bits, table_->nb_input_bits);
}

std::span<std::uint16_t> modbus_answers::input_registers() {
    return span_of(table_->tab_input_registers, table_->nb_input_registers);
}

modbus_answer modbus_answers::to(std::span<const std::uint8_t> frame, bool may_write) {
    const modbus_exception why = objection_to(frame, may_write);
    if (why != modbus_exception::none) {
        refuse(frame, why);
        return {take(), {}};
    }
    modbus_reply(context_.get(), frame.data(), static_cast<int>(frame.size()), table_.get());
    const std::span<const std::uint8_t> bytes = take();
    constexpr std::uint8_t refused = 0x80;
    const bool done = bytes.size() > modbus_header_size && bytes[modbus_header_size] < refused;
    return {bytes, done ? coils_written_by(frame) : coil_range{}};
}

// The library adds 128 to the function, which would turn those above it into ordinary ones.
void modbus_answers::refuse(std::span<const std::uint8_t> frame, modbus_exception why) {
    std::array<std::uint8_t, modbus_header_size + 1> head{};
    std::copy_n(frame.begin(), head.size(), head.begin());
    head.back() &= 0x7F;
    modbus_reply_exception(context_.get(), head.data(), static_cast<unsigned>(why));
}

std::span<const std::uint8_t> modbus_answers::take() {
    const ssize_t size = recv(line_[1], answer_.data(), answer_.size(), 0);
    return std::span(answer_).first(static_cast<std::size_t>(std::max<ssize_t>(size, 0)));
}
