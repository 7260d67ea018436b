// Who counts as a client of a session: a look answers 0 exactly when one was there.
#include "session/client_watch.h"

#include <signal.h>
#include <sys/socket.h>
#include <unistd.h>

#include <thread>

#include "ioshare/io_observer.h"
#include "tests/ioshare/test_segment.h"

namespace {

class ClientWatch : public testing::Test {
protected:
    /// Whether a client is there, or was since the last look.
    bool seen() { return watch.seconds_alone() == 0; }
    std::vector<std::string> io(std::vector<std::string> words) {
        words.insert(words.begin(), {built("quorin-io"), ident});
        return words;
    }
    /// Waits until so many attachments exist.
    bool attached(unsigned long count) {
        return wait_until([&] { return io_held(server->memory_ident())->attached == count; });
    }
    void SetUp() override { EXPECT_FALSE(seen()) << "the watch begins alone"; }

    leaves_nothing nothing_;
    test_server server;
    // Nobody holds the segment but the programs of a test: what the test itself held, each child
    // would inherit.
    int let_go = shmdt(server->segment);
    std::string ident = std::to_string(server->memory_ident());
    client_watch watch{server->memory_ident(), 0};
};

TEST_F(ClientWatch, CountsTheSecondsSinceItBegan) {
    const double first = watch.seconds_alone();
    std::this_thread::sleep_for(std::chrono::milliseconds(20));
    EXPECT_GE(watch.seconds_alone(), first + 0.02);
}

TEST_F(ClientWatch, AClientThatStaysIsSeenUntilItHasGone) {
    program client(io({"pulse", "RENT", "--for", "1000"}));
    ASSERT_TRUE(attached(1));
    EXPECT_TRUE(seen());
    EXPECT_TRUE(seen());
    client.signal(SIGTERM);
    client.wait();
    EXPECT_TRUE(seen()) << "it was there since the last look";
    EXPECT_FALSE(seen());
}

TEST_F(ClientWatch, AClientThatAnnouncesNothingIsSeenThoughItCameAndWent) {
    run_in_child([this] { IOsharemem_client client(server->memory_ident()); });
    EXPECT_TRUE(seen());
    EXPECT_FALSE(seen());
}

TEST_F(ClientWatch, ASettingIsSeenAlsoWhenObserversCameAfterIt) {
    EXPECT_EQ(run_program(io({"set", "RENT=1"})).status, 0);
    EXPECT_EQ(run_program(io({"get", "te"})).status, 0);
    EXPECT_EQ(run_program(io({"list"})).status, 0);
    EXPECT_TRUE(seen());
    EXPECT_FALSE(seen());
}

TEST_F(ClientWatch, AnObserverThatStaysIsNoClient) {
    program observer(io({"watch"}));
    ASSERT_TRUE(attached(1));
    for (int i = 0; i < 5; ++i) EXPECT_FALSE(seen());
    program client(io({"pulse", "RENT", "--for", "1000"}));
    ASSERT_TRUE(attached(2));
    EXPECT_TRUE(seen()) << "a client beside it is one";
}

TEST_F(ClientWatch, AKilledObserverWasNoClient) {
    program observer(io({"watch"}));
    ASSERT_TRUE(attached(1));
    EXPECT_FALSE(seen());
    observer.signal(SIGKILL);
    observer.wait();
    EXPECT_FALSE(seen());
    EXPECT_FALSE(seen());
}

TEST_F(ClientWatch, ObserversThatComeAndGoAllTheTimeAreNoClients) {
    program loop({"sh", "-c",
                  "i=0; while [ $i -lt 200 ]; do i=$((i + 1)); " + built("quorin-io") + " " +
                      ident + " get te >/dev/null || exit 1; done"});
    int looks = 0;
    for (; loop.running(); ++looks) {
        EXPECT_FALSE(seen()) << looks;
        std::this_thread::sleep_for(std::chrono::milliseconds(looks % 2 ? 5 : 60));
    }
    EXPECT_FALSE(seen());
    EXPECT_EQ(loop.wait(), 0);
}

TEST_F(ClientWatch, AnObserverThatAnnouncedItselfLongAgoIsStillKnown) {
    program observer(io({"watch"}));
    ASSERT_TRUE(attached(1));
    EXPECT_FALSE(seen());
    std::this_thread::sleep_for(std::chrono::seconds(6));
    EXPECT_FALSE(seen());
    EXPECT_FALSE(seen());
}

void send_to_watch(int ident, const void* bytes, std::size_t length) {
    const int line = socket(AF_UNIX, SOCK_DGRAM, 0);
    socklen_t size = 0;
    const sockaddr_un address = io_announcement_address(ident, size);
    sendto(line, bytes, length, MSG_DONTWAIT, reinterpret_cast<const sockaddr*>(&address), size);
    close(line);
}

TEST_F(ClientWatch, GarbageAnnouncesNobody) {
    const std::string rows[] = {
        "", "x", "rr", "ww", "rw", std::string(1000, 'r'), std::string(1, '\0')};
    for (const std::string& each : rows)
        send_to_watch(server->memory_ident(), each.data(), each.size());
    EXPECT_FALSE(seen());
    run_in_child([&] {
        send_to_watch(server->memory_ident(), "x", 1);
        IOsharemem_client client(server->memory_ident());
    });
    EXPECT_TRUE(seen()) << "a client that sent something else is a client";
}

TEST_F(ClientWatch, AnotherUsersAnnouncementsCountForNothing) {
    if (geteuid() != 0) GTEST_SKIP() << "only root may become another user";
    run_in_child([&] {
        if (setuid(65534) != 0) _exit(1);
        send_to_watch(server->memory_ident(), "w", 1);
    });
    EXPECT_FALSE(seen());
}

TEST_F(ClientWatch, TheSecondWatchOfASegmentTakesObserversForClients) {
    client_watch second(server->memory_ident(), 0);
    EXPECT_EQ(second.descriptor(), -1);
    EXPECT_GE(watch.descriptor(), 0);
    EXPECT_EQ(run_program(io({"get", "te"})).status, 0);
    EXPECT_EQ(second.seconds_alone(), 0);
    EXPECT_FALSE(seen());
}

}  // namespace
