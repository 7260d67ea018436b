// The server half against the raw bytes of its segment.
#include <sched.h>

#include <cstdio>
#include <random>

#include "ioshare/io_slots.h"
#include "tests/ioshare/test_segment.h"

namespace {

class LinkServer : public testing::Test {
    leaves_nothing nothing_;
};

std::list<std::string> names(const std::string& stem, int count) {
    std::list<std::string> result;
    for (int i = 0; i < count; ++i) result.push_back(stem + std::to_string(i));
    return result;
}

/// What a straightforward writer would leave in a buffer without an end, cut at the segment's
/// length: counts, then for each direction value and name in turn. A value that would cross the end
/// is none of the segment's.
std::string expected_description(const std::list<std::string>& inputs,
                                 const std::list<std::string>& outputs) {
    std::string bytes(400'000, '\0');
    const std::int32_t counts[] = {static_cast<std::int32_t>(inputs.size()),
                                   static_cast<std::int32_t>(outputs.size())};
    std::memcpy(&bytes[48], counts, 8);
    const struct {
        const std::list<std::string>& names;
        std::size_t values_at, names_at;
    } directions[] = {{inputs, 56, 456}, {outputs, 256, 2506}};
    for (const auto& [list, values_at, names_at] : directions) {
        std::size_t i = 0;
        for (const std::string& name : list) {
            if (values_at + 4 * i + 4 <= 4561) std::memset(&bytes[values_at + 4 * i], 0, 4);
            std::memcpy(&bytes[names_at + 50 * i], name.c_str(), std::strlen(name.c_str()) + 1);
            ++i;
        }
    }
    return bytes.substr(48, 4561 - 48);
}

TEST_F(LinkServer, MakesAPrivateSegmentOf4561BytesForItsOwner) {
    test_server server;
    shmid_ds status;
    ASSERT_EQ(shmctl(server->memory_ident(), IPC_STAT, &status), 0);
    EXPECT_EQ(status.shm_segsz, 4561u);
    EXPECT_EQ(status.shm_perm.mode & 0777, 0600);
    EXPECT_EQ(status.shm_perm.__key, IPC_PRIVATE);
    EXPECT_EQ(server->memory_ident(), server->ident);
}

TEST_F(LinkServer, EveryByteOfANewSegmentIsAsLaidOut) {
    test_server server({"te", "ts", "vb"}, {"RENT", "SORT"});
    std::string expected(4561, '\0');
    expected[16] = 1;  // the semaphore's count, posted once
    expected[48] = 3;
    expected[52] = 2;
    expected.replace(456, 2, "te").replace(506, 2, "ts").replace(556, 2, "vb");
    expected.replace(2506, 4, "RENT").replace(2556, 4, "SORT");
    EXPECT_EQ(bytes_at(server.bytes(), 0, 4561), expected);
}

TEST_F(LinkServer, TheLockIsASemaphoreOfThisProcessOpenOnce) {
    test_server server;
    sem_t* const lock = &server->segment->lock;
    EXPECT_EQ(reinterpret_cast<const char*>(lock) - static_cast<const char*>(server.bytes()), 16);
    int count = -1;
    sem_getvalue(lock, &count);
    EXPECT_EQ(count, 1);
    sem_t like_it;
    std::memset(&like_it, 0, sizeof like_it);
    sem_init(&like_it, 0, 0);
    sem_post(&like_it);
    EXPECT_EQ(bytes_at(lock, 0, sizeof(sem_t)), bytes_at(&like_it, 0, sizeof(sem_t)));
}

TEST_F(LinkServer, FullListsFillEverySlot) {
    const std::string longest(48, 'n');
    std::list<std::string> inputs, outputs;
    for (char c = 'A'; c < 'A' + 41; ++c) {
        inputs.push_back(c + longest);
        outputs.push_back(longest + c);
    }
    test_server server(inputs, outputs);
    EXPECT_EQ(bytes_at(server.bytes(), 456 + 50 * 40, 50),
              static_cast<char>('A' + 40) + longest + '\0');
    EXPECT_EQ(bytes_at(server.bytes(), 2506 + 50 * 40, 50),
              longest + static_cast<char>('A' + 40) + '\0');
    EXPECT_EQ(bytes_at(server.bytes(), 4556, 5), std::string(5, '\0'));
    EXPECT_EQ(bytes_at(server.bytes(), 48, 4513), expected_description(inputs, outputs));
}

TEST_F(LinkServer, EmptyListsMakeAValidSegment) {
    test_server server({}, {});
    EXPECT_EQ(number_at<std::int32_t>(server.bytes(), 48), 0);
    EXPECT_EQ(number_at<std::int32_t>(server.bytes(), 52), 0);
    EXPECT_EQ(server->output_value(0), 0);
    server->setreset_input(0, 7);
    EXPECT_EQ(number_at<std::int32_t>(server.bytes(), 56), 0);
}

TEST_F(LinkServer, ALongNameRunsOnIntoTheNextSlot) {
    const std::string long_name = std::string(50, 'a') + "bcd";
    test_server alone({long_name}, {});
    EXPECT_EQ(bytes_at(alone.bytes(), 456, 54), long_name + '\0');
    test_server followed({long_name, "x"}, {});
    EXPECT_EQ(bytes_at(followed.bytes(), 456, 54), std::string(50, 'a') + std::string("x\0d\0", 4));
}

TEST_F(LinkServer, ANameEndsAtItsFirstNulAndLeavesTheBytesAfterItAlone) {
    test_server server({std::string(53, 'a'), std::string("x\0y", 3)}, {});
    EXPECT_EQ(bytes_at(server.bytes(), 506, 4), std::string("x\0a\0", 4));
}

TEST_F(LinkServer, WhateverTheListsOnlyTheSegmentIsWrittenAndExactlyThat) {
    std::mt19937 random(20260101);
    for (int round = 0; round < 300; ++round) {
        std::list<std::string> lists[2];
        for (std::list<std::string>& list : lists) {
            const int count = static_cast<int>(random() % (round % 3 ? 60 : 1300));
            for (int i = 0; i < count; ++i) {
                const std::size_t length = random() % 8 ? random() % 50 : random() % 6000;
                list.push_back(std::string(length, static_cast<char>('a' + random() % 26)));
            }
        }
        test_server server(lists[0], lists[1]);
        ASSERT_EQ(bytes_at(server.bytes(), 48, 4513), expected_description(lists[0], lists[1]))
            << round;
        // The page's rest, behind the segment's own end, is as the system gave it.
        ASSERT_EQ(bytes_at(server.bytes(), 4561, 8192 - 4561), std::string(8192 - 4561, '\0'))
            << round;
    }
}

TEST_F(LinkServer, SetsInputsInsideTheCountAndIgnoresTheOthers) {
    test_server server(names("i", 5), {});
    const std::string before = bytes_at(server.bytes(), 0, 4561);
    for (const int index : {-1, 5, 6, 50, INT32_MAX, INT32_MIN}) server->setreset_input(index, 9);
    EXPECT_EQ(bytes_at(server.bytes(), 0, 4561), before);
    for (int i = 0; i < 5; ++i) server->setreset_input(i, -100 - i);
    for (int i = 0; i < 5; ++i)
        EXPECT_EQ(number_at<std::int32_t>(server.bytes(), 56 + 4 * i), -100 - i);
    EXPECT_EQ(number_at<std::int64_t>(server.bytes(), 0), 0) << "setting publishes nothing";
}

TEST_F(LinkServer, TheCountInTheSegmentDecidesAndTheSegmentsEndBounds) {
    test_server server({"a"}, {"A"});
    server->segment->nb_inputs = server->segment->nb_outputs = INT32_MAX;
    server->setreset_input(60, 77);  // runs into the outputs' values: entry 10 there
    EXPECT_EQ(server->output_value(10), 77);
    server->setreset_input(1125, 0x01020304);  // the last one inside
    EXPECT_EQ(bytes_at(server.bytes(), 4556, 5), std::string("\4\3\2\1\0", 5));
    EXPECT_EQ(server->output_value(1075), 0x01020304);
    for (const int index : {1126, 1127, 5000, INT32_MAX - 1}) {
        server->setreset_input(index, -1);
        EXPECT_EQ(server->output_value(index), 0) << index;
    }
    EXPECT_EQ(bytes_at(server.bytes(), 4556, 3700 - 64), "\4\3\2\1" + std::string(3700 - 68, '\0'));
}

TEST_F(LinkServer, ReadsOutputsWithoutTheLock) {
    test_server server({}, names("O", 3));
    sem_wait(&server->segment->lock);
    server->segment->output_values[2] = -5;
    EXPECT_EQ(server->output_value(2), -5);
    EXPECT_EQ(server->output_value(3), 0);
    EXPECT_EQ(server->output_value(-1), 0);
    EXPECT_EQ(server->output_value(INT32_MIN), 0);
    sem_post(&server->segment->lock);
}

TEST_F(LinkServer, PublishesByRaisingTheClockByOneWithoutTheLock) {
    test_server server;
    sem_wait(&server->segment->lock);
    for (int i = 0; i < 3; ++i) server->inputs_go();
    sem_post(&server->segment->lock);
    EXPECT_EQ(number_at<std::int64_t>(server.bytes(), 0), 3);
    server->segment->inputs_clock = INT64_MAX;
    server->inputs_go();
    EXPECT_EQ(number_at<std::int64_t>(server.bytes(), 0), INT64_MIN);
}

TEST_F(LinkServer, TerminatesByMinusOneWithoutTheLockAndAPublicationReopens) {
    test_server server;
    server->inputs_go();
    sem_wait(&server->segment->lock);
    server->sharing_terminate();
    sem_post(&server->segment->lock);
    EXPECT_EQ(number_at<std::int64_t>(server.bytes(), 0), -1);
    server->inputs_go();
    EXPECT_EQ(number_at<std::int64_t>(server.bytes(), 0), 0);
}

TEST_F(LinkServer, AnswersTheOutputsClockOfItsClients) {
    test_server server;
    server->segment->outputs_clock = 41;
    EXPECT_EQ(server->get_outputs_clock(), 41);
    IOsharemem_client client = quiet_client(server->memory_ident());
    const detach_at_end end{client};
    EXPECT_EQ(server->get_outputs_clock(), 0);
    client.outputs_refresh();
    client.outputs_refresh();
    EXPECT_EQ(server->get_outputs_clock(), 2);
}

TEST_F(LinkServer, ItsEndLeavesTheSegmentThere) {
    int ident = 0;
    const io_segment* segment = nullptr;
    {
        IOsharemem_server server({"a"}, {});
        ident = server.memory_ident();
        segment = server.segment;
    }
    shmid_ds status;
    ASSERT_EQ(shmctl(ident, IPC_STAT, &status), 0);
    EXPECT_EQ(status.shm_nattch, 1u);
    ASSERT_EQ(shmdt(segment), 0);
    ASSERT_EQ(shmctl(ident, IPC_RMID, nullptr), 0);
}

TEST_F(LinkServer, EachServerMakesASegmentOfItsOwn) {
    test_server one, other;
    EXPECT_NE(one->memory_ident(), other->memory_ident());
    one->setreset_input(0, 1);
    EXPECT_EQ(number_at<std::int32_t>(other.bytes(), 56), 0);
}

TEST_F(LinkServer, WithoutRoomForASegmentItReportsAndEndsTheProcess) {
    const outcome end = run_in_child([] {
        // A namespace of segments of its own, which allows none.
        std::FILE* limit = nullptr;
        if (unshare(CLONE_NEWIPC) != 0 || !(limit = std::fopen("/proc/sys/kernel/shmmni", "w")))
            _exit(77);
        std::fputs("0", limit);
        std::fclose(limit);
        IOsharemem_server server({"a"}, {});
    });
    if (end.status == 77) GTEST_SKIP() << "needs the rights to make an IPC namespace";
    EXPECT_EQ(end.status, 1);
    EXPECT_EQ(end.out, "");
    EXPECT_EQ(end.err,
              "IOshare: erreur sur partage memoire\nshmat() serveur refuse pour ident mem=-1\n\n");
}

}  // namespace
