#include "strings/text_search.h"

#include <gtest/gtest.h>

#include "tests/strings/texts.h"

namespace {

TEST(EstLc, KnowsLettersDigitsAndFourSigns) {
    const std::string words = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789._,@";
    for (int byte = 0; byte < 256; ++byte) {
        const char character = static_cast<char>(byte);
        EXPECT_EQ(est_lc(character), words.find(character) != std::string::npos) << byte;
    }
    EXPECT_EQ(est_lc('@'), 1);
    EXPECT_EQ(est_lc('-'), 0);
}

TEST(Find, GivesTheFirstPositionOrMinusOne) {
    const struct {
        std::string text, pattern;
        int position;
    } cases[] = {{"abcabc", "c", 2},
                 {"abc", "x", -1},
                 {"abc", "", 0},
                 {"", "", 0},
                 {"", "a", -1},
                 {"abc", "abc", 0},
                 {"abc", "abcd", -1},
                 {"aab", "ab", 1},
                 {"aaab", "aab", 1},
                 {"\xE9t\xE9", "t\xE9", 1},
                 {std::string("a\0b", 3), "b", 2},
                 {std::string("a\0b", 3), std::string("\0b", 2), 1},
                 {"a", std::string("a\0", 2), -1}};
    for (const auto& [text, pattern, position] : cases) {
        EXPECT_EQ(find(text, pattern), position) << text << " " << pattern;
        EXPECT_EQ(contains(text, pattern), position >= 0) << text << " " << pattern;
    }
}

int find_by_comparing(const std::string& text, const std::string& pattern) {
    for (std::size_t at = 0; at + pattern.size() <= text.size(); ++at)
        if (text.compare(at, pattern.size(), pattern) == 0) return static_cast<int>(at);
    return -1;
}

TEST(Find, AgreesWithComparingEverywhere) {
    random_source random(41);
    for (int round = 0; round < 100'000; ++round) {
        const std::string text = random.text("ab", 30), pattern = random.text("ab", 6);
        ASSERT_EQ(find(text, pattern), find_by_comparing(text, pattern)) << text << " " << pattern;
        ASSERT_EQ(contains(text, pattern), find(text, pattern) >= 0);
    }
    for (int round = 0; round < 1'000; ++round) {  // patterns longer than any shortcut
        const std::string text = random.text("ab", 3000);
        const std::size_t start = random.number<std::size_t>(0, text.size());
        const std::string pattern = text.substr(start, random.number<std::size_t>(0, 600));
        ASSERT_EQ(find(text, pattern), find_by_comparing(text, pattern));
        ASSERT_EQ(find(text, pattern + "c"), -1);
    }
}

TEST(CharOccurences, CountsBytes) {
    EXPECT_EQ(char_occurences("banana", 'a'), 3);
    EXPECT_EQ(char_occurences("", 'a'), 0);
    EXPECT_EQ(char_occurences("abc", 'x'), 0);
    EXPECT_EQ(char_occurences("\xE9t\xE9", '\xE9'), 2);
    EXPECT_EQ(char_occurences(std::string("a\0b\0", 4), '\0'), 2);
}

TEST(CharOccurences, AddsUpToTheLength) {
    random_source random(42);
    for (int round = 0; round < 50'000; ++round) {
        const std::string text = random.text("abc", 30);
        ASSERT_EQ(
            char_occurences(text, 'a') + char_occurences(text, 'b') + char_occurences(text, 'c'),
            static_cast<int>(text.size()));
    }
}

}  // namespace
