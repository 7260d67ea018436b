// Standard streams that the caller closed: in child processes.
#include <fcntl.h>
#include <unistd.h>

#include <gtest/gtest.h>

#include "ioshare/io_streams.h"
#include "tests/support/programs.h"

namespace {

constexpr int streams[] = {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO};

TEST(Streams, NoFileGetsTheNumberOfOneThatTheCallerClosed) {
    for (int closed = 1; closed < 8; ++closed) {
        const outcome end = run_in_child([closed] {
            for (const int stream : streams)
                if (closed >> stream & 1) close(stream);
            open_closed_streams(closed_stream::swallows);
            const int next = open("/dev/null", O_RDONLY);
            bool taken = true;
            for (const int stream : {1, 2})
                if (closed >> stream & 1) taken &= write(stream, "x", 1) == 1;
            char byte;
            if (closed & 1) taken &= read(0, &byte, 1) == 0;
            _exit(next > 2 && taken ? 0 : 1);
        });
        EXPECT_EQ(end.status, 0) << closed;
    }
}

TEST(Streams, AClosedOneThatShouldTakeNothingFailsWhoWritesOnIt) {
    const outcome end = run_in_child([] {
        close(1);
        open_closed_streams(closed_stream::takes_nothing);
        _exit(write(1, "x", 1) == -1 ? 7 : 8);
    });
    EXPECT_EQ(end.status, 7);
}

TEST(Streams, ThoseThatAreOpenStayAsTheyAre) {
    const outcome end = run_in_child([] {
        close(0);
        open_closed_streams(closed_stream::swallows);
        if (write(1, "out", 3) != 3 || write(2, "err", 3) != 3) _exit(1);
    });
    EXPECT_EQ(end.status, 0);
    EXPECT_EQ(end.out, "out");
    EXPECT_EQ(end.err, "err");
}

}  // namespace
