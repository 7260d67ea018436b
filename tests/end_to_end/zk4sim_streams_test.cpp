// zk4sim on standard streams that take nothing.
#include <fcntl.h>
#include <unistd.h>

#include "tests/end_to_end/zk4sim_session.h"

namespace {

/// A pipe that is full until it is emptied; a program reaches it by its path.
class full_pipe {
public:
    full_pipe() {
        if (pipe2(ends_, O_CLOEXEC | O_NONBLOCK) != 0) return;
        const char bytes[4096] = {};
        while (write(ends_[1], bytes, sizeof bytes) > 0) {
        }
    }
    ~full_pipe() {
        for (const int each : ends_) close(each);
    }
    full_pipe(const full_pipe&) = delete;
    full_pipe& operator=(const full_pipe&) = delete;

    std::string path() const {
        return "/proc/" + std::to_string(getpid()) + "/fd/" + std::to_string(ends_[1]);
    }
    /// What was in it.
    std::string empty() const {
        std::string all;
        char bytes[4096];
        for (ssize_t count; (count = read(ends_[0], bytes, sizeof bytes)) > 0;)
            all.append(bytes, static_cast<std::size_t>(count));
        return all.substr(std::min(all.find_first_not_of('\0'), all.size()));
    }

private:
    int ends_[2] = {-1, -1};
};

std::vector<std::string> redirected(const std::string& options, const std::string& redirection) {
    return {"sh", "-c", "exec " + built("zk4sim") + " --headless " + options + " " + redirection};
}

TEST_F(Zk4sim, AFirstLineThatNobodyCanReadIsStatusOne) {
    const full_pipe full;
    for (const std::string& stream : {std::string("/dev/full"), full.path()}) {
        for (const char* const options : {"--no-panel", "--panel 'touch /nowhere/x'",
                                          "--exec 'echo the command was started'"}) {
            const outcome end = run_program(redirected(options, ">" + stream));
            EXPECT_EQ(end.status, 1) << options << stream;
            EXPECT_EQ(lines_in(end.err), 1) << end.err;
            EXPECT_EQ(end.err.rfind("zk4sim: ", 0), 0u) << end.err;
        }
    }
}

TEST_F(Zk4sim, AFullErrorStreamDoesNotFreezeTheStation) {
    const full_pipe full;
    controlled_station running(
        std::make_unique<program>(redirected("--no-panel --speed 20", "2>" + full.path())));
    ASSERT_NE(running.ident, "");
    EXPECT_EQ(running.io({"set", "DEPOSE=1"}).status, 0);
    ASSERT_TRUE(wait_until([&] { return running.told("incidents") == "1"; }));
    EXPECT_EQ(running.io({"set", "BZ1=1"}).status, 0);
    EXPECT_EQ(running.io({"wait", "b1s=1", "--timeout", "15"}).status, 0);
    EXPECT_EQ(full.empty(), "");
    EXPECT_EQ(running.end(), 0);
    EXPECT_EQ(full.empty(),
              "zk4sim: messages perdus: 1\nzk4sim: fin demandée\n"
              "bilan: bonnes=0 mauvaises=0 incidents=1\n");
}

TEST_F(Zk4sim, AFullErrorStreamDoesNotHoldUpItsEnd) {
    const full_pipe full;
    controlled_station running(
        std::make_unique<program>(redirected("--no-panel", "2>" + full.path())));
    const attached_segment segment(running.ident);
    EXPECT_EQ(running.end(), 0);
    EXPECT_TRUE(segment.session_over());
}

TEST_F(Zk4sim, AnErrorStreamWhoseReaderHasGoneDoesNotEndIt) {
    program running({"sh", "-c",
                     "exec 3>&1; { " + built("zk4sim") +
                         " --headless --no-panel --duration 0.5; echo $? >&3; } 2>&1 >&3 | true"});
    ASSERT_NE(wait_for_ident(running), "");
    EXPECT_EQ(running.wait(), 0);
    EXPECT_TRUE(wait_until([&] { return lines_in(running.out()) == 2; }));
    EXPECT_TRUE(running.out().ends_with("\n0\n")) << running.out();
}

}  // namespace
