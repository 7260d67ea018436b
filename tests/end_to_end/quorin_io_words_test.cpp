// The words of quorin-io: its tables, its help, its man page and its page in docs/ agree.
#include <gtest/gtest.h>

#include <fstream>
#include <regex>
#include <set>
#include <sstream>

#include "programs/quorin_io/command_table.h"
#include "tests/support/programs.h"

namespace {

std::string contents(const std::string& path) {
    std::ifstream file(std::string(QUORIN_SOURCE) + "/" + path);
    std::ostringstream bytes;
    bytes << file.rdbuf();
    return bytes.str();
}

/// The man page, with its hyphens as they are printed.
std::string man_page() {
    return std::regex_replace(contents("docs/man/quorin-io.1"), std::regex("\\\\-"), "-");
}

std::set<std::string> options_in(const std::string& text) {
    const std::regex option("--[a-z]+");
    std::set<std::string> all;
    for (std::sregex_iterator each(text.begin(), text.end(), option), end; each != end; ++each)
        all.insert(each->str());
    return all;
}

std::set<std::string> options_of_the_table() {
    std::set<std::string> all = {"--help", "--version"};  // Every program's.
    for (const io_option_row& each : option_table()) all.insert(each.word);
    return all;
}

/// Whether `word` stands in `text` as one, not within a longer one.
bool has_word(const std::string& text, const std::string& word) {
    return std::regex_search(text, std::regex("(^|[^a-z-])" + word + "($|[^a-z-])"));
}

TEST(QuorinIoWords, EachCommandStandsInTheHelpTheManPageAndTheDocs) {
    const std::string help = run_program({built("quorin-io"), "--help"}).out;
    const std::string man = man_page(), docs = contents("docs/quorin_io.md");
    for (const command_row& each : command_table()) {
        EXPECT_TRUE(has_word(help, std::string("  ") + each.word)) << each.word;
        EXPECT_TRUE(has_word(man, std::string("\\.(B|BI|BR) ") + each.word)) << each.word;
        EXPECT_TRUE(has_word(docs, std::string("quorin-io 12 ") + each.word)) << each.word;
        EXPECT_NE(std::string(each.meaning), "");
    }
}

TEST(QuorinIoWords, TheHelpTheManPageAndTheDocsHaveTheOptionsOfTheTableAndNoOther) {
    EXPECT_EQ(options_in(run_program({built("quorin-io"), "--help"}).out), options_of_the_table());
    EXPECT_EQ(options_in(man_page()), options_of_the_table());
    std::set<std::string> docs = options_in(contents("docs/quorin_io.md"));
    for (const std::string& each : options_of_the_table()) EXPECT_TRUE(docs.contains(each)) << each;
}

TEST(QuorinIoWords, NoWordStandsTwiceInATable) {
    std::set<std::string> words;
    for (const command_row& each : command_table())
        EXPECT_TRUE(words.insert(each.word).second) << each.word;
    for (const io_option_row& each : option_table())
        EXPECT_TRUE(words.insert(each.word).second) << each.word;
}

TEST(QuorinIoWords, EachCommandIsCarriedOutOnTheSegmentOrByTheSession) {
    for (const command_row& each : command_table()) {
        EXPECT_EQ(each.carry_out == nullptr, each.on == works_on::session) << each.word;
        EXPECT_LE(each.least, each.most) << each.word;
        EXPECT_EQ(std::string(each.operands).empty(), each.most == 0) << each.word;
    }
}

}  // namespace
