// The process that sets every output to 0 when the one that commands dies.
#include "bridges/coil_guard.h"

#include <poll.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include "tests/ioshare/test_segment.h"

namespace {

class CoilGuard : public testing::Test {
protected:
    /// A process that commands, under guard, and then does something.
    outcome commander(const std::function<void()>& then) {
        return run_in_child([&] {
            io_observer link(server->memory_ident(), io_access::write);
            const coil_guard guard(link, "essai-garde", "essai: parti");
            if (!guard.there()) _exit(77);
            for (int i = 0; i < link.outputs(); ++i) link.write(i, 1);
            then();
        });
    }
    std::string outputs() {
        return std::to_string(server->output_value(0)) + std::to_string(server->output_value(1));
    }

    test_server server{{"te"}, {"RENT", "RENT"}};
};

TEST_F(CoilGuard, ActsWhenItsMakerIsKilledWithItsWholeGroup) {
    for (const bool group : {false, true}) {
        const outcome end = commander([&] {
            if (group) setpgid(0, 0);
            kill(group ? 0 : getpid(), SIGKILL);
            pause();
        });
        EXPECT_EQ(end.status, 128 + SIGKILL);
        EXPECT_TRUE(wait_until([&] { return outputs() == "00"; })) << group;
    }
}

TEST_F(CoilGuard, DoesNothingWhenItIsLetGo) {
    const outcome end = commander([] {});
    EXPECT_EQ(end.status, 0);
    EXPECT_EQ(end.err, "");
    EXPECT_EQ(outputs(), "11");
}

TEST_F(CoilGuard, ItsDeathIsSeenOnTheLine) {
    io_observer link(server->memory_ident(), io_access::write);
    const coil_guard guard(link, "essai-garde", "essai: parti");
    pollfd line{guard.line(), 0, 0};
    EXPECT_EQ(poll(&line, 1, 0), 0);
    ASSERT_TRUE(wait_until([] { return child_named(getpid(), "essai-garde") != 0; }));
    kill(child_named(getpid(), "essai-garde"), SIGKILL);
    EXPECT_EQ(poll(&line, 1, 10'000), 1);
    EXPECT_TRUE(line.revents & POLLHUP);
}

}  // namespace
