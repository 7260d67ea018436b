// The lock's bytes, whatever somebody wrote there: nobody is ended by the C library, nobody hangs.
#include <semaphore.h>

#include <random>

#include "ioshare/io_lock.h"
#include "tests/ioshare/test_segment.h"

namespace {

class LinkLock : public testing::Test {
    leaves_nothing nothing_;
};

constexpr std::size_t lock_at = 16, flag_at = lock_at + 8;

void set_flag(void* bytes, std::uint32_t flag) {
    std::memcpy(static_cast<char*>(bytes) + flag_at, &flag, sizeof flag);
}

/// The semaphore's count in the lower half, the number of those who wait in the upper one.
void set_counts(void* bytes, std::uint64_t counts) {
    std::memcpy(static_cast<char*>(bytes) + lock_at, &counts, sizeof counts);
}

constexpr std::uint32_t bad_flags[] = {1,   2,     127,         129,         255,
                                       256, 32768, 0x8000'0000, 0xffff'ffff, 0x0080'0080};
constexpr std::uint64_t one_waits = 1ULL << 32;

TEST_F(LinkLock, ASemaphoreOfEitherFlagIsSound) {
    io_segment segment{};
    for (const int flag : {0, 1}) {
        for (const unsigned count : {0u, 1u, 2u, static_cast<unsigned>(SEM_VALUE_MAX)}) {
            sem_init(&segment.lock, flag, count);
            EXPECT_TRUE(io_lock_is_sound(segment)) << flag << " " << count;
        }
    }
    for (const std::uint32_t flag : bad_flags) {
        set_flag(&segment, flag);
        EXPECT_FALSE(io_lock_is_sound(segment)) << flag;
    }
}

TEST_F(LinkLock, AClientRefusesASegmentWithoutOneAndChangesNothing) {
    for (const std::uint32_t flag : bad_flags) {
        raw_segment foreign;
        std::memset(foreign.bytes, 7, 16);
        set_counts(foreign.bytes, one_waits);
        set_flag(foreign.bytes, flag);
        const std::string before = bytes_at(foreign.bytes, 0, 4561);
        const outcome end = run_in_child([&] { IOsharemem_client client(foreign.ident); });
        const std::string ident = std::to_string(foreign.ident);
        EXPECT_EQ(end.status, 1) << flag;
        EXPECT_EQ(end.err, "ident_mem=" + ident +
                               "\nIOshare: erreur sur partage memoire\n"
                               "shmat() client refuse pour ident mem=" +
                               ident + "\n\n");
        EXPECT_EQ(bytes_at(foreign.bytes, 0, 4561), before);
    }
}

TEST_F(LinkLock, AClientTakesASegmentOfTheSharedFlag) {
    test_server server;
    sem_init(&server->segment->lock, 1, 1);
    IOsharemem_client client = quiet_client(server->memory_ident());
    const detach_at_end end{client};
    server->setreset_input(1, 9);
    server->inputs_go();
    EXPECT_EQ(client.receive(), 1);
    EXPECT_EQ(client.input_is_set("ts"), 9);
}

TEST_F(LinkLock, OneThatIsDamagedLaterIsNeitherTakenNorPosted) {
    for (const std::uint32_t flag : bad_flags) {
        test_server server;
        IOsharemem_client client = quiet_client(server->memory_ident());
        const detach_at_end end{client};
        server->inputs_go();
        for (const std::uint64_t count : {0, 1}) {
            set_counts(server->segment, one_waits + count);
            set_flag(server->segment, flag);
            EXPECT_EQ(client.receive(), -1) << "nothing can be taken whole any more";
            client.outputs_refresh();
            server->setreset_input(0, 1);
            server->get_outputs_clock();
            EXPECT_EQ(number_at<std::uint64_t>(server.bytes(), lock_at), one_waits + count);
        }
    }
}

TEST_F(LinkLock, AHolderWhoFindsItDamagedDoesNotPostIt) {
    test_server server;
    {
        const io_lock lock(*server->segment);
        ASSERT_TRUE(lock.held());
        set_counts(server->segment, one_waits);
        set_flag(server->segment, 7);
    }
    EXPECT_EQ(number_at<std::uint64_t>(server.bytes(), lock_at), one_waits);
}

TEST_F(LinkLock, NoCountEndsOrHoldsUpAnybody) {
    for (const std::uint32_t count : {1u, 2u, 0x7fff'fffeu, 0x7fff'ffffu, 0x8000'0000u, ~0u}) {
        for (const std::uint64_t waiting : {0ULL, 1ULL, 0x7fff'ffffULL, 0xffff'ffffULL}) {
            SCOPED_TRACE(std::to_string(count) + " " + std::to_string(waiting));
            test_server server;
            IOsharemem_client client = quiet_client(server->memory_ident());
            const detach_at_end end{client};
            set_counts(server->segment, waiting << 32 | count);
            server->setreset_input(0, 4);
            server->inputs_go();
            EXPECT_EQ(client.receive(), 1);
            EXPECT_EQ(client.input_is_set("te"), 4);
            client.outputs_refresh();
            EXPECT_EQ(server->get_outputs_clock(), 1);
        }
    }
}

/// Random bytes, a third of them with a flag of a semaphore.
void damage(io_segment& segment, std::mt19937& random) {
    char bytes[32];
    for (char& each : bytes) each = static_cast<char>(random());
    const std::uint32_t flag = random() % 2 ? 0 : 128;
    if (random() % 3 == 0) std::memcpy(bytes + 8, &flag, sizeof flag);
    bytes[0] |= 1;  // A lock that is merely held is waited for, as ever.
    std::memcpy(&segment.lock, bytes, sizeof bytes);
}

TEST_F(LinkLock, RandomBytesEndNeitherHalf) {
    test_server server;
    const outcome end = run_in_child([&] {
        std::mt19937 random(11);
        IOsharemem_client client(server->memory_ident());
        int taken = 0;
        for (int i = 0; i < 20'000; ++i) {
            server->inputs_go();
            damage(*server->segment, random);
            server->setreset_input(i % 3, i);
            taken += client.receive() == 1;
            client.outputs_refresh();
            server->get_outputs_clock();
        }
        if (taken < 5'000 || taken > 8'000) _exit(2);
    });
    EXPECT_EQ(end.status, 0) << end.err;
}

}  // namespace
