// The client half: what it prints, reads and writes, against the raw bytes of a segment.
#include <sys/resource.h>

#include <atomic>
#include <chrono>
#include <thread>

#include "tests/ioshare/test_segment.h"

namespace {

class LinkClient : public testing::Test {
    leaves_nothing nothing_;
};

double seconds_of(const std::function<void()>& action) {
    const auto start = std::chrono::steady_clock::now();
    action();
    return seconds(std::chrono::steady_clock::now() - start).count();
}

/// How often this thread has let others run by itself, as a sleep does.
long times_slept() {
    rusage used{};
    getrusage(RUSAGE_THREAD, &used);
    return used.ru_nvcsw;
}

TEST_F(LinkClient, AttachesZeroesTheOutputsClockAndChangesNothingElse) {
    test_server server({"te", "ts"}, {"RENT"});
    server->segment->outputs_clock = 12;
    server->segment->output_values[0] = 1;
    server->setreset_input(1, 5);
    server->inputs_go();
    std::string expected = bytes_at(server.bytes(), 0, 4561);
    expected.replace(8, 8, 8, '\0');
    sem_wait(&server->segment->lock);  // attaching does not take the lock
    expected[16] = 0;
    IOsharemem_client client = quiet_client(server->memory_ident());
    const detach_at_end end{client};
    EXPECT_EQ(bytes_at(server.bytes(), 0, 4561), expected);
    EXPECT_EQ(client.nb_inputs, 2);
    EXPECT_EQ(client.nb_outputs, 1);
    EXPECT_EQ(client.last_clock, 0);
    EXPECT_EQ(client.inputs[0], 0);
    EXPECT_EQ(client.inputs[1], 0) << "nothing is taken before receive()";
    sem_post(&server->segment->lock);
}

TEST_F(LinkClient, HoldsItsFieldsInTheirOrder) {
    EXPECT_EQ(offsetof(IOsharemem_client, nb_inputs), 0u);
    EXPECT_EQ(offsetof(IOsharemem_client, nb_outputs), 4u);
    EXPECT_EQ(offsetof(IOsharemem_client, segment), 8u);
    EXPECT_EQ(offsetof(IOsharemem_client, inputs), 16u);
    EXPECT_EQ(offsetof(IOsharemem_client, last_clock), 24u);
    EXPECT_EQ(offsetof(IOsharemem_server, ident), 0u);
    EXPECT_EQ(offsetof(IOsharemem_server, segment), 8u);
}

TEST_F(LinkClient, RefusesIdentifierZeroBeforeAnyAttach) {
    const outcome end = run_in_child([] { IOsharemem_client client(0); });
    EXPECT_EQ(end.status, 1);
    EXPECT_EQ(end.out, "");
    EXPECT_EQ(end.err, "IOshare: erreur sur partage memoire\nident_mem ==0 !\n\n");
}

TEST_F(LinkClient, ReportsASegmentThatItCannotAttach) {
    for (const int ident : {-1, INT32_MIN, INT32_MAX}) {
        const outcome end = run_in_child([ident] { IOsharemem_client client(ident); });
        const std::string number = std::to_string(ident);
        EXPECT_EQ(end.status, 1);
        EXPECT_EQ(end.err, "ident_mem=" + number + "\nIOshare: erreur sur partage memoire\n" +
                               "shmat() client refuse pour ident mem=" + number + "\n\n");
    }
}

TEST_F(LinkClient, RefusesAForeignSegmentTooShortForTheLayoutAndLeavesItAlone) {
    for (const std::size_t size : {1u, 4096u, 4560u}) {
        raw_segment foreign(size);
        std::memset(foreign.bytes, 0x5A, size);
        const outcome end = run_in_child([&] { IOsharemem_client client(foreign.ident); });
        const std::string number = std::to_string(foreign.ident);
        EXPECT_EQ(end.status, 1);
        EXPECT_EQ(end.err, "ident_mem=" + number + "\nIOshare: erreur sur partage memoire\n" +
                               "shmat() client refuse pour ident mem=" + number + "\n\n");
        EXPECT_EQ(bytes_at(foreign.bytes, 0, size), std::string(size, '\x5A'));
    }
}

TEST_F(LinkClient, ReceivesNothingUntilAPublicationAfterTenMillisecondsEachTime) {
    test_server server;
    IOsharemem_client client = quiet_client(server->memory_ident());
    const detach_at_end end{client};
    server->setreset_input(2, 1);
    for (int i = 0; i < 5; ++i) {
        int status = -2;
        EXPECT_GE(seconds_of([&] { status = client.receive(); }), 0.010);
        EXPECT_EQ(status, 0);
        EXPECT_EQ(client.inputs[2], 0);
    }
}

TEST_F(LinkClient, TakesSeveralPublicationsAsOneWithTheLatestValues) {
    test_server server;
    IOsharemem_client client = quiet_client(server->memory_ident());
    const detach_at_end end{client};
    for (int value = 1; value <= 3; ++value) {
        server->setreset_input(0, value);
        server->inputs_go();
    }
    EXPECT_EQ(client.receive(), 1);
    EXPECT_EQ(client.last_clock, 3);
    EXPECT_EQ(client.input_is_set("te"), 3);
    EXPECT_EQ(client.receive(), 0);
}

TEST_F(LinkClient, ReadsItsCopyNotTheSegment) {
    test_server server;
    IOsharemem_client client = quiet_client(server->memory_ident());
    const detach_at_end end{client};
    server->setreset_input(1, INT32_MIN);
    server->inputs_go();
    ASSERT_EQ(client.receive(), 1);
    server->setreset_input(1, 8);
    EXPECT_EQ(client.input_is_set("ts"), INT32_MIN);
}

TEST_F(LinkClient, LearnsAtOnceThatTheSessionHasEnded) {
    test_server server;
    IOsharemem_client client = quiet_client(server->memory_ident());
    const detach_at_end end{client};
    server->inputs_go();
    for (const std::int64_t over : {std::int64_t{-1}, std::int64_t{-2}, INT64_MIN}) {
        server->segment->inputs_clock = over;
        sem_wait(&server->segment->lock);
        const long before = times_slept();
        EXPECT_EQ(client.receive(), -1);
        EXPECT_EQ(times_slept(), before);
        sem_post(&server->segment->lock);
    }
    EXPECT_EQ(client.last_clock, 0) << "the end takes no publication";
}

TEST_F(LinkClient, AClockThatWentBackIsNothingNew) {
    test_server server;
    IOsharemem_client client = quiet_client(server->memory_ident());
    const detach_at_end end{client};
    server->segment->inputs_clock = 5;
    EXPECT_EQ(client.receive(), 1);
    server->segment->inputs_clock = 4;
    EXPECT_EQ(client.receive(), 0);
    server->segment->inputs_clock = INT64_MAX;
    EXPECT_EQ(client.receive(), 1);
    EXPECT_EQ(client.last_clock, INT64_MAX);
}

TEST_F(LinkClient, ComparesNamesExactly) {
    test_server server({"te", "te ", "Te", "t", "tee", ""}, {});
    IOsharemem_client client = quiet_client(server->memory_ident());
    const detach_at_end end{client};
    for (int i = 0; i < 6; ++i) server->setreset_input(i, i + 1);
    server->inputs_go();
    ASSERT_EQ(client.receive(), 1);
    const struct {
        std::string name;
        int value;
    } rows[] = {{"te", 1}, {"te ", 2}, {"Te", 3},   {"t", 4},   {"tee", 5},
                {"", 6},   {"TE", 0},  {"teee", 0}, {" te", 0}, {std::string("te\0", 3), 0}};
    for (const auto& [name, value] : rows) EXPECT_EQ(client.input_is_set(name), value) << name;
}

TEST_F(LinkClient, OfInputsNamedAlikeTheLastOneWins) {
    test_server server({"a", "b", "a"}, {});
    IOsharemem_client client = quiet_client(server->memory_ident());
    const detach_at_end end{client};
    server->setreset_input(0, 1);
    server->inputs_go();
    ASSERT_EQ(client.receive(), 1);
    EXPECT_EQ(client.input_is_set("a"), 0);
    server->setreset_input(2, 4);
    server->inputs_go();
    ASSERT_EQ(client.receive(), 1);
    EXPECT_EQ(client.input_is_set("a"), 4);
}

TEST_F(LinkClient, WritesEveryOutputOfTheNameAtOnceAndUnlocked) {
    test_server server({}, {"A", "B", "A"});
    IOsharemem_client client = quiet_client(server->memory_ident());
    const detach_at_end end{client};
    sem_wait(&server->segment->lock);
    client.setreset_output("A", -7);
    client.setreset_output("unknown", 1);
    client.setreset_output("a", 1);
    sem_post(&server->segment->lock);
    EXPECT_EQ(server->output_value(0), -7);
    EXPECT_EQ(server->output_value(1), 0);
    EXPECT_EQ(server->output_value(2), -7);
    EXPECT_EQ(server->get_outputs_clock(), 0) << "a write raises no clock";
    EXPECT_EQ(number_at<std::int64_t>(server.bytes(), 0), 0);
}

TEST_F(LinkClient, RefreshRaisesTheOutputsClockAlsoAfterTheEnd) {
    test_server server;
    IOsharemem_client client = quiet_client(server->memory_ident());
    const detach_at_end end{client};
    client.outputs_refresh();
    client.outputs_refresh();
    EXPECT_EQ(number_at<std::int64_t>(server.bytes(), 8), 2);
    server->sharing_terminate();
    client.outputs_refresh();
    EXPECT_EQ(number_at<std::int64_t>(server.bytes(), 8), 3);
    int count = 0;
    sem_getvalue(&server->segment->lock, &count);
    EXPECT_EQ(count, 1) << "the lock is given back";
}

TEST_F(LinkClient, WithoutInputsItStillReceivesPublications) {
    test_server server({}, {});
    IOsharemem_client client = quiet_client(server->memory_ident());
    const detach_at_end end{client};
    server->inputs_go();
    EXPECT_EQ(client.receive(), 1);
    EXPECT_EQ(client.input_is_set(""), 0);
}

TEST_F(LinkClient, WaitsForTheLockWithoutTakingItFromItsHolder) {
    test_server server;
    IOsharemem_client client = quiet_client(server->memory_ident());
    const detach_at_end end{client};
    server->inputs_go();
    sem_wait(&server->segment->lock);
    std::atomic<bool> given_back = false;
    std::thread holder([&] {
        std::this_thread::sleep_for(std::chrono::milliseconds(300));
        given_back = true;
        sem_post(&server->segment->lock);
    });
    EXPECT_EQ(client.receive(), 1);
    EXPECT_TRUE(given_back);
    holder.join();
}

TEST_F(LinkClient, AHolderThatDiedDoesNotOutliveTheSession) {
    test_server server;
    IOsharemem_client client = quiet_client(server->memory_ident());
    const detach_at_end end{client};
    server->inputs_go();
    sem_wait(&server->segment->lock);  // and never again posted
    std::thread supervisor([&] {
        std::this_thread::sleep_for(std::chrono::milliseconds(100));
        server->sharing_terminate();
    });
    EXPECT_EQ(client.receive(), -1);
    server->setreset_input(0, 3);
    EXPECT_EQ(number_at<std::int32_t>(server.bytes(), 56), 3);
    EXPECT_EQ(server->get_outputs_clock(), 0);
    supervisor.join();
}

}  // namespace
