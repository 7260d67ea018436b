// The system's refusals in French, and whose word is taken.
#include "session/system_errors.h"

#include <gtest/gtest.h>
#include <sys/socket.h>
#include <unistd.h>

#include <cerrno>
#include <set>

#include "session/failure.h"
#include "session/trusted_user.h"

namespace {

TEST(SystemErrorWords, SayTheCommonestInFrenchAndNumberTheOthers) {
    const struct {
        int number;
        std::string words;
    } rows[] = {{ENOENT, "fichier ou dossier introuvable"},
                {EACCES, "accès refusé"},
                {ENOSPC, "plus de place sur le disque"},
                {EISDIR, "c'est un dossier"},
                {EFBIG, "fichier trop grand"},
                {EMFILE, "trop de fichiers ouverts"},
                {0, "erreur 0"},
                {-1, "erreur -1"},
                {EREMOTEIO, "erreur 121"},
                {100'000, "erreur 100000"}};
    for (const auto& [number, words] : rows) EXPECT_EQ(system_error_words(number), words);
}

TEST(SystemErrorWords, AreOneLineEachAndAnotherForEachError) {
    std::set<std::string> all;
    for (const int number : {EPERM, ENOENT, EIO, ENXIO, ENOMEM, EACCES, EEXIST, ENOTDIR, EISDIR,
                             EMFILE, ENFILE, EFBIG, ENOSPC, EROFS, EPIPE, ENAMETOOLONG, ELOOP}) {
        const std::string words = system_error_words(number);
        EXPECT_NE(words, "erreur " + std::to_string(number));
        EXPECT_EQ(words.find('\n'), std::string::npos) << number;
        EXPECT_TRUE(all.insert(words).second) << words;
    }
}

TEST(OrRefuse, HandsOnWhatIsNoErrorAndRefusesWithTheReason) {
    EXPECT_EQ(or_refuse(0, "essai"), 0);
    EXPECT_EQ(or_refuse(7, "essai"), 7);
    try {
        or_refuse(dup(-1), "essai");
        ADD_FAILURE() << "not refused";
    } catch (const failure& why) {
        EXPECT_EQ(why.status, exit_status::refused);
        EXPECT_EQ(why.why, "essai: " + system_error_words(EBADF));
    }
}

TEST(TrustedUser, IsOneselfAndRoot) {
    EXPECT_TRUE(is_trusted_user(geteuid()));
    EXPECT_TRUE(is_trusted_user(0));
    EXPECT_FALSE(is_trusted_user(geteuid() + 4321));
    int ends[2];
    ASSERT_EQ(socketpair(AF_UNIX, SOCK_STREAM, 0, ends), 0);
    EXPECT_TRUE(peer_is_trusted(ends[0]));
    for (const int each : ends) close(each);
    EXPECT_FALSE(peer_is_trusted(ends[0])) << "no socket";
}

}  // namespace
