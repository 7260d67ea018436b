// The link as a reader of a session: what is stored, and when it is published.
#include <gtest/gtest.h>
#include <sys/shm.h>

#include <thread>

#include "ioshare/io_clocks.h"
#include "ioshare/io_slots.h"
#include "session/link_publisher.h"
#include "tests/session/recorded_run.h"

namespace {

/// The tests' station on a segment of its own.
struct published_run : recorded_run {
    published_run() { run.add_reader(publisher); }
    ~published_run() {
        shmctl(server.ident, IPC_RMID, nullptr);
        shmdt(server.segment);
    }
    std::vector<int> stored() const {
        std::vector<int> values;
        for (int i = 0; i < 3; ++i)
            values.push_back(io_value(*server.segment, io_direction::input, i));
        return values;
    }
    std::int64_t clock() const { return server.segment->inputs_clock; }

    IOsharemem_server server{{"s1", "s2", "s3"}, {"C1", "C2"}};
    link_publisher publisher{server};
};

using values = std::vector<int>;

TEST(LinkPublisher, PublishesTheFirstStateOnce) {
    published_run test;
    test.model.sensors = {1, 0, 1};
    const std::int64_t before = test.clock();
    test.run.begin("");
    EXPECT_EQ(test.stored(), (values{1, 0, 1}));
    EXPECT_EQ(test.clock(), before + 1);
}

TEST(LinkPublisher, PublishesOnceAStepAndOnlyWhenAnInputChanged) {
    published_run test;
    test.run.begin("");
    const std::int64_t before = test.clock();
    test.model.happens = [](fake_station& model) { model.sensors = {1, 1, 1}; };
    test.step();
    EXPECT_EQ(test.stored(), (values{1, 1, 1}));
    EXPECT_EQ(test.clock(), before + 1);
    test.model.happens = [](fake_station& model) {
        model.wrong = {{20, "choc"}};
        model.made = {1, 1};
    };
    test.given = {1, 1};
    test.step();
    EXPECT_EQ(test.clock(), before + 1) << "no input changed";
    test.model.happens = [](fake_station& model) { model.sensors = {1, 0, 1}; };
    test.step();
    EXPECT_EQ(test.stored(), (values{1, 0, 1}));
    EXPECT_EQ(test.clock(), before + 2);
}

TEST(LinkPublisher, StoresOnlyWhatChanged) {
    published_run test;
    test.run.begin("");
    io_store_value(*test.server.segment, io_direction::input, 0, 77);
    test.model.happens = [](fake_station& model) { model.sensors = {0, 1, 0}; };
    test.step();
    EXPECT_EQ(test.stored(), (values{77, 1, 0})) << "the first is as it was: not written again";
}

TEST(LinkPublisher, PublishesWhatFaultsShow) {
    published_run test;
    EXPECT_TRUE(test.run.set_fault({"s2", fault_kind::stuck1}));
    test.run.begin("");
    EXPECT_EQ(test.stored(), (values{0, 1, 0}));
    EXPECT_TRUE(test.run.set_fault({"s3", fault_kind::inverted}));
    EXPECT_TRUE(test.run.end_fault("s2"));
    test.step();
    EXPECT_EQ(test.stored(), (values{0, 0, 1}));
}

TEST(LinkPublisher, ASessionThatIsOverIsNeverReopened) {
    for (const std::int64_t over : {std::int64_t{-1}, std::int64_t{-5}, INT64_MIN}) {
        published_run test;
        test.run.begin("");
        test.server.segment->inputs_clock = over;
        test.model.happens = [](fake_station& model) { model.sensors = {1, 1, 1}; };
        for (int i = 0; i < 10; ++i) {
            test.model.sensors = {0, 0, 0};
            test.step();
            EXPECT_EQ(test.clock(), over);
        }
        EXPECT_EQ(test.stored(), (values{1, 1, 1})) << "what a last step changes is there";
    }
}

TEST(LinkPublisher, AnEndThatComesWhileItStoresStays) {
    for (const std::int64_t over : {std::int64_t{-1}, std::int64_t{-5}, INT64_MIN}) {
        published_run test;
        test.run.begin("");
        test.model.happens = [](fake_station& model) { model.sensors = {1, 1, 1}; };
        ASSERT_EQ(sem_trywait(&test.server.segment->lock), 0);
        std::thread client([&] {
            std::this_thread::sleep_for(std::chrono::milliseconds(50));
            io_write_clock(test.server.segment->inputs_clock, over);
        });
        test.step();
        client.join();
        EXPECT_EQ(test.clock(), over);
    }
}

TEST(LinkPublisher, PublishesUpToTheLargestClockAndNotBeyond) {
    published_run test;
    test.run.begin("");
    test.server.segment->inputs_clock = INT64_MAX - 1;
    for (const int value : {1, 0, 1}) {
        test.model.happens = [value](fake_station& model) { model.sensors = {value, 0, 0}; };
        test.step();
        EXPECT_EQ(test.clock(), INT64_MAX);
    }
}

}  // namespace
