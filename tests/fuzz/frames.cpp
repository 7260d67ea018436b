// Any bytes from a Modbus client, in any pieces: the frames are those of the bytes, each is
// answered under its own header, and nothing is written beyond the coils.
#include <algorithm>
#include <vector>

#include "bridges/frame_buffer.h"
#include "bridges/modbus_answers.h"
#include "tests/fuzz/fuzz_input.h"

namespace {

constexpr int coils = 13, inputs = 23, registers = 4;

void answer(modbus_answers& server, std::span<const std::uint8_t> frame, bool may_write) {
    const modbus_answer made = server.to(frame, may_write);
    law(made.bytes.size() > modbus_header_size + 1, "a whole frame is answered");
    law(std::equal(frame.begin(), frame.begin() + 4, made.bytes.begin()), "under its header");
    law(made.bytes[6] == frame[6], "for its unit");
    law((made.bytes[7] & 0x7F) == (frame[7] & 0x7F), "by its function");
    const std::size_t length = made.bytes[4] * 256U + made.bytes[5];
    law(made.bytes.size() == length + 6, "the answer is a frame");
    law(made.written.first + made.written.count <= coils, "only coils are written");
    law(may_write || made.written.count == 0, "nothing is written that may not be");
}

/// The frames that these bytes begin with, cut as `cut` says.
std::string frames_of(const std::string& bytes, std::size_t cut, modbus_answers& server,
                      bool may_write) {
    frame_buffer buffer;
    std::string frames;
    for (std::size_t at = 0; at < bytes.size() && !buffer.broken();) {
        const auto room = buffer.room();
        law(!room.empty(), "there is room, or a frame, or nothing more to come");
        const std::size_t count = std::min({cut, room.size(), bytes.size() - at});
        std::copy_n(bytes.begin() + static_cast<std::ptrdiff_t>(at), count, room.begin());
        buffer.filled(count);
        at += count;
        for (auto frame = buffer.frame(); !frame.empty(); frame = buffer.frame()) {
            frames.append(frame.begin(), frame.end());
            answer(server, frame, may_write);
            buffer.drop();
        }
    }
    return frames;
}

/// The same bytes as one request, under a header that fits.
void answer_as_request(const std::string& bytes, modbus_answers& server, bool may_write) {
    const std::string request = bytes.substr(0, 253);
    if (request.empty()) return;
    std::vector<std::uint8_t> frame = {1, 2, 0, 0, 0, 0, 3};
    frame[5] = static_cast<std::uint8_t>(request.size() + 1);
    frame.insert(frame.end(), request.begin(), request.end());
    answer(server, frame, may_write);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static modbus_answers server(coils, inputs, registers);
    fuzz_input input(data, size);
    const std::size_t cut = static_cast<unsigned char>(input.byte()) + 1U;
    const bool may_write = input.byte() & 1;
    const std::string bytes = input.rest();
    const std::string frames = frames_of(bytes, cut, server, may_write);
    answer_as_request(bytes, server, may_write);
    law(bytes.compare(0, frames.size(), frames) == 0, "the frames are the bytes");
    law(frames_of(bytes, 1, server, may_write) == frames, "however they are cut");
    return 0;
}
