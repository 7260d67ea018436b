// quorin's command line: every accepted form, every refusal, byte for byte. None of these opens a
// window.
#include "tests/ioshare/test_segment.h"

namespace {

const std::string help =
    "\n"
    "        quorin: controle quorin du ZK4\n"
    "Les auteurs de quorin\n"
    "\n"
    "   syntaxe:\n"
    "\n"
    "         quorin <nom_machine> <numero_socket>\n"
    "\n"
    "         OU quorin -h\n"
    "\n";

const std::string usage_error =
    "probleme de parametres\n"
    "syntaxe :\n"
    "\n"
    "   quorin -automemlink <ident_mem>\n"
    "\n"
    "   OU quorin -h\n"
    "\n";

const std::string zero_refused = "IOshare: erreur sur partage memoire\nident_mem ==0 !\n\n";

std::string not_attached(const std::string& ident) {
    return "ident_mem=" + ident +
           "\nIOshare: erreur sur partage memoire\nshmat() client refuse pour ident mem=" + ident +
           "\n\n";
}

class QuorinCommandLine : public testing::Test {
    leaves_nothing nothing_;
};

TEST_F(QuorinCommandLine, AcceptsItsTwoFormsAndRefusesTheRest) {
    const struct {
        std::vector<std::string> arguments;
        int status;
        std::string out, err;
    } rows[] = {
        {{}, 1, "", usage_error},
        {{"-h"}, 0, help, ""},
        {{"-h", "x", "y"}, 0, help, ""},
        {{"-h", "-automemlink", "12"}, 0, help, ""},
        {{"-H"}, 1, "", usage_error},
        {{"-h "}, 1, "", usage_error},
        {{"--help"}, 1, "", usage_error},
        {{""}, 1, "", usage_error},
        {{"x", "-h"}, 1, "", usage_error},
        {{"somehost", "5000"}, 1, "", usage_error},
        {{"-automemlin", "12"}, 1, "", usage_error},
        {{"-automemlink12"}, 1, "", usage_error},
        {{"-AUTOMEMLINK", "12"}, 1, "", usage_error},
        {{"-automemlink"}, 1, "", zero_refused},
        {{"-automemlink", "0"}, 1, "", zero_refused},
        {{"-automemlink", ""}, 1, "", zero_refused},
        {{"-automemlink", "abc"}, 1, "", zero_refused},
        {{"-automemlink", "x12"}, 1, "", zero_refused},
        {{"-automemlink", "-0"}, 1, "", zero_refused},
        {{"-automemlink", "-1"}, 1, "", not_attached("-1")},
        {{"-automemlink", "  -7 9"}, 1, "", not_attached("-7")},
        {{"-automemlink", "2147483647x"}, 1, "", not_attached("2147483647")},
        {{"-automemlink", "+02147483646", "ignored"}, 1, "", not_attached("2147483646")},
    };
    for (const auto& [arguments, status, out, err] : rows) {
        std::vector<std::string> command = {built("quorin")};
        command.insert(command.end(), arguments.begin(), arguments.end());
        const outcome end = run_program(command);
        const std::string shown = testing::PrintToString(arguments);
        EXPECT_EQ(end.status, status) << shown;
        EXPECT_EQ(end.out, out) << shown;
        EXPECT_EQ(end.err, err) << shown;
    }
}

TEST_F(QuorinCommandLine, SomeoneElsesSegmentIsRefused) {
    if (geteuid() != 0) GTEST_SKIP() << "only root may become another user";
    raw_segment mine;
    const std::string ident = std::to_string(mine.ident);
    const outcome end = run_program(
        {"setpriv", "--reuid=65534", "--clear-groups", built("quorin"), "-automemlink", ident});
    if (end.err.find("setpriv") == 0 || end.status == 127)
        GTEST_SKIP() << "the build is not readable by another user";
    EXPECT_EQ(end.status, 1);
    EXPECT_EQ(end.err, not_attached(ident));
}

TEST_F(QuorinCommandLine, WithoutADisplayItSaysSoInOneLine) {
    test_server server;
    const std::string ident = std::to_string(server->memory_ident());
    const outcome end =
        run_program({"env", "-u", "DISPLAY", built("quorin"), "-automemlink", ident});
    EXPECT_EQ(end.status, 1);
    EXPECT_EQ(end.out, "");
    EXPECT_EQ(end.err, "ident_mem=" + ident + "\nCan't open display: \n");
}

}  // namespace
