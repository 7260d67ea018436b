// How old a link's last publication is, whether its maker lives, whether it has ended.
#include "bridges/link_watch.h"

#include <signal.h>
#include <sys/wait.h>

#include "ioshare/io_clocks.h"
#include "tests/ioshare/test_segment.h"

namespace {

using namespace std::chrono_literals;

class LinkWatch : public testing::Test {
protected:
    void look_at(link_watch::clock::duration after) {
        link.look();
        watch.look(start + after);
    }
    int age_at(link_watch::clock::duration after) { return watch.age_tenths(start + after); }

    test_server server{{"te"}, {"RENT"}};
    io_observer link{server->memory_ident(), io_access::read};
    const link_watch::clock::time_point start = link_watch::clock::now();
    link_watch watch{server->memory_ident(), link, start};
};

TEST_F(LinkWatch, TheAgeCountsTenthsFromTheLookThatSawThePublication) {
    EXPECT_EQ(age_at(99ms), 0);
    EXPECT_EQ(age_at(100ms), 1);
    look_at(1s);
    EXPECT_EQ(age_at(1s), 10) << "nothing was published";
    server->inputs_go();
    look_at(2s);
    EXPECT_EQ(age_at(2s), 0);
    EXPECT_EQ(age_at(2550ms), 5);
    EXPECT_EQ(age_at(2s + 6553500ms), 65535);
    EXPECT_EQ(age_at(1000h), 65535);
}

TEST_F(LinkWatch, AnEndIsNoPublicationAndStays) {
    look_at(1s);
    EXPECT_EQ(watch.state(), link_state::live);
    EXPECT_FALSE(watch.ended());
    server->sharing_terminate();
    look_at(2s);
    EXPECT_EQ(watch.state(), link_state::ended);
    EXPECT_EQ(watch.ended(), start + 2s);
    EXPECT_EQ(age_at(2s), 20);
    io_write_clock(server->segment->inputs_clock, 7);
    look_at(3s);
    EXPECT_EQ(watch.state(), link_state::ended);
}

/// A segment whose maker has gone; with an end that it announced, or without.
class orphaned_segment {
public:
    explicit orphaned_segment(bool ended, bool waits = false) {
        int ends[2];
        if (pipe(ends) != 0) return;
        maker = fork();
        if (maker == 0) {
            IOsharemem_server made({"te"}, {"RENT"});
            if (ended) made.sharing_terminate();
            [[maybe_unused]] const auto told = write(ends[1], &made.ident, sizeof made.ident);
            if (waits)
                for (;;) pause();
            _exit(0);
        }
        [[maybe_unused]] const auto got = read(ends[0], &ident, sizeof ident);
        for (const int each : ends) close(each);
        if (!waits) waitpid(maker, nullptr, 0);
    }
    ~orphaned_segment() { shmctl(ident, IPC_RMID, nullptr); }

    int ident = -1;
    pid_t maker = -1;
};

TEST(LinkWatchOfOthers, AMakerThatIsGoneAtTheStartIsALostLinkUnlessItAnnouncedAnEnd) {
    for (const bool ended : {false, true}) {
        const orphaned_segment made(ended);
        const io_observer link(made.ident, io_access::read);
        const link_watch watch(made.ident, link, link_watch::clock::now());
        EXPECT_EQ(watch.state(), ended ? link_state::ended : link_state::lost);
    }
}

TEST(LinkWatchOfOthers, AMakerThatIsKilledIsALostLinkAlsoWhileNobodyHasWaitedForIt) {
    const orphaned_segment made(false, true);
    const io_observer link(made.ident, io_access::read);
    link_watch watch(made.ident, link, link_watch::clock::now());
    EXPECT_EQ(watch.state(), link_state::live);
    kill(made.maker, SIGKILL);
    EXPECT_TRUE(wait_until([&] {
        watch.look(link_watch::clock::now());
        return watch.state() == link_state::lost;
    }));
    waitpid(made.maker, nullptr, 0);
    // Somebody else ends it.
    void* const address = shmat(made.ident, nullptr, 0);
    io_end_session(*static_cast<io_segment*>(address));
    shmdt(address);
    io_observer again(made.ident, io_access::read);
    link_watch last(made.ident, again, link_watch::clock::now());
    EXPECT_EQ(last.state(), link_state::ended);
}

}  // namespace
