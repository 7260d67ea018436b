// Who holds a segment, and which session is the youngest.
#include "ioshare/io_holders.h"

#include <signal.h>

#include "ioshare/io_observer.h"
#include "ioshare/io_sessions.h"
#include "tests/ioshare/test_segment.h"

namespace {

TEST(Holders, TellsAttachmentsForReadingFromOthers) {
    test_server server;
    const int ident = server->memory_ident();
    EXPECT_EQ(io_held(ident)->attached, 1u);
    EXPECT_EQ(io_held(ident)->last, getpid());
    EXPECT_EQ(io_reading_attachments(ident, getpid()), 0u);
    {
        const io_observer one(ident, io_access::read), other(ident, io_access::read),
            writer(ident, io_access::write);
        EXPECT_EQ(io_held(ident)->attached, 4u);
        EXPECT_EQ(io_reading_attachments(ident, getpid()), 2u);
        EXPECT_EQ(io_all_reading_attachments(ident), 2u);
    }
    EXPECT_EQ(io_held(ident)->attached, 1u);
    EXPECT_EQ(io_reading_attachments(ident, getpid()), 0u);
}

TEST(Holders, OfNothingThereIsNothing) {
    EXPECT_EQ(io_held(INT32_MAX), std::nullopt);
    EXPECT_EQ(io_reading_attachments(INT32_MAX, getpid()), 0u);
    EXPECT_EQ(io_reading_attachments(1, INT32_MAX), 0u);
    EXPECT_EQ(io_all_reading_attachments(INT32_MAX), 0u);
}

TEST(Sessions, TheYoungestLivingOneIsTheLastMadeWhoseEndNobodyHasAnnounced) {
    test_server first;
    test_server second;
    // Other programs of this user may start sessions meanwhile: only these two are compared.
    const std::optional<int> youngest = io_youngest_session();
    ASSERT_TRUE(youngest);
    EXPECT_NE(*youngest, first->memory_ident());
    second->sharing_terminate();
    EXPECT_NE(io_youngest_session(), second->memory_ident());
    first->sharing_terminate();
    EXPECT_NE(io_youngest_session(), first->memory_ident());
}

TEST(Sessions, ASessionWhoseMakerIsGoneDoesNotLive) {
    int line[2];
    ASSERT_EQ(pipe(line), 0);
    run_in_child([&line] {
        const IOsharemem_server server({"te"}, {"RENT"});
        if (write(line[1], &server.ident, sizeof server.ident) < 0) _exit(1);
    });
    int ident = 0;
    ASSERT_EQ(read(line[0], &ident, sizeof ident), static_cast<ssize_t>(sizeof ident));
    close(line[0]);
    close(line[1]);
    const io_observer held(ident, io_access::read);
    EXPECT_EQ(held.problem(), "");
    EXPECT_NE(io_youngest_session(), ident);
    shmctl(ident, IPC_RMID, nullptr);
}

}  // namespace
