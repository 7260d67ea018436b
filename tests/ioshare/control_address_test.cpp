// Where the control socket of a session is looked for.
#include "session/control_address.h"

#include <sys/socket.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdlib>

namespace {

TEST(ControlAddress, IsInTheRuntimeFolderElseInOneOfTheUsersOwn) {
    const struct {
        const char* runtime_folder;
        unsigned user;
        const char* folder;
    } rows[] = {
        {"/run/user/7", 7, "/run/user/7/quorin"}, {"/", 7, "//quorin"},
        {"", 1000, "/tmp/quorin-1000"},           {"", 0, "/tmp/quorin-0"},
        {"run", 1000, "/tmp/quorin-1000"},        {"./run", 4294967294, "/tmp/quorin-4294967294"}};
    for (const auto& [runtime_folder, user, folder] : rows)
        EXPECT_EQ(control_folder(runtime_folder, user), folder) << runtime_folder;
    EXPECT_EQ(control_path("/run/user/7/quorin", 12), "/run/user/7/quorin/12");
}

TEST(ControlAddress, OfThisProcessFollowsItsEnvironmentAndUser) {
    setenv("XDG_RUNTIME_DIR", "/some/where", 1);
    EXPECT_EQ(control_folder(), "/some/where/quorin");
    unsetenv("XDG_RUNTIME_DIR");
    EXPECT_EQ(control_folder(), "/tmp/quorin-" + std::to_string(geteuid()));
}

TEST(ControlAddress, OfASocketHoldsAPathOf107BytesAtMost) {
    const std::string longest(107, 'x');
    ASSERT_TRUE(socket_address(longest));
    EXPECT_EQ(socket_address(longest)->sun_family, AF_UNIX);
    EXPECT_EQ(socket_address(longest)->sun_path, longest);
    EXPECT_FALSE(socket_address(longest + 'x'));
}

}  // namespace
