// Command lines from a table: what is taken, what is refused and which word is named.
#include <gtest/gtest.h>

#include <tuple>

#include "session/command_line.h"
#include "session/failure.h"

namespace {

/// A program with an option of each sort.
struct read_line {
    explicit read_line(const std::vector<std::string>& words, const std::string& operands = "") {
        line.operands = operands;
        try {
            const command_words rest = read_command_line(line, words);
            for (const std::string& each : rest.operands) taken += "<" + each + ">";
            if (rest.answer) answer = *rest.answer;
        } catch (const failure& why) {
            EXPECT_EQ(why.status, exit_status::misuse);
            EXPECT_EQ(why.why.find('\n'), std::string::npos) << why.why;
            refused = why.why;
        }
    }
    std::function<void(const std::string&)> note(const std::string& name) {
        return [this, name](const std::string& value) { taken += name + "=" + value + ";"; };
    }

    std::string taken, answer, refused;
    command_line line{
        "essai",
        "Un essai",
        "",
        {{.name = "--speed", .value_name = "X", .meaning = "la vitesse", .take = note("speed")},
         {.name = "--fault",
          .value_name = "NOM=PANNE",
          .meaning = "une panne",
          .repeatable = true,
          .take = note("fault")},
         {.name = "--paused", .value_name = "", .meaning = "en pause", .take = note("paused")}},
        "La suite.\n"};
};

TEST(CommandLine, TakesItsOptionsInTheOrderOfTheTable) {
    const struct {
        std::vector<std::string> words;
        std::string taken;
    } rows[] = {
        {{}, ""},
        {{"--speed", "2"}, "speed=2;"},
        {{"--speed=2"}, "speed=2;"},
        {{"--paused"}, "paused=;"},
        {{"--paused", "--fault", "b=1", "--speed", "3", "--fault", "a=2"},
         "speed=3;fault=b=1;fault=a=2;paused=;"},
        {{"--fault=te=stuck0"}, "fault=te=stuck0;"},
        {{"--speed", "[a,b]"}, "speed=[a,b];"},
        {{"--fault", "[a,b]", "--fault", "{}"}, "fault=[a,b];fault={};"},
        {{"--speed", "%%"}, "speed=%%;"},
        {{"--speed", "two words"}, "speed=two words;"},
        {{"--speed", "\"quoted\""}, "speed=\"quoted\";"},
        {{"--"}, ""},
        {{"--speed", "1", "--"}, "speed=1;"},
    };
    for (const auto& [words, taken] : rows) {
        const read_line read(words);
        EXPECT_EQ(read.refused, "");
        EXPECT_EQ(read.taken, taken) << testing::PrintToString(words);
    }
}

TEST(CommandLine, WordsThatAreNoOptionsAreOperandsWhereSomeAreTaken) {
    const struct {
        std::vector<std::string> words;
        std::string taken;
    } rows[] = {
        {{"12", "list"}, "<12><list>"},
        {{"12", "--speed", "2", "list"}, "speed=2;<12><list>"},
        {{"--", "--speed", "--help"}, "<--speed><--help>"},
        {{"a", "--", "-b", "--"}, "<a><-b><-->"},
        {{"[a,b]", "c"}, "<[a,b]><c>"},
    };
    for (const auto& [words, taken] : rows) {
        const read_line read(words, "MOTS");
        EXPECT_EQ(read.refused, "") << testing::PrintToString(words);
        EXPECT_EQ(read.taken, taken) << testing::PrintToString(words);
    }
}

TEST(CommandLine, TheFirstWordThatIsNotUnderstoodIsNamed) {
    const struct {
        std::vector<std::string> words;
        std::string named;
    } rows[] = {
        {{"--unknown"}, "--unknown"},
        {{"word"}, "word"},
        {{"--paused", "word", "--unknown"}, "word"},
        {{"--unknown", "word"}, "--unknown"},
        {{"-x"}, "-x"},
        {{"--spee", "1"}, "--spee"},
        {{"--SPEED", "1"}, "--SPEED"},
        {{"--unknown=1"}, "--unknown=1"},
        {{"--paused=1"}, "--paused=1"},
        {{"--paused=false"}, "--paused=false"},
        {{"--paused="}, "--paused="},
        {{"--", "word"}, "word"},
        {{"--", "--speed"}, "--speed"},
        {{"--speed", "1", "--speed", "2"}, "--speed"},
        {{"--speed"}, "--speed"},
        {{"--fault", "a=b", "--fault"}, "--fault"},
        {{"a\x1B[2J"}, "a\\x1B[2J"},
    };
    for (const auto& [words, named] : rows) {
        const read_line read(words);
        EXPECT_EQ(read.refused, "ligne de commande incomprise: " + named)
            << testing::PrintToString(words);
        EXPECT_EQ(read.taken, "") << "nothing is taken of it";
    }
}

TEST(CommandLine, AnOptionThatIsGivenButEmptyIsMisuse) {
    for (const std::vector<std::string>& words : std::vector<std::vector<std::string>>{
             {"--speed", ""}, {"--speed="}, {"--fault", "a", "--fault", ""}, {"--fault=", "a"}}) {
        const read_line read(words);
        EXPECT_NE(read.refused.find(words[0].substr(0, 7)), std::string::npos)
            << testing::PrintToString(words) << read.refused;
    }
    EXPECT_NE(read_line({""}).refused, "");
}

TEST(CommandLine, HelpAndVersionWinWhereverTheyStand) {
    const std::string help = read_line({"--help"}).answer;
    for (const char* const part :
         {"Un essai\n", "essai", "--speed X", "la vitesse\n", "--fault NOM=PANNE", "--paused",
          "--help", "-h", "--version", "La suite.\n"})
        EXPECT_NE(help.find(part), std::string::npos) << part << help;
    const struct {
        std::vector<std::string> words;
        bool version;
    } rows[] = {
        {{"-h"}, false},
        {{"--unknown", "--help"}, false},
        {{"--speed", "--help"}, false},
        {{"--speed", "1", "--speed", "1", "-h"}, false},
        {{"--speed", "", "--help", "word"}, false},
        {{"--help", "--version"}, false},
        {{"--version"}, true},
        {{"word", "--version"}, true},
        {{"--speed", "--version"}, true},
    };
    const std::string version = read_line({"--version"}).answer;
    EXPECT_EQ(version.rfind("essai ", 0), 0u);
    for (const auto& [words, is_version] : rows) {
        const read_line read(words);
        EXPECT_EQ(read.answer, is_version ? version : help) << testing::PrintToString(words);
        EXPECT_EQ(read.taken + read.refused, "");
    }
    EXPECT_EQ(read_line({"--", "--help"}, "MOTS").answer, "");
}

TEST(CommandLine, WhatAnOptionRefusesIsItsOwnRefusal) {
    read_line read({});
    read.line.options[0].take = [](const std::string&) { throw misuse("trop vite"); };
    try {
        std::ignore = read_command_line(read.line, {"--speed", "9"});
        FAIL() << "it was taken";
    } catch (const failure& why) {
        EXPECT_EQ(why.why, "--speed 9: trop vite");
    }
}

TEST(CommandLine, NumbersHaveAPointAndLimits) {
    const struct {
        const char* text;
        double number;
    } good[] = {{"0.1", 0.1}, {"100", 100}, {"1e1", 10}, {"0.25", 0.25}, {"1.", 1}};
    for (const auto& [text, number] : good) EXPECT_EQ(number_between(text, 0.1, 100), number);
    for (const std::string text : {"", " 1", "1 ", "0,5", "0.09", "100.5", "nan", "inf", "-inf",
                                   "1e400", "one", "0x10", "+1", "1s", "--", "1\n2"}) {
        try {
            std::ignore = number_between(text, 0.1, 100);
            ADD_FAILURE() << text << " was taken";
        } catch (const failure& why) {
            EXPECT_EQ(why.status, exit_status::misuse);
            EXPECT_EQ(why.why.find('\n'), std::string::npos);
            EXPECT_NE(why.why.find("0.1"), std::string::npos)
                << "a point in every locale: " << why.why;
        }
    }
}

}  // namespace
