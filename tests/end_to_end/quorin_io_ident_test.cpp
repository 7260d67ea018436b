// Which segment quorin-io works on, its help and its version.
#include "programs/quorin_io/command_table.h"
#include "tests/end_to_end/quorin_io_fixture.h"

namespace {

outcome bare(std::vector<std::string> words, const std::vector<std::string>& environment = {}) {
    words.insert(words.begin(), built("quorin-io"));
    return run_program(words, environment);
}

TEST_F(QuorinIo, TakesTheIdentifierFromItsEnvironmentWhereNoneStandsInFront) {
    test_server other({"a"}, {"B"});
    const std::string environment = "QUORIN_IDENT=" + ident();
    EXPECT_EQ(bare({"get", "te"}, {environment}).out, "0\n");
    EXPECT_EQ(bare({std::to_string(other->memory_ident()), "get", "a"}, {environment}).out, "0\n")
        << "the one in front wins";
    EXPECT_EQ(bare({"wait", "te=0", "--timeout", "0"}, {environment}).status, 0);
    expect_one_line(bare({"list"}, {"QUORIN_IDENT=0"}), 1);
    expect_one_line(bare({"list"}, {"QUORIN_IDENT="}), 2);
    expect_one_line(bare({"list"}, {"QUORIN_IDENT=12x"}), 2);
    expect_one_line(bare({"12x", "list"}, {environment}), 2);
    expect_one_line(bare({}, {environment}), 2);
}

TEST_F(QuorinIo, LastIsTheYoungestLivingSessionOfThisUser) {
    // Other tests may make a session at the same moment: the name tells, and one is made anew.
    const auto last_has = [](const std::string& name) {
        return bare({"--last", "get", name}).status == 0;
    };
    std::optional<test_server> younger;
    const auto found = wait_until([&] {
        younger.reset();
        younger.emplace(std::list<std::string>{"younger of the test"}, std::list<std::string>{});
        return last_has("younger of the test");
    });
    EXPECT_TRUE(found);
    (*younger)->sharing_terminate();
    EXPECT_FALSE(last_has("younger of the test"));
    expect_one_line(bare({"list", "--last"}), 2);
}

TEST_F(QuorinIo, WithoutASessionThereIsNoLastOne) {
    if (geteuid() != 0) GTEST_SKIP() << "only root may become another user";
    const outcome end = run_program(
        {"setpriv", "--reuid=65533", "--clear-groups", built("quorin-io"), "--last", "list"});
    if (end.err.find("setpriv") == 0 || end.status == 127)
        GTEST_SKIP() << "the build is not readable by another user";
    expect_one_line(end, 1);
    EXPECT_EQ(end.err, "quorin-io: --last: aucune session de cet utilisateur n'est en cours\n");
}

TEST_F(QuorinIo, RefusesSomeoneElsesSegment) {
    if (geteuid() != 0) GTEST_SKIP() << "only root may become another user";
    const outcome end = run_program(
        {"setpriv", "--reuid=65534", "--clear-groups", built("quorin-io"), ident(), "list"});
    if (end.err.find("setpriv") == 0 || end.status == 127)
        GTEST_SKIP() << "the build is not readable by another user";
    EXPECT_EQ(end.status, 1);
    EXPECT_EQ(end.err, "quorin-io: segment " + ident() + ": accès refusé\n");
}

TEST_F(QuorinIo, ShowsItsHelpAndVersionInAnyPlace) {
    const std::string help = bare({"--help"}).out;
    for (const std::vector<std::string>& words : {std::vector<std::string>{"-h"},
                                                  {"--help", "12", "list"},
                                                  {"12", "--help"},
                                                  {"12", "frob", "--help"},
                                                  {"--unknown", "-h"}}) {
        SCOPED_TRACE(testing::PrintToString(words));
        const outcome end = bare(words);
        EXPECT_EQ(end.status, 0);
        EXPECT_EQ(end.err, "");
        EXPECT_EQ(end.out, help);
    }
    for (const command_row& each : command_table()) {
        const outcome end = bare({"no number", each.word, "--unknown", "-h"});
        EXPECT_EQ(end.status, 0);
        EXPECT_NE(end.out.find(std::string(" <ident_mem> ") + each.word), std::string::npos)
            << each.word;
        EXPECT_EQ(end.out.substr(end.out.find("Commandes:")), help.substr(help.find("Commandes:")));
        for (const io_option_row& option : option_table())
            EXPECT_EQ(end.out.find(std::string("  ") + option.word + " ") != std::string::npos,
                      takes(each, option.key))
                << each.word << option.word;
    }
    for (const std::vector<std::string>& words : {std::vector<std::string>{"--version"},
                                                  {"12", "wait", "te", "--version"},
                                                  {"12", "--version"}})
        EXPECT_EQ(bare(words).out, "quorin-io " QUORIN_VERSION "\n");
    EXPECT_NE(bare({ident(), "get", "--", "--help"}).status, 0) << "behind two dashes it is a name";
}

TEST_F(QuorinIo, ShowsItsHelpAndVersionOnAClosedErrorStream) {
    EXPECT_EQ(shell("io --version 2>&-").out, "quorin-io " QUORIN_VERSION "\n");
    const outcome help = shell("io --help 2>&-");
    EXPECT_EQ(help.status, 0);
    EXPECT_EQ(help.out, bare({"--help"}).out);
    EXPECT_EQ(shell("io get nothing 2>&-").status, 1);
}

}  // namespace
