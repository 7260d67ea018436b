// zk4sim's command line: what it takes, what it refuses and in which words.
#include "tests/end_to_end/zk4sim_session.h"

namespace {

/// Checks that each of these command lines is refused with status 2 in one line.
void expect_misuse(const std::vector<std::vector<std::string>>& rows) {
    for (const std::vector<std::string>& options : rows) {
        const outcome end = run_zk4sim(options);
        const std::string shown = testing::PrintToString(options);
        EXPECT_EQ(end.status, 2) << shown;
        EXPECT_EQ(end.out, "") << shown;
        EXPECT_EQ(lines_in(end.err), 1) << shown << end.err;
        EXPECT_EQ(end.err.rfind("zk4sim: ", 0), 0u) << end.err;
    }
}

TEST_F(Zk4sim, RefusesNumbersThatAreNoneOrBeyondTheirLimits) {
    expect_misuse({{"--speed", "fast"},
                   {"--speed", "0"},
                   {"--speed", "0.09"},
                   {"--speed", "100.1"},
                   {"--speed", "0,5"},
                   {"--speed", "nan"},
                   {"--speed", "inf"},
                   {"--speed", "1x"},
                   {"--speed", "-1"},
                   {"--speed", "1\n2"},
                   {"--seed", "1\n2"},
                   {"--duration", "-1"},
                   {"--duration", "long"},
                   {"--duration", "1e400"},
                   {"--seed", "-1"},
                   {"--seed", "1.5"},
                   {"--seed", "18446744073709551616"},
                   {"--bases", "-1"},
                   {"--bases", "1000001"},
                   {"--bases", "2.0"},
                   {"--bases", "many"},
                   {"--parts", "-1"},
                   {"--parts", "1000001"},
                   {"--parts", "4294967297"},
                   {"--no-panel", "--commander-timeout", "soon"}});
}

TEST_F(Zk4sim, AnOptionThatWasGivenButIsEmptyIsMisuse) {
    std::vector<std::vector<std::string>> rows;
    for (const char* const option :
         {"--panel", "--commander-timeout", "--speed", "--duration", "--fault", "--seed", "--bases",
          "--parts", "--exec", "--title"}) {
        rows.push_back({option, ""});
        rows.push_back({std::string(option) + "="});
        rows.push_back({option});
    }
    rows.push_back({"--no-panel", "--commander-timeout", ""});
    expect_misuse(rows);
}

TEST_F(Zk4sim, RefusesWhatItDoesNotKnowAndWhatDoesNotGoTogether) {
    expect_misuse({{"--unknown"},
                   {"word"},
                   {"-x"},
                   {""},
                   {"--", "word"},
                   {"--", "--paused"},
                   {"--spee", "1"},
                   {"--Speed", "1"},
                   {"--no-panel=1"},
                   {"--paused=true"},
                   {"--headless=false"},
                   {"--speed", "1", "--speed", "1"},
                   {"--bases", "5", "--bases", "5"},
                   {"--title", "a", "--title", "b"},
                   {"--commander-timeout", "1"},
                   {"--no-panel", "--panel", "quorin"},
                   {"--exec", "true", "--panel", "quorin"}});
}

TEST_F(Zk4sim, RefusesFaultsThatCannotBeAndTitlesOfSeveralLines) {
    expect_misuse({{"--fault", "te"},
                   {"--fault", "te="},
                   {"--fault", "te=dead"},
                   {"--fault", "MT=stuck0"},
                   {"--fault", "nothing=stuck0"},
                   {"--fault", "te=broken"},
                   {"--fault", "te=slow"},
                   {"--fault", "MT=late"},
                   {"--fault", "ASPI=slow"},
                   {"--fault", "te\n=stuck0"},
                   {"--fault", "te=stuck0", "--fault", "te=broken"},
                   {"--title", "two\nlines"},
                   {"--title", "a\ttab"},
                   {"--title", "\x1B[2J"},
                   {"--title", "\x7F"}});
}

TEST_F(Zk4sim, NamesTheWordThatItDoesNotUnderstand) {
    const struct {
        std::vector<std::string> options;
        std::string word;
    } rows[] = {{{"--unknown"}, "--unknown"},
                {{"--headless", "word"}, "word"},
                {{"first", "second"}, "first"},
                {{"--unknown", "--speed", "fast"}, "--unknown"},
                {{"--no-panel", "-x", "--unknown"}, "-x"},
                {{"--speed"}, "--speed"},
                {{"--speed", "1", "--speed", "2"}, "--speed"},
                {{"--fault"}, "--fault"}};
    for (const auto& [options, word] : rows)
        EXPECT_EQ(run_zk4sim(options).err, "zk4sim: ligne de commande incomprise: " + word + "\n");
}

TEST_F(Zk4sim, ShowsItsHelpAndVersionWhereverTheyStand) {
    const std::string help = run_zk4sim({"--help"}).out;
    for (const char* const option : {"--panel",    "--no-panel", "--commander-timeout",
                                     "--headless", "--speed",    "--duration",
                                     "--fault",    "--seed",     "--bases",
                                     "--parts",    "--paused",   "--exec",
                                     "--title",    "--help",     "-h",
                                     "--version",  "stuck0",     "late",
                                     "flicker",    "dead",       "slow"})
        EXPECT_NE(help.find(option), std::string::npos) << option;
    const std::string version = "zk4sim " QUORIN_VERSION "\n";
    const struct {
        std::vector<std::string> options;
        const std::string& out;
    } rows[] = {{{"-h"}, help},
                {{"--unknown", "--help"}, help},
                {{"--speed", "--help"}, help},
                {{"--speed", "fast", "-h"}, help},
                {{"word", "--no-panel", "--help", "word"}, help},
                {{"--version"}, version},
                {{"--duration", "", "--version"}, version},
                {{"--title", "--version"}, version}};
    for (const auto& [options, out] : rows) {
        const outcome end = run_zk4sim(options);
        EXPECT_EQ(end.status, 0) << testing::PrintToString(options);
        EXPECT_EQ(end.out, out);
        EXPECT_EQ(end.err, "");
    }
}

TEST_F(Zk4sim, ShowsItsHelpWithoutADisplayAndOnAClosedErrorStream) {
    const std::string help = run_zk4sim({"--help"}).out;
    const outcome end =
        run_program({"sh", "-c", "unset DISPLAY; exec " + built("zk4sim") + " --help 2>&-"});
    EXPECT_EQ(end.status, 0);
    EXPECT_EQ(end.out, help);
    for (const char* const option : {"--help", "--version"}) {
        const outcome full =
            run_program({"sh", "-c", built("zk4sim") + " " + option + " >/dev/full"});
        EXPECT_EQ(full.status, 1);
        EXPECT_EQ(lines_in(full.err), 1) << full.err;
    }
}

TEST_F(Zk4sim, TakesEveryNumberUpToItsLimits) {
    for (const std::vector<std::string>& each :
         std::vector<std::vector<std::string>>{{"--bases", "0", "--parts", "0"},
                                               {"--bases=1000000", "--parts=1000000"},
                                               {"--seed", "18446744073709551615"},
                                               {"--speed", "100"},
                                               {"--speed", "0.1"},
                                               {"--commander-timeout", "0.5"},
                                               {"--title", "[a, b]"},
                                               {"--title", "{}"},
                                               {"--title=-x"}}) {
        std::vector<std::string> options = {"--no-panel", "--duration", "0.01"};
        options.insert(options.end(), each.begin(), each.end());
        const outcome end = run_zk4sim(options);
        EXPECT_EQ(end.status, 0) << testing::PrintToString(options) << end.err;
        EXPECT_EQ(end.err, "zk4sim: durée écoulée\n" + nothing_made);
    }
}

TEST_F(Zk4sim, TakesNumbersTheSameWayInAnyLocale) {
    const std::vector<std::string> french = {"LC_ALL=fr_FR.UTF-8"};
    const outcome end =
        run_program(zk4sim_command({"--no-panel", "--duration", "0.05", "--speed", "0.5"}), french);
    EXPECT_EQ(end.status, 0);
    const outcome comma = run_program(zk4sim_command({"--speed", "0,5"}), french);
    EXPECT_EQ(comma.status, 2);
    EXPECT_EQ(comma.err, run_zk4sim({"--speed", "0,5"}).err);
    EXPECT_NE(comma.err.find("0.1"), std::string::npos) << comma.err;
}

}  // namespace
