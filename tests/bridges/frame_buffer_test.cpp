// Frames cut out of bytes that come as they please.
#include "bridges/frame_buffer.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>

#include "tests/bridges/modbus_connection.h"

namespace {

void put(frame_buffer& buffer, const std::string& bytes) {
    const auto room = buffer.room();
    ASSERT_GE(room.size(), bytes.size());
    std::copy(bytes.begin(), bytes.end(), room.begin());
    buffer.filled(bytes.size());
}

std::string first(const frame_buffer& buffer) {
    return {buffer.frame().begin(), buffer.frame().end()};
}

TEST(FrameBuffer, HasAFrameOnceItIsWholeHoweverItIsCut) {
    const std::string frame = hex("01 02 00 00 00 06 01 02 00 00 00 01");
    for (std::size_t cut = 1; cut < frame.size(); ++cut) {
        frame_buffer buffer;
        put(buffer, frame.substr(0, cut));
        EXPECT_TRUE(buffer.frame().empty()) << cut;
        buffer.drop();
        put(buffer, frame.substr(cut));
        EXPECT_EQ(first(buffer), frame) << cut;
        buffer.drop();
        EXPECT_TRUE(buffer.frame().empty());
        EXPECT_FALSE(buffer.broken());
    }
}

TEST(FrameBuffer, TakesLengthsFrom2To254AndNoOther) {
    for (std::size_t length = 0; length < 0x10000; length += length < 300 ? 1 : 4099) {
        frame_buffer buffer;
        const auto byte = [](std::size_t value) { return static_cast<char>(value & 0xFF); };
        put(buffer, std::string{0, 0, 0, 0, byte(length >> 8), byte(length)});
        const bool good = length >= 2 && length <= 254;
        EXPECT_EQ(buffer.broken(), !good) << length;
        EXPECT_EQ(buffer.room().empty(), !good) << length;
        if (!good) continue;
        put(buffer, std::string(length, 'x'));
        EXPECT_EQ(buffer.frame().size(), length + 6);
    }
}

TEST(FrameBuffer, IsBrokenByAnotherProtocolAsSoonAsItIsSeen) {
    for (const char* const bytes : {"00 00 00 01", "00 00 01 00", "00 00 ff ff 00 06 01 02"}) {
        frame_buffer buffer;
        put(buffer, hex(bytes));
        EXPECT_TRUE(buffer.broken()) << bytes;
        EXPECT_TRUE(buffer.frame().empty()) << bytes;
    }
}

TEST(FrameBuffer, GivesEveryFrameOfAStreamInItsOrder) {
    std::mt19937 random(29);
    for (int round = 0; round < 200; ++round) {
        std::string stream, given;
        for (int i = 0; i < 20; ++i) {
            std::string request(random() % 253 + 1, '\0');
            for (char& each : request) each = static_cast<char>(random());
            stream += frame_of(request, i);
        }
        frame_buffer buffer;
        for (std::size_t at = 0; at < stream.size();) {
            const std::size_t count = std::min<std::size_t>(
                {random() % 300 + 1, buffer.room().size(), stream.size() - at});
            put(buffer, stream.substr(at, count));
            at += count;
            for (; !buffer.frame().empty(); buffer.drop()) given += first(buffer);
        }
        EXPECT_EQ(given, stream);
    }
}

}  // namespace
