// Many clients at once at the control socket, most of them wrong or stuck.
#include <gtest/gtest.h>
#include <sys/resource.h>

#include <list>
#include <random>

#include "tests/session/served_socket.h"

namespace {

TEST(ControlCrowd, GoodRequestsAreAnsweredBesideAHundredStalledClients) {
    served_socket test;
    std::list<control_client> stalled;
    for (int i = 0; i < 100; ++i) {
        stalled.emplace_back(control_socket_path(test.ident));
        ASSERT_TRUE(stalled.back().connected());
        if (i % 2) stalled.back().send_bytes("stat");
        test.serve();
    }
    for (int i = 0; i < 100; ++i) EXPECT_EQ(test.answer_to("status\n"), "0\ndone: status\n");
    for (const control_client& each : stalled) EXPECT_FALSE(each.heard());
    test.serve(1001);
    for (const control_client& each : stalled) EXPECT_EQ(each.answer(0), "");
    EXPECT_EQ(test.answer_to("status\n"), "0\ndone: status\n");
}

TEST(ControlCrowd, GoodRequestsAreAnsweredAmongTenThousandMalformedOnes) {
    served_socket test;
    std::mt19937 random(29);
    for (int i = 0; i < 10'000; ++i) {
        std::string bytes(random() % (i % 100 ? 40 : 6000), ' ');
        for (char& each : bytes) each = static_cast<char>(random());
        const std::string answer = test.answer_to("\x01" + bytes + "\n");
        ASSERT_TRUE(answer.starts_with("2\n")) << testing::PrintToString(bytes) << answer;
        if (i % 100) continue;
        EXPECT_EQ(test.answer_to("status\n"), "0\ndone: status\n");
    }
    EXPECT_EQ(test.requests.size(), 100u);
}

TEST(ControlCrowd, OneCallDoesABoundedAmountOfWork) {
    served_socket test;
    std::list<control_client> crowd;
    for (int i = 0; i < 200; ++i)
        crowd.emplace_back(control_socket_path(test.ident)).send_bytes("x\n");
    test.socket.service(test.start, test.carry_out);
    test.socket.service(test.start, test.carry_out);
    EXPECT_LT(test.requests.size(), crowd.size());
    test.serve();
    for (const control_client& each : crowd) EXPECT_EQ(each.answer(0), "0\ndone: x\n");
}

TEST(ControlCrowd, WhoeverWaitsForAnAnswerKeepsItsPlaceInAnyCrowd) {
    served_socket test;
    test.carry_out = [](const std::string&) { return std::nullopt; };
    const control_client waiting(control_socket_path(test.ident));
    waiting.send_bytes("step 1\n");
    test.serve();
    std::list<control_client> crowd;
    for (int i = 0; i < 600; ++i) {
        crowd.emplace_back(control_socket_path(test.ident));
        test.serve();
    }
    EXPECT_FALSE(waiting.heard());
    test.socket.answer_waiting(test.start, {exit_status::done, ""});
    EXPECT_EQ(waiting.answer(0), "0\n");
}

// Descriptors that run out are the others' trouble as much as ours: no busy loop, and all is well
// once there are some again.
TEST(ControlCrowd, GoesOnOnceDescriptorsThatRanOutAreBack) {
    served_socket test;
    const control_client waiting(control_socket_path(test.ident));
    waiting.send_bytes("status\n");
    rlimit before;
    getrlimit(RLIMIT_NOFILE, &before);
    const int free = dup(0);
    close(free);
    rlimit none = before;
    none.rlim_cur = static_cast<rlim_t>(free);
    setrlimit(RLIMIT_NOFILE, &none);
    for (int i = 0; i < 10; ++i) test.socket.service(test.start, test.carry_out);
    setrlimit(RLIMIT_NOFILE, &before);
    test.serve();
    const control_client next(control_socket_path(test.ident));
    next.send_bytes("status\n");
    test.serve(100);
    EXPECT_EQ(next.answer(0), "0\ndone: status\n");
}

}  // namespace
