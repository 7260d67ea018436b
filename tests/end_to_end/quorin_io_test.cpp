// quorin-io on a segment: what it reads and writes, what it refuses, and its statuses.
#include <unistd.h>

#include "tests/end_to_end/quorin_io_fixture.h"

namespace {

TEST_F(QuorinIo, ListsEveryInputAndOutput) {
    server->segment->input_values[1] = INT32_MIN;
    server->segment->output_values[0] = 1;
    const outcome end = io({"list"});
    EXPECT_EQ(end.status, 0);
    EXPECT_EQ(end.err, "");
    EXPECT_EQ(
        end.out,
        "entree\tte\t0\nentree\tts\t-2147483648\nentree\tte\t0\nentree\tx=y\t0\nentree\tboth\t0\n"
        "sortie\tRENT\t1\nsortie\tSORT\t0\nsortie\tRENT\t0\nsortie\tboth\t0\nsortie\to=p\t0\n");
}

TEST_F(QuorinIo, GetsValuesOneALineTheLastOfThoseNamedAlikeAndAnInputFirst) {
    server->segment->input_values[0] = 5;
    server->segment->input_values[2] = 6;
    server->segment->input_values[4] = 7;
    server->segment->output_values[3] = 8;
    const outcome end = io({"get", "both", "te", "SORT", "x=y"});
    EXPECT_EQ(end.status, 0);
    EXPECT_EQ(end.out, "7\n6\n0\n0\n");
}

TEST_F(QuorinIo, SetsEveryOutputOfTheNameAndNothingElse) {
    server->segment->outputs_clock = 3;
    std::string expected = bytes_at(server.bytes(), 0, 4561);
    expected.replace(256, 4, "\xFF\xFF\xFF\xFF").replace(264, 4, "\xFF\xFF\xFF\xFF");
    expected.replace(272, 4, "\xFF\xFF\xFF\x7F");
    const outcome end = io({"set", "RENT=-1", "o=p=2147483647"});
    EXPECT_EQ(end.status, 0);
    EXPECT_EQ(end.out + end.err, "");
    EXPECT_EQ(bytes_at(server.bytes(), 0, 4561), expected) << "the clocks are left alone";
}

TEST_F(QuorinIo, RefusesBadNamesAndValuesAndWritesNothing) {
    const std::string before = bytes_at(server.bytes(), 0, 4561);
    const std::vector<std::vector<std::string>> rows = {{"get", "nothing"},
                                                        {"get", "te", "TE"},
                                                        {"set", "te=1"},
                                                        {"set", "RENT=1", "nothing=1"},
                                                        {"set", "RENT=1", "SORT=1.5"},
                                                        {"set", "RENT=2147483648"},
                                                        {"set", "RENT=-2147483649"},
                                                        {"set", "RENT="},
                                                        {"set", "RENT=0x1"},
                                                        {"set", "RENT=+1"},
                                                        {"set", "RENT= 1"},
                                                        {"set", "RENT=1", "--until", "nothing=1"},
                                                        {"set", "RENT=1", "--until", "te=x"},
                                                        {"wait", "nothing=1"},
                                                        {"wait", "=1"},
                                                        {"wait", "te=high"},
                                                        {"wait", "te!="},
                                                        {"wait", "te=0", "--unless", "nothing=1"},
                                                        {"wait", "te=0", "--unless", "te=1.0"},
                                                        {"expect", "nothing!=1"},
                                                        {"expect", "te=2147483648"},
                                                        {"pulse", "te"},
                                                        {"pulse", "nothing"},
                                                        {"watch", "nothing"}};
    for (const std::vector<std::string>& words : rows) {
        SCOPED_TRACE(testing::PrintToString(words));
        expect_one_line(io(words), 1);
    }
    EXPECT_EQ(bytes_at(server.bytes(), 0, 4561), before);
}

TEST_F(QuorinIo, RefusesASegmentThatDoesNotExist) {
    for (const char* const ident : {"0", "-1", "2147483647"}) {
        expect_one_line(run_program({built("quorin-io"), ident, "list"}), 1);
    }
    const raw_segment too_short(100);
    expect_one_line(
        run_program({built("quorin-io"), std::to_string(too_short.ident), "set", "RENT=1"}), 1);
}

// clang-format off
const std::vector<std::vector<std::string>> not_understood = {
    {}, {"frob"}, {"list", "te"}, {"get"}, {"set"}, {"set", "RENT"}, {"wait"}, {"wait", "te"},
    {"pulse"}, {"pulse", "RENT", "SORT"}, {"pulse", "RENT", "--for", "long"},
    {"pulse", "RENT", "--for", "0,5"}, {"pulse", "RENT", "--for", ""},
    {"pulse", "RENT", "--for="}, {"pulse", "RENT", "--timeout", "1"},
    {"pulse", "RENT", "--for", "1", "--for", "2"}, {"reset", "RENT"},
    {"set", "RENT=1", "--timeout", "1"}, {"set", "RENT=1", "--until"},
    {"set", "RENT=1", "--until", ""}, {"set", "RENT=1", "--until", "te"},
    {"set", "--until", "te=1"}, {"set", "RENT=x", "SORT"}, {"wait", "te=1", "--any=1"},
    {"wait", "te=0", "--unless"}, {"wait", "te=0", "--unless=", "ts=0"},
    {"wait", "te=0", "--unless", "ts"}, {"wait", "te=0", "--timeout", "1e10"},
    {"wait", "te=0", "--timeout", "nan"}, {"wait", "te=0", "--for", "1"}, {"expect"},
    {"expect", "te"}, {"expect", "te=0", "--any"}, {"watch", "--time=1"},
    {"watch", "--initial", "--unknown"}, {"--timeout", "1", "wait", "te=0"}, {"list", "--last"},
    {""}, {"status", "all"}, {"desk"}, {"fault"}, {"fault", "te=dead", "ts=dead"}, {"diagnose"},
    {"pause", "1"}, {"speed"}, {"step"}, {"step", "1", "2"}, {"end", "--timeout", "1"},
    {"wait", "te=1", "--timeout", "-1"}, {"wait", "te=1", "--timeout"}, {"list", "--unknown"}};
// clang-format on

TEST_F(QuorinIo, DoesNotUnderstandOtherCommandLines) {
    for (const std::vector<std::string>& words : not_understood) {
        SCOPED_TRACE(testing::PrintToString(words));
        expect_one_line(io(words), 2);
    }
    for (const char* const ident : {"abc", "12x", "", "1.5", "99999999999"}) {
        SCOPED_TRACE(ident);
        expect_one_line(run_program({built("quorin-io"), ident, "list"}), 2);
    }
    expect_one_line(run_program({built("quorin-io")}), 2);
}

TEST_F(QuorinIo, SaysInFrenchWhatItRefuses) {
    const std::string ident = std::to_string(server->memory_ident());
    const struct {
        std::vector<std::string> arguments;
        std::string why;
    } rows[] = {{{}, "ligne de commande incomplète (voir --help)"},
                {{ident}, "ligne de commande incomplète (voir --help)"},
                {{ident, "get"}, "ligne de commande incomplète (voir --help)"},
                {{ident, "frob"}, "ligne de commande incomprise: frob"},
                {{ident, "list", "--x"}, "ligne de commande incomprise: --x"},
                {{ident, "list", "te"}, "ligne de commande incomprise: te"},
                {{"frob"}, "ligne de commande incomprise: frob"},
                {{"a\nb", "list"}, "a\\x0Ab: l'identifiant d'un segment est un nombre entier"},
                {{ident, "a\tb"}, "ligne de commande incomprise: a\\x09b"},
                {{ident, "get", "a\x1B"}, "nom inconnu: a\\x1B"},
                {{ident, "set", "te=1"}, "sortie inconnue: te"},
                {{ident, "set", "RENT"}, "RENT: NOM=VALEUR est attendu"},
                {{ident, "set", "RENT=x"}, "RENT=x: la valeur n'est pas un entier de 32 bits"},
                {{ident, "wait", "te=0", "--unless="}, "--unless: une valeur est attendue"},
                {{ident, "wait", "te=0", "--timeout", ""}, "--timeout: une valeur est attendue"},
                {{ident, "wait", "te=0", "--timeout", "5s"},
                 "--timeout 5s: un nombre de secondes est attendu"},
                {{ident, "set", "RENT=1", "--timeout", "1"}, "--timeout: --until est attendu"},
                {{"list"}, "list: il manque l'identifiant du segment, --last ou QUORIN_IDENT"},
                {{ident, "wait", "te=1", "--timeout"}, "ligne de commande incomprise: --timeout"},
                {{"0", "list"}, "segment 0: identifiant refusé"},
                {{"2147483647", "list"}, "segment 2147483647: il n'existe pas"}};
    for (const auto& [arguments, why] : rows) {
        std::vector<std::string> command = {built("quorin-io")};
        command.insert(command.end(), arguments.begin(), arguments.end());
        EXPECT_EQ(run_program(command).err, "quorin-io: " + why + "\n");
    }
}

TEST_F(QuorinIo, RefusesSomeoneElsesSegment) {
    if (geteuid() != 0) GTEST_SKIP() << "only root may become another user";
    const std::string ident = std::to_string(server->memory_ident());
    const outcome end = run_program(
        {"setpriv", "--reuid=65534", "--clear-groups", built("quorin-io"), ident, "list"});
    if (end.err.find("setpriv") == 0 || end.status == 127)
        GTEST_SKIP() << "the build is not readable by another user";
    EXPECT_EQ(end.status, 1);
    EXPECT_EQ(end.err, "quorin-io: segment " + ident + ": accès refusé\n");
}

TEST_F(QuorinIo, ResetsEveryOutputAndNothingElse) {
    server->segment->outputs_clock = 3;
    server->segment->input_values[0] = 5;
    const std::string expected = bytes_at(server.bytes(), 0, 4561);
    for (int i = 0; i < 5; ++i) server->segment->output_values[i] = i - 2;
    const outcome end = io({"reset"});
    EXPECT_EQ(end.status, 0);
    EXPECT_EQ(end.out + end.err, "");
    EXPECT_EQ(bytes_at(server.bytes(), 0, 4561), expected);
}

TEST_F(QuorinIo, TakesAnyNameAsItStandsBehindTwoDashes) {
    test_server odd({"[te]", "--time", "[a,b]", "te!"}, {"-o", "[x]"});
    odd->setreset_input(2, 3);
    EXPECT_EQ(io_on(odd, {"get", "[te]", "[a,b]"}).out, "0\n3\n");
    EXPECT_EQ(io_on(odd, {"get", "--", "--time", "-o"}).out, "0\n0\n");
    EXPECT_EQ(io_on(odd, {"set", "[x]=1", "--until", "[a,b]=3", "[te]=0", "--", "-o=2"}).status, 0);
    EXPECT_EQ(odd->output_value(0), 2);
    EXPECT_EQ(odd->output_value(1), 1);
    EXPECT_EQ(io_on(odd, {"set", "[x]=3", "--until=[a,b]=3"}).status, 0);
    EXPECT_EQ(io_on(odd, {"get", "te!"}).status, 0);
}

TEST_F(QuorinIo, ShowsControlBytesOfNamesAsEscapes) {
    test_server odd({"a\tb", "\x1B[2J",
                     "pi\xC3\xA8"
                     "ce"},
                    {"l\nf\x7F"});
    EXPECT_EQ(io_on(odd, {"list"}).out,
              "entree\ta\\x09b\t0\nentree\t\\x1B[2J\t0\nentree\tpi\xC3\xA8"
              "ce\t0\nsortie\tl\\x0Af\\x7F\t0\n");
    EXPECT_EQ(io_on(odd, {"get", "a\tb"}).out, "0\n");
    EXPECT_EQ(io_on(odd, {"wait", "a\tb=1", "--timeout", "0"}).err,
              "quorin-io: délai écoulé, il manque: a\\x09b=1 (valeur 0)\n");
    EXPECT_EQ(io_on(odd, {"expect", "l\nf\x7F=1"}).err,
              "quorin-io: ne tient pas: l\\x0Af\\x7F=1 (valeur 0)\n");
}

TEST_F(QuorinIo, LooksWithoutWriting) {
    server->segment->outputs_clock = 9;
    server->inputs_go();
    const std::string before = bytes_at(server.bytes(), 0, 4561);
    for (const std::vector<std::string>& words : {std::vector<std::string>{"list"},
                                                  {"get", "te"},
                                                  {"wait", "te=0"},
                                                  {"expect", "te=0", "--for", "0.01"}})
        EXPECT_EQ(io(words).status, 0);
    program watcher(command({"watch"}));
    ASSERT_TRUE(looking(watcher));
    EXPECT_EQ(bytes_at(server.bytes(), 0, 4561), before);
}

TEST_F(QuorinIo, AfterTheEndValuesAreReadButNothingIsWritten) {
    server->sharing_terminate();
    EXPECT_EQ(io({"get", "te"}).status, 0);
    EXPECT_EQ(io({"list"}).status, 0);
    EXPECT_EQ(io({"watch"}).status, 0);
    for (const std::vector<std::string>& words : {std::vector<std::string>{"set", "RENT=1"},
                                                  {"set", "RENT=1", "--until", "te=0"},
                                                  {"reset"},
                                                  {"pulse", "RENT"},
                                                  {"wait", "te=0"},
                                                  {"wait", "te=1", "--unless", "te=0"},
                                                  {"expect", "te=0"}}) {
        SCOPED_TRACE(testing::PrintToString(words));
        expect_one_line(io(words), 4);
    }
    EXPECT_EQ(server->output_value(0), 0);
}

}  // namespace
