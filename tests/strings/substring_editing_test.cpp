#include "strings/substring_editing.h"

#include <limits>

#include <gtest/gtest.h>

#include "tests/strings/texts.h"

namespace {

constexpr int lowest = std::numeric_limits<int>::min(), highest = std::numeric_limits<int>::max();

TEST(MyAfter, GivesTheEndOfTheText) {
    const struct {
        int n;
        std::string end;
    } cases[] = {{0, "abc"}, {1, "bc"},     {2, "c"},    {3, ""},
                 {10, ""},   {highest, ""}, {-1, "abc"}, {lowest, "abc"}};
    for (const auto& [n, end] : cases) EXPECT_EQ(my_after("abc", n), end) << n;
    EXPECT_EQ(my_after("", 0), "");
    EXPECT_EQ(my_after("", lowest), "");
    EXPECT_EQ(my_after(std::string("a\0b", 3), 1), std::string("\0b", 2));
}

TEST(MyBefore, GivesTheFrontOfTheText) {
    const struct {
        int n;
        std::string front;
    } cases[] = {{2, "ab"}, {3, "abc"}, {10, "abc"},  {highest, "abc"},
                 {0, ""},   {-1, ""},   {lowest, ""}, {1, "a"}};
    for (const auto& [n, front] : cases) EXPECT_EQ(my_before("abc", n), front) << n;
    EXPECT_EQ(my_before("", 5), "");
}

TEST(MyAt, GivesWhatStandsBetweenTwoPositions) {
    const struct {
        int from, to;
        std::string part;
    } cases[] = {{1, 3, "bc"},     {4, 100, "ef"},
                 {3, 3, ""},       {5, 2, ""},
                 {0, 6, "abcdef"}, {6, 7, ""},
                 {100, 200, ""},   {0, 0, ""},
                 {-1, 2, "ab"},    {lowest, highest, "abcdef"},
                 {0, -1, ""},      {highest, lowest, ""},
                 {-5, -1, ""},     {highest, highest, ""}};
    for (const auto& [from, to, part] : cases)
        EXPECT_EQ(my_at("abcdef", from, to), part) << from << " " << to;
    EXPECT_EQ(my_at("", 0, 1), "");
}

TEST(Extractors, CompleteEachOther) {
    random_source random(71);
    for (int round = 0; round < 100'000; ++round) {
        const std::string text = random.text("", 40);
        const int length = static_cast<int>(text.size());
        const int k = random.number(0, length), a = random.number(0, 50), b = random.number(-5, 50);
        ASSERT_EQ(my_before(text, k) + my_after(text, k), text);
        ASSERT_EQ(my_at(text, a, b), my_before(my_after(text, a), b - a));
        ASSERT_EQ(my_at(text, 0, k), my_before(text, k));
        ASSERT_EQ(my_at(text, k, length), my_after(text, k));
    }
}

TEST(Bdelete, StripsTheFirstAndLastByte) {
    const struct {
        std::string text, inside;
    } cases[] = {{"", ""}, {"a", ""}, {"ab", ""}, {"[x]", "x"}, {"abcd", "bc"}, {"\"q\"", "q"}};
    for (const auto& [text, inside] : cases) EXPECT_EQ(bdelete(text), inside) << text;
    random_source random(72);
    for (int round = 0; round < 20'000; ++round) {
        const std::string text = random.text("", 20);
        ASSERT_EQ(bdelete("[" + text + "]"), text);
    }
}

TEST(SubstituteChar, ReplacesEveryOne) {
    EXPECT_EQ(substitute_char("a.b.c", '.', "::"), "a::b::c");
    EXPECT_EQ(substitute_char("a.b.c", '.', '/'), "a/b/c");
    EXPECT_EQ(substitute_char("a.b.c", '.', ""), "abc");
    EXPECT_EQ(substitute_char("", '.', "x"), "");
    EXPECT_EQ(substitute_char("", '.', 'x'), "");
    EXPECT_EQ(substitute_char("...", '.', ".."), "......");
    EXPECT_EQ(substitute_char("abc", 'x', "y"), "abc");
    EXPECT_EQ(substitute_char(std::string("a\0b", 3), '\0', "0"), "a0b");
    EXPECT_EQ(substitute_char("a\xE9", '\xE9', 'e'), "ae");
    EXPECT_EQ(substitute_char("ab", 'b', '\0'), std::string("a\0", 2));
    EXPECT_EQ(substitute_char("ab", 'b', std::string("b")), "ab");
}

TEST(SubstituteString, ReplacesFromLeftToRight) {
    const struct {
        std::string text, pattern, replacement, result;
    } cases[] = {
        {"aaaa", "aa", "b", "bb"},
        {"aaa", "aa", "b", "ba"},
        {"abc", "x", "y", "abc"},
        {"", "a", "b", ""},
        {"abc", "", "y", "abc"},
        {"", "", "y", ""},
        {"abc", "abc", "", ""},
        {"abc", "abcd", "y", "abc"},
        {"ab", "b", "bb", "abb"},
        {"aXbX", "X", "XX", "aXXbXX"},
        {"aab", "ab", "", "a"},
        {"aabb", "ab", "", "ab"},
        {std::string("a\0b", 3), std::string("\0", 1), "-", "a-b"},
        {"abab", "ab", std::string("\0", 1), std::string("\0\0", 2)},
        {"aaab", "aab", "x", "ax"},
    };
    for (const auto& [text, pattern, replacement, result] : cases)
        EXPECT_EQ(substitute_string(text, pattern, replacement), result) << text << " " << pattern;
}

std::string substitute_by_comparing(const std::string& text, const std::string& pattern,
                                    const std::string& replacement) {
    std::string result;
    for (std::size_t at = 0; at < text.size();) {
        const bool match = text.compare(at, pattern.size(), pattern) == 0;
        result += match ? replacement : text.substr(at, 1);
        at += match ? pattern.size() : 1;
    }
    return result;
}

TEST(SubstituteString, AgreesWithComparingEverywhere) {
    random_source random(73);
    for (int round = 0; round < 100'000; ++round) {
        const std::string text = random.text("ab", 16), replacement = random.text("abc", 3);
        const std::string pattern = random.text("ab", 2) + (random.number(0, 1) ? "a" : "b");
        ASSERT_EQ(substitute_string(text, pattern, replacement),
                  substitute_by_comparing(text, pattern, replacement))
            << text << "|" << pattern << "|" << replacement;
        ASSERT_EQ(substitute_string(text, pattern, pattern), text);
        ASSERT_EQ(substitute_char(text, 'a', replacement),
                  substitute_string(text, "a", replacement));
        ASSERT_EQ(substitute_char(text, 'a', 'c'), substitute_char(text, 'a', "c"));
    }
}

TEST(SubstituteString, StaysLinearWhereThePatternNearlyFits) {
    // A search that compared everywhere would take 10 to the 11 steps here.
    const std::string text(1'000'000, 'a'), pattern = std::string(100'000, 'a') + "b";
    EXPECT_EQ(substitute_string(text, pattern, "c"), text);
    EXPECT_EQ(substitute_string(text + "b", pattern, "c"), std::string(900'000, 'a') + "c");
}

TEST(CancelBeginEndSpaces, TrimsBlanksOnly) {
    const struct {
        std::string text, trimmed;
    } cases[] = {{"  a b\t ", "a b\t"},
                 {"", ""},
                 {"   ", ""},
                 {"a", "a"},
                 {" a", "a"},
                 {"a ", "a"},
                 {"\t a", "\t a"},
                 {"\n", "\n"},
                 {"a  b", "a  b"},
                 {" \xA0 ", "\xA0"},
                 {std::string(" \0 ", 3), std::string("\0", 1)}};
    for (const auto& [text, trimmed] : cases)
        EXPECT_EQ(cancel_begin_end_spaces(text), trimmed) << text;
}

TEST(CleverSubstituteSpace, ReplacesTheInnerBlanks) {
    const struct {
        std::string text;
        char character;
        std::string result;
    } cases[] = {{" a b c ", '-', "a-b-c"},
                 {"    ", '-', ""},
                 {"", '-', ""},
                 {"a  b", '_', "a__b"},
                 {"  my file ", '_', "my_file"},
                 {" a\tb ", '_', "a\tb"},
                 {" a b ", ' ', "a b"}};
    for (const auto& [text, character, result] : cases)
        EXPECT_EQ(clever_substitute_space(text, character), result) << text;
}

TEST(Trimming, TakesNothingButOuterBlanks) {
    for_each_text("a \t", 8, [](const std::string& text) {
        const std::string trimmed = cancel_begin_end_spaces(text);
        ASSERT_EQ(cancel_begin_end_spaces("  " + text + " "), trimmed);
        ASSERT_TRUE(trimmed.empty() || (trimmed.front() != ' ' && trimmed.back() != ' '));
        ASSERT_EQ(substitute_char(trimmed, ' ', ""), substitute_char(text, ' ', ""));
        ASSERT_EQ(clever_substitute_space(text, '_'), substitute_char(trimmed, ' ', '_'));
    });
}

}  // namespace
