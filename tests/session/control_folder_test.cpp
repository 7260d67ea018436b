// The folder of control sockets: where it is, who may own it, and what is left in it.
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>

#include <cerrno>
#include <fstream>
#include <memory>
#include <thread>

#include "session/control_folder.h"
#include "session/control_socket.h"
#include "tests/session/served_socket.h"
#include "tests/support/programs.h"

namespace {

namespace files = std::filesystem;

/// Why there is no control socket; empty when there is one.
std::string refusal_of_a_socket(int ident = 12) {
    try {
        const control_socket socket(ident);
        return "";
    } catch (const failure& why) {
        EXPECT_EQ(why.status, exit_status::refused);
        EXPECT_EQ(why.why.find('\n'), std::string::npos) << why.why;
        return why.why;
    }
}

testing::AssertionResult is_refused(const std::string& folder) {
    const std::string why = refusal_of_a_socket();
    if (why.find(folder) != std::string::npos) return testing::AssertionSuccess();
    return testing::AssertionFailure() << "\"" << why << "\" does not name " << folder;
}

/// A listener, or what one leaves that is killed.
void leave_a_dead_socket(const std::string& path) { close(listen_at(path)); }

TEST(ControlFolder, IsInTheUsersRuntimeFolderElseInTmp) {
    const std::string in_tmp = "/tmp/quorin-" + std::to_string(geteuid());
    {
        const runtime_folder folder;
        EXPECT_EQ(control_folder(), folder.path / "quorin");
    }
    EXPECT_EQ(control_folder(), in_tmp);
    setenv("XDG_RUNTIME_DIR", "", 1);
    EXPECT_EQ(control_folder(), in_tmp);
    unsetenv("XDG_RUNTIME_DIR");
}

TEST(ControlFolder, IsMadeForItsUserAlone) {
    const runtime_folder folder;
    const control_socket socket(12);
    struct stat status;
    ASSERT_EQ(stat(control_folder().c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 07777, 0700u);
    ASSERT_EQ(stat(control_socket_path(12).c_str(), &status), 0);
    EXPECT_TRUE(S_ISSOCK(status.st_mode));
    EXPECT_EQ(status.st_mode & 077, 0u);
}

TEST(ControlFolder, OneThatOthersMayEnterIsRefusedInOneLine) {
    for (const mode_t mode : {0755u, 0710u, 0701u, 0750u, 0770u, 0777u, 01777u, 0720u}) {
        const runtime_folder folder;
        mkdir(control_folder().c_str(), 0700);
        chmod(control_folder().c_str(), mode);
        EXPECT_TRUE(is_refused(control_folder())) << std::oct << mode;
        EXPECT_FALSE(files::exists(control_socket_path(12)));
        chmod(control_folder().c_str(), 0700);
        EXPECT_EQ(refusal_of_a_socket(), "");
    }
}

TEST(ControlFolder, OneOfAnotherOwnerIsRefused) {
    if (geteuid() != 0) GTEST_SKIP() << "only root may give a folder away";
    const runtime_folder folder;
    mkdir(control_folder().c_str(), 0700);
    ASSERT_EQ(chown(control_folder().c_str(), 65534, 65534), 0);
    EXPECT_TRUE(is_refused(control_folder()));
    EXPECT_TRUE(files::is_empty(control_folder()));
}

TEST(ControlFolder, WhatIsNoFolderIsRefusedAndLeftAlone) {
    const runtime_folder folder;
    const files::path safe = folder.path / "safe";
    mkdir(safe.c_str(), 0700);
    for (const files::path& target : {folder.path / "nowhere", safe}) {
        files::create_symlink(target, control_folder());
        EXPECT_TRUE(is_refused(control_folder())) << "a link to " << target;
        EXPECT_TRUE(files::is_symlink(control_folder()));
        files::remove(control_folder());
    }
    std::ofstream(control_folder()) << "text";
    EXPECT_TRUE(is_refused(control_folder()));
    EXPECT_EQ(files::file_size(control_folder()), 4u);
}

TEST(ControlFolder, ARuntimeFolderThatIsNotThereOrTooLongIsRefused) {
    const runtime_folder folder;
    for (const std::string& name : {std::string("/nowhere"), "/" + std::string(100, 'd')}) {
        const std::string path = folder.path.string() + name;
        if (name.size() > 100) files::create_directory(path);
        setenv("XDG_RUNTIME_DIR", path.c_str(), 1);
        EXPECT_TRUE(is_refused(control_folder()));
    }
}

TEST(ControlFolder, ASocketThatTheSystemRefusesIsRefusedWithItsReason) {
    const runtime_folder folder;
    const std::string path = folder.path / "12";
    rlimit before{};
    ASSERT_EQ(getrlimit(RLIMIT_NOFILE, &before), 0);
    const rlimit none{0, before.rlim_max};
    ASSERT_EQ(setrlimit(RLIMIT_NOFILE, &none), 0);
    std::string why;
    try {
        close(listen_at(path));
    } catch (const failure& refused) {
        why = refused.why;
    }
    setrlimit(RLIMIT_NOFILE, &before);
    EXPECT_TRUE(why.ends_with("12: trop de fichiers ouverts")) << why;
}

TEST(ControlFolder, TheSocketIsGoneWithItsObject) {
    const runtime_folder folder;
    { const control_socket socket(12); }
    EXPECT_TRUE(files::is_empty(control_folder()));
}

TEST(ControlFolder, SocketsOfDeadSessionsGoWhenTheNextStartsAndOnlyThose) {
    const runtime_folder folder;
    const control_socket living(1);
    leave_a_dead_socket(control_socket_path(2));
    leave_a_dead_socket(control_socket_path(12));
    std::ofstream(control_folder() + "/3") << "no socket";
    {
        const control_socket next(12);
        EXPECT_TRUE(control_client(control_socket_path(12)).connected());
        EXPECT_FALSE(files::exists(control_socket_path(2)));
        EXPECT_TRUE(files::exists(control_socket_path(3)));
    }
    EXPECT_TRUE(control_client(control_socket_path(1)).connected());
}

// Sessions of two IPC namespaces may have the same identifier.
TEST(ControlFolder, ALivingSocketIsNotTakenByAnotherOfItsIdentifier) {
    const runtime_folder folder;
    const control_socket living(12);
    const std::string path = control_socket_path(12);
    EXPECT_EQ(refusal_of_a_socket(12),
              "prise de contrôle " + path + ": une autre session y répond");
    EXPECT_TRUE(control_client(path).connected());
    EXPECT_EQ(std::distance(files::directory_iterator(control_folder()), {}), 1)
        << "none beside it";
}

TEST(ControlFolder, OneDeadSocketIsRemovedAloneAndALivingOneNever) {
    const runtime_folder folder;
    const control_socket living(1);
    for (const int ident : {2, 3}) leave_a_dead_socket(control_socket_path(ident));
    for (const int ident : {1, 2, 4}) remove_dead_socket(control_socket_path(ident));
    EXPECT_TRUE(control_client(control_socket_path(1)).connected());
    EXPECT_FALSE(files::exists(control_socket_path(2)));
    EXPECT_TRUE(files::exists(control_socket_path(3)));
}

bool makes_its_socket_again_and_again(int ident) try {
    for (int i = 0; i < 300; ++i) {
        const control_socket socket(ident);
        if (!control_client(control_socket_path(ident)).connected()) return false;
    }
    return true;
} catch (const failure&) {
    return false;
}

// Each of several processes makes its socket again and again: none may take another's for dead
// while it is being made.
// A process that dies closes its listener some time after it closed what others wait for.
TEST(ControlFolder, TheSocketOfASessionThatIsDyingIsRemovedOnceItLetGo) {
    const runtime_folder folder;
    prepare_control_folder();
    for (const int late_ms : {0, 100}) {
        const std::string path = control_path(control_folder(), 12);
        const int listener = listen_at(path);
        std::thread dying([&] {
            std::this_thread::sleep_for(std::chrono::milliseconds(late_ms));
            close(listener);
        });
        remove_socket_of(getpid(), 12);
        EXPECT_FALSE(files::exists(path)) << late_ms;
        dying.join();
    }
}

TEST(ControlFolder, SessionsThatStartAtOnceDoNotRemoveOneAnother) {
    const runtime_folder folder;
    std::vector<pid_t> children;
    for (int child = 1; child <= 6; ++child) {
        children.push_back(fork());
        if (children.back() == 0) _exit(makes_its_socket_again_and_again(child) ? 0 : 1);
    }
    for (const pid_t each : children) {
        int status = -1;
        waitpid(each, &status, 0);
        EXPECT_EQ(status, 0);
    }
    EXPECT_TRUE(files::is_empty(control_folder()));
}

// One that was killed between making its socket and giving it its name leaves it unfinished.
TEST(ControlFolder, AStartThatWasKilledInItsMiddleLeavesNothingAfterTheNext) {
    const runtime_folder folder;
    for (int i = 0; i < 100; ++i) {
        const pid_t starting = fork();
        if (starting == 0)
            for (;;) refusal_of_a_socket(5);
        std::this_thread::sleep_for(std::chrono::microseconds(300 + 37 * i));
        kill(starting, SIGKILL);
        waitpid(starting, nullptr, 0);
        EXPECT_EQ(refusal_of_a_socket(12), "");
        ASSERT_TRUE(files::is_empty(control_folder())) << i;
    }
}

}  // namespace
