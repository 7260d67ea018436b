#include "strings/record_scanning.h"

#include <gtest/gtest.h>

#include "strings/substring_editing.h"
#include "strings/text_search.h"
#include "tests/strings/texts.h"

namespace {

TEST(NextRecord, CutsAtTheFirstSeparator) {
    const struct {
        std::string text, record, rest;
    } cases[] = {{"a;b;c", "a", "b;c"},
                 {"abc", "abc", ""},
                 {";x", "", "x"},
                 {"x;", "x", ""},
                 {"", "", ""},
                 {";", "", ""},
                 {";;", "", ";"},
                 {"a;;b", "a", ";b"},
                 {std::string("a\0;b", 4), std::string("a\0", 2), "b"}};
    for (const auto& [text, record, rest] : cases) {
        std::string left = "old";
        EXPECT_EQ(next_record(text, ';', left), record) << text;
        EXPECT_EQ(left, rest) << text;
    }
}

TEST(NextRecord, TakesANulForASeparatorLikeAnyOther) {
    std::string rest;
    EXPECT_EQ(next_record(std::string("ab\0c", 4), '\0', rest), "ab");
    EXPECT_EQ(rest, "c");
    EXPECT_EQ(next_record("abc", '\0', rest), "abc");
    EXPECT_EQ(rest, "");
}

TEST(NextRecord, CutsAtTheFirstOfASet) {
    const struct {
        std::string text, record, rest;
        char found;
    } cases[] = {{"ab,cd", "ab", "cd", ','},
                 {"abcd", "abcd", "", ' '},
                 {"", "", "", ' '},
                 {"a;b,c", "a", "b,c", ';'},
                 {",", "", "", ','},
                 {";x", "", "x", ';'},
                 {"x;", "x", "", ';'},
                 {"a b", "a b", "", ' '},
                 {std::string("a\0b", 3), std::string("a\0b", 3), "", ' '}};
    for (const auto& [text, record, rest, found] : cases) {
        std::string left = "old";
        char separator = '?';
        EXPECT_EQ(next_record(text, ",;", left, separator), record) << text;
        EXPECT_EQ(left, rest) << text;
        EXPECT_EQ(separator, found) << text;
    }
}

TEST(NextRecord, TakesASetThatTheCallerMayWriteTo) {
    char separators[] = ",;";
    std::string rest;
    char found = '?';
    EXPECT_EQ(next_record("ab,cd", separators, rest, found), "ab");
    EXPECT_EQ(rest, "cd");
    EXPECT_EQ(found, ',');
}

TEST(NextRecord, FindsABlankOfTheSetAndNothingInAnEmptyOne) {
    std::string rest;
    char found = '?';
    EXPECT_EQ(next_record("a b", ", ", rest, found), "a");
    EXPECT_EQ(rest, "b");
    EXPECT_EQ(found, ' ');
    for (const char* nothing : {"", static_cast<const char*>(nullptr)}) {
        found = '?';
        EXPECT_EQ(next_record("a,b", nothing, rest, found), "a,b");
        EXPECT_EQ(rest, "");
        EXPECT_EQ(found, ' ');
    }
}

TEST(NextRecord, KnowsEveryByteOfALargeSet) {
    std::string set, rest;
    for (int byte = 1; byte < 256; ++byte) set += static_cast<char>(byte);
    for (const char separator : set) {
        char found;
        const std::string text{'\0', separator};
        EXPECT_TRUE(next_record(text, set.c_str(), rest, found).size() == 1 && found == separator);
    }
}

TEST(LastRecord, CutsAtTheLastSeparator) {
    const struct {
        std::string text, head, last;
    } cases[] = {{"a/b/c", "a/b", "c"}, {"abc", "abc", ""},  {"/abc", "", "abc"},
                 {"", "", ""},          {"abc/", "abc", ""}, {"/", "", ""},
                 {"//", "/", ""},       {"a//b", "a/", "b"}};
    for (const auto& [text, head, last] : cases) {
        std::string tail = "old";
        EXPECT_EQ(last_record(text, '/', tail), head) << text;
        EXPECT_EQ(tail, last) << text;
    }
}

TEST(Records, MayLeaveTheRestInTheirInput) {
    std::string line = "one;two;a text that is longer than what a string keeps inside itself";
    EXPECT_EQ(next_record(line, ';', line), "one");
    EXPECT_EQ(line, "two;a text that is longer than what a string keeps inside itself");
    char found = '?';
    EXPECT_EQ(next_record(line, ";", line, found), "two");
    EXPECT_EQ(line, "a text that is longer than what a string keeps inside itself");
    EXPECT_EQ(next_record(line, ';', line),
              "a text that is longer than what a string keeps inside itself");
    EXPECT_EQ(line, "");

    line = "one/two/a text that is longer than what a string keeps inside itself";
    EXPECT_EQ(last_record(line, '/', line), "one/two");
    EXPECT_EQ(line, "a text that is longer than what a string keeps inside itself");

    line = "abc def";
    EXPECT_EQ(next_Stringtoken(line, ' ', &line), "abc");
    EXPECT_EQ(line, " def");
}

TEST(Records, JoinedBySeparatorsGiveTheTextBack) {
    for_each_text("ab;", 8, [](const std::string& text) {
        std::string rest = text, joined;
        for (int separators = char_occurences(text, ';'); separators > 0; --separators)
            joined += next_record(rest, ';', rest) + ";";
        ASSERT_EQ(joined + rest, text);

        std::string last;
        const std::string head = last_record(text, ';', last);
        ASSERT_EQ(contains(text, ";") ? head + ";" + last : head, text);
        ASSERT_FALSE(contains(last, ";"));
    });
}

TEST(Records, OfASetJoinedByWhatWasFoundGiveTheTextBack) {
    random_source random(61);
    for (int round = 0; round < 50'000; ++round) {
        const std::string text = random.text("ab,;", 12);
        std::string rest = text, joined;
        char found = ',';
        while (found != ' ') {
            const std::string record = next_record(rest, ";,", rest, found);
            ASSERT_EQ(record.find_first_of(",;"), std::string::npos);
            joined += record + found;
        }
        ASSERT_EQ(joined, text + " ");
    }
}

TEST(NextStringtoken, TakesOneTokenOffTheFront) {
    const struct {
        std::string text, token, rest;
    } cases[] = {
        {"", "", ""},
        {"  abc def", "abc", " def"},
        {"-12.5x", "-12.5", "x"},
        {"+5", "+", "5"},
        {"   ", " ", ""},
        {"a", "a", ""},
        {" ", " ", ""},
        {"+", "+", ""},
        {"  a", "a", ""},
        {"  -", "-", ""},
        {"- 1", "-", " 1"},
        {"-1.2.3", "-1.2.3", ""},
        {"-.", "-.", ""},
        {"-a", "-", "a"},
        {"--1", "-", "-1"},
        {"a-1", "a", "-1"},
        {"a1._,@b c", "a1._,@b", " c"},
        {"a b", "a", " b"},
        {"(a)", "(", "a)"},
        {"abc  ", "abc", "  "},
        {"\xE9t", "\xE9", "t"},
        {"a\xE9", "a", "\xE9"},
        {"\tab", "\t", "ab"},
        {"a\nb", "a", "\nb"},
        {std::string("\0a", 2), std::string("\0", 1), "a"},
    };
    for (const auto& [text, token, rest] : cases) {
        std::string left = "old";
        EXPECT_EQ(next_Stringtoken(text, ' ', &left), token) << text;
        EXPECT_EQ(left, rest) << text;
    }
}

TEST(NextStringtoken, StopsAtASeparatorThatCouldBelongToTheToken) {
    const struct {
        std::string text;
        char separator;
        std::string token, rest;
    } cases[] = {{"abxcd", 'x', "ab", "xcd"}, {"xxab", 'x', "ab", ""}, {"-1.2", '.', "-1", ".2"},
                 {"--12", '-', "12", ""},     {"a,b", ',', "a", ",b"}, {"sss", 's', "s", ""},
                 {"5", '5', "5", ""}};
    for (const auto& [text, separator, token, rest] : cases) {
        std::string left;
        EXPECT_EQ(next_Stringtoken(text, separator, &left), token) << text;
        EXPECT_EQ(left, rest) << text;
    }
}

TEST(NextStringtoken, LosesNothingButSeparators) {
    for_each_text("a1-. +", 6, [](const std::string& text) {
        std::string rest = text, joined;
        for (std::size_t calls = 0; !rest.empty(); ++calls) {
            ASSERT_LE(calls, text.size());
            const std::size_t length = rest.size();
            const std::string token = next_Stringtoken(rest, ' ', &rest);
            ASSERT_FALSE(token.empty());
            ASSERT_LT(rest.size(), length);
            if (token != " ") joined += token;
        }
        ASSERT_EQ(joined, substitute_char(text, ' ', ""));
    });
}

TEST(ContainsToken, LooksToTheRightOfTheFirstOccurrence) {
    const struct {
        std::string text;
        int answer;
    } cases[] = {{"abcd", 0},   {"abc", 1},    {"x bc", 1},   {"bc\xE9 bc", 0}, {"", 0},
                 {"bc", 1},     {"bc bcd", 1}, {"bcd bc", 0}, {"bc.", 1},       {"bc_", 1},
                 {"bc1", 0},    {"bc,", 1},    {"bc-", 1},    {"bcZ", 0},       {"b c", 0},
                 {"bc\xF9", 1}, {"bc\xEE", 1}, {"bc\xC9", 1}};
    for (const auto& [text, answer] : cases) EXPECT_EQ(contains_token(text, "bc"), answer) << text;
    EXPECT_EQ(contains_token("", ""), 1);
    EXPECT_EQ(contains_token("a", ""), 0);
    EXPECT_EQ(contains_token(" a", ""), 1);
}

TEST(ContainsToken, KnowsWhichBytesCarryAWordOn) {
    const std::string word_bytes =
        "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789"
        "\xE0\xE2\xE7\xE8\xE9\xEA\xF4\x8C";
    for (int byte = 0; byte < 256; ++byte) {
        const char next = static_cast<char>(byte);
        EXPECT_EQ(contains_token(std::string("x") + next, "x"),
                  word_bytes.find(next) == std::string::npos)
            << byte;
    }
}

TEST(SubstituteToken, ReplacesWhatStandsAlone) {
    const struct {
        std::string text, token, replacement, result;
    } cases[] = {
        {"x = x1 + x", "x", "y", "y = x1 + y"},
        {"ax", "x", "y", "ax"},
        {"x.y", "x", "z", "x.y"},
        {"x", "x", "y", "y"},
        {"", "x", "y", ""},
        {"abc", "x", "y", "abc"},
        {"x-x/x", "x", "", "-/"},
        {"abab", "ab", "y", "aby"},  // right after an occurrence only the right side counts
        {"ababab", "ab", "y", "ababy"},
        {"(x)", "x", "xx", "(xx)"},
        {"x x", "x", "x x", "x x x x"},
        {"\xE9x\xE9", "x", "y", "\xE9y\xE9"},
        {"x x", "", "y", "x x"},
        {"", "", "y", ""},
        {"-- a", "-", "+", "++ a"},
    };
    for (const auto& [text, token, replacement, result] : cases)
        EXPECT_EQ(substitute_token(text, token, replacement), result) << text;
}

/// Step by step, cutting what remains at each occurrence.
std::string substitute_token_by_cutting(const std::string& text, const std::string& token,
                                        const std::string& replacement) {
    std::string result, remaining = text;
    for (int k = find(remaining, token); k >= 0; k = find(remaining, token)) {
        const std::string after = my_after(remaining, k + static_cast<int>(token.size()));
        result += my_before(remaining, k);
        const bool word_before = k > 0 && est_lc(remaining[static_cast<std::size_t>(k - 1)]);
        const bool word_after = !after.empty() && est_lc(after[0]);
        result += word_before || word_after ? token : replacement;
        remaining = after;
    }
    return result + remaining;
}

TEST(SubstituteToken, AgreesWithCuttingStepByStep) {
    random_source random(62);
    for (int round = 0; round < 100'000; ++round) {
        const std::string text = random.text("ab -", 14);
        const std::string token = random.text("ab -", 1) + "ab -"[random.number(0, 3)];
        const std::string replacement = random.text("ab ", 3);
        ASSERT_EQ(substitute_token(text, token, replacement),
                  substitute_token_by_cutting(text, token, replacement))
            << text << "|" << token << "|" << replacement;
        ASSERT_EQ(substitute_token(text, token, token), text);
    }
}

}  // namespace
