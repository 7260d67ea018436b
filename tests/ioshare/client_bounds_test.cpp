// The client half stays inside the segment, whatever its bytes.
#include <random>

#include "tests/ioshare/test_segment.h"

namespace {

class LinkClientBounds : public testing::Test {
    leaves_nothing nothing_;
};

TEST_F(LinkClientBounds, ReadsALongNameAsItRunsOn) {
    const std::string long_name = std::string(70, 'a');
    test_server server({long_name}, {long_name});
    server->segment->nb_inputs = 2;
    IOsharemem_client client = quiet_client(server->memory_ident());
    const detach_at_end end{client};
    server->segment->input_values[0] = 1;
    server->segment->input_values[1] = 2;
    server->inputs_go();
    ASSERT_EQ(client.receive(), 1);
    EXPECT_EQ(client.input_is_set(long_name), 1);
    EXPECT_EQ(client.input_is_set(std::string(20, 'a')), 2) << "slot 1 holds the end of name 0";
    client.setreset_output(long_name, 6);
    EXPECT_EQ(server->output_value(0), 6);
}

/// The value that a scan of the bytes finds under `name`, for a client with that count: the last
/// slot that lies in the segment and holds it.
int scanned(const unsigned char* bytes, int count, const std::string& name) {
    int value = 0;
    for (int i = 0; i < count && 456 + 50 * i < 4561; ++i) {
        std::string found;
        for (int at = 456 + 50 * i; at < 4561 && bytes[at]; ++at)
            found += static_cast<char>(bytes[at]);
        if (found == name)
            value = number_at<std::int32_t>(bytes, static_cast<std::size_t>(56 + 4 * i));
    }
    return value;
}

TEST_F(LinkClientBounds, WhateverTheBytesItStaysInsideTheSegment) {
    std::mt19937 random(7);
    for (int round = 0; round < 200; ++round) {
        raw_segment foreign;
        for (int i = 0; i < 4561; ++i)
            foreign.bytes[i] = static_cast<unsigned char>(random() % 3 ? 'a' : 0);
        const std::int32_t counts[] = {0,  1,    41,   42,        50, 83,
                                       84, 1126, 1127, INT32_MAX, -1, INT32_MIN};
        const std::int32_t nb_inputs = counts[random() % 12], nb_outputs = counts[random() % 12];
        std::memcpy(foreign.bytes + 48, &nb_inputs, 4);
        std::memcpy(foreign.bytes + 52, &nb_outputs, 4);
        sem_init(reinterpret_cast<sem_t*>(foreign.bytes + 16), 0, 1);
        const std::int64_t clock = 1;
        std::memcpy(foreign.bytes, &clock, 8);
        IOsharemem_client client = quiet_client(foreign.ident);
        const detach_at_end end{client};
        ASSERT_EQ(client.receive(), 1);
        for (const std::string name : {"", "a", "aa", "aaa"}) {
            ASSERT_EQ(client.input_is_set(name), scanned(foreign.bytes, nb_inputs, name))
                << nb_inputs;
        }
        std::string expected = bytes_at(foreign.bytes, 0, 8192);
        for (int i = 0; i < nb_outputs && 2506 + 50 * i < 4561; ++i) {
            const std::size_t at = static_cast<std::size_t>(2506 + 50 * i);
            const std::string name(expected.c_str() + at,
                                   strnlen(expected.c_str() + at, 4561 - at));
            if (name == "aa")
                expected.replace(static_cast<std::size_t>(256 + 4 * i), 4, "\1\0\0\0", 4);
        }
        client.setreset_output("aa", 1);
        ASSERT_EQ(bytes_at(foreign.bytes, 0, 8192), expected) << nb_outputs;
    }
}

}  // namespace
