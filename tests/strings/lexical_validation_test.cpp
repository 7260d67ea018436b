#include "strings/lexical_validation.h"

#include <string_view>

#include <gtest/gtest.h>

#include "strings/number_parsing.h"
#include "tests/strings/texts.h"

namespace {

struct form {
    std::string text;
    int passes;
};

TEST(Checkuint, WantsDigitsAndNothingElse) {
    const form cases[] = {{"", 0},
                          {"0", 1},
                          {"12", 1},
                          {"007", 1},
                          {"-1", 0},
                          {"+1", 0},
                          {" 1", 0},
                          {"1 ", 0},
                          {"1a", 0},
                          {"1.0", 0},
                          {"/", 0},
                          {":", 0},
                          {"\xB2", 0},
                          {std::string("1\0", 2), 0},
                          {std::string(40, '9'), 1}};
    for (const auto& [text, passes] : cases) EXPECT_EQ(checkuint(text), passes) << text;
}

TEST(Checkint, AllowsOneLeadingMinus) {
    const form cases[] = {{"", 0},    {"-", 0},  {"-12", 1}, {"+12", 0}, {"12", 1}, {"--1", 0},
                          {"- 1", 0}, {"1-", 0}, {"-0", 1},  {"-1a", 0}, {" -1", 0}};
    for (const auto& [text, passes] : cases) EXPECT_EQ(checkint(text), passes) << text;
}

TEST(Checkdouble, AcceptsWhatStodReads) {
    const struct {
        std::string text;
        char separator;
    } cases[] = {
        {"12", '.'},
        {"0", '.'},
        {"0,5", ','},
        {"-3.5E+12", '.'},
        {"  7", '.'},
        {"1e2", '.'},
        {"-0.0", '.'},
        {"1.5E-3", '.'},
        {std::string("1\0005", 3), '\0'},
        {"3000000000", '.'},
        {std::string(100, ' ') + "1", '.'},
    };
    for (const auto& [text, separator] : cases) EXPECT_EQ(checkdouble(text, separator), 1) << text;
}

TEST(Checkdouble, RefusesWhatStodReadsAsZero) {
    for (const char* const text : {"-0", "1.", ".5", "1E05", "+1", "1 ", "00", "", "1E", "1E0",
                                   "0E1", "-", " ", "1E+", "1.5."})
        EXPECT_EQ(checkdouble(text, '.'), 0) << text;
    EXPECT_EQ(checkdouble(std::string("1\0", 2), '.'), 0);
    EXPECT_EQ(checkdouble("0.5", ','), 0);
}

/// Takes the bytes of `set` off the front of `text`,
/// `most` of them at most; returns how many there were.
std::size_t skip(std::string_view& text, std::string_view set, std::size_t most = 100) {
    std::size_t count = 0;
    while (count < most && count < text.size() && set.find(text[count]) != std::string_view::npos)
        ++count;
    text.remove_prefix(count);
    return count;
}

/// The grammar of a double with the separator ".", read off as a grammar and not as states.
bool is_double(std::string_view text) {
    constexpr std::string_view digits = "0123456789", nonzero = "123456789";
    skip(text, " ");
    const bool negative = skip(text, "-", 1) > 0;
    const bool lone_zero = skip(text, "0", 1) > 0;
    if (!lone_zero) {
        if (!skip(text, nonzero, 1)) return false;
        skip(text, digits);
    }
    const bool has_fraction = skip(text, ".", 1) > 0;
    if (has_fraction && !skip(text, digits)) return false;
    if (text.empty()) return has_fraction || !lone_zero || !negative;
    if (lone_zero && !has_fraction) return false;
    if (!skip(text, "Ee", 1)) return false;
    skip(text, "+-", 1);
    if (!skip(text, nonzero, 1)) return false;
    skip(text, digits);
    return text.empty();
}

TEST(Checkdouble, AcceptsTheGrammarAndStodReadsTheRestAsZero) {
    int accepted = 0;
    for_each_text(" -+01.Ee", 6, [&](const std::string& text) {
        ASSERT_EQ(checkdouble(text, '.'), is_double(text)) << text;
        if (checkdouble(text, '.'))
            ++accepted;
        else
            ASSERT_EQ(Stod(text, '.'), 0.0) << text;
    });
    EXPECT_GT(accepted, 0);
}

TEST(Checkdouble, AcceptsExactlyWhatStodDoesNotReadAsZero) {
    // An accepted text without a "0" is zero only with
    // an exponent of three digits: too long for this.
    for_each_text("-+19.E ", 5, [](const std::string& text) {
        ASSERT_EQ(checkdouble(text, '.'), Stod(text, '.') != 0.0) << text;
    });
}

TEST(Checkhex, PassesTheEmptyText) {
    const form cases[] = {{"", 1},     {"0fF", 1},
                          {"aF09", 1}, {"g", 0},
                          {"G", 0},    {"0x1", 0},
                          {" 1", 0},   {"@", 0},
                          {"`", 0},    {"/", 0},
                          {":", 0},    {"-1", 0},
                          {"\xE9", 0}, {std::string("\0", 1), 0}};
    for (const auto& [text, passes] : cases) EXPECT_EQ(checkhex(text), passes) << text;
}

TEST(Checkhexintel, WantsALowerCaseHAtTheEnd) {
    const form cases[] = {{"", 0},     {"0FFh", 1},
                          {"0FFH", 0}, {"h", 1},
                          {"0FF", 0},  {"FFh", 1},
                          {"hh", 0},   {"0 h", 0},
                          {"fFh", 1},  {"0Fh ", 0},
                          {"0Fg", 0},  {"xh", 0},
                          {"H", 0},    {std::string("h\0", 2), 0}};
    for (const auto& [text, passes] : cases) EXPECT_EQ(checkhexintel(text), passes) << text;
}

TEST(Checkbin, PassesTheEmptyText) {
    const form cases[] = {{"", 1},    {"0", 1},  {"0101", 1}, {"2", 0},
                          {"012", 0}, {" 1", 0}, {"/", 0}};
    for (const auto& [text, passes] : cases) EXPECT_EQ(checkbin(text), passes) << text;
}

TEST(CheckISO88591AlphabeticalLetter, KnowsItsOwn112Letters) {
    const std::string letters =
        "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz\xB5"
        "\xC0\xC1\xC2\xC3\xC4\xC5\xC6\xC7\xC8\xC9\xCA\xCB\xCC\xCD\xCE\xCF"
        "\xD0\xD1\xD2\xD3\xD4\xD5\xD6\xD9\xDA\xDB\xDC\xDD\xDE\xDF"
        "\xE0\xE1\xE2\xE3\xE4\xE5\xE6\xE7\xE8\xE9\xEA\xEB\xEC\xED\xEE\xEF"
        "\xF0\xF1\xF2\xF3\xF4\xF5\xF6\xF9\xFA\xFB\xFC\xFD\xFF";
    ASSERT_EQ(letters.size(), 112U);
    for (int byte = 0; byte < 256; ++byte) {
        const char character = static_cast<char>(byte);
        EXPECT_EQ(check_ISO_8859_1_alphabetical_letter(character),
                  letters.find(character) != std::string::npos)
            << byte;
    }
    EXPECT_EQ(check_ISO_8859_1_alphabetical_letter('\xD8'), 0);
    EXPECT_EQ(check_ISO_8859_1_alphabetical_letter('\xDF'), 1);
    EXPECT_EQ(check_ISO_8859_1_alphabetical_letter('\xF7'), 0);
    EXPECT_EQ(check_ISO_8859_1_alphabetical_letter('\xFF'), 1);
    EXPECT_EQ(check_ISO_8859_1_alphabetical_letter('_'), 0);
}

TEST(Checkvarname, BeginsWithALetterAndDoesNotEndWithAnUnderscore) {
    const struct {
        std::string text;
        int passes, passes_with_underscore;
    } cases[] = {
        {"", 0, 0},
        {"x_1", 1, 1},
        {"x_", 0, 0},
        {"_x", 0, 1},
        {"1x", 0, 0},
        {"ab", 1, 1},
        {"__", 0, 0},
        {"_", 0, 0},
        {"a", 1, 1},
        {"Z", 1, 1},
        {"1", 0, 0},
        {"a1", 1, 1},
        {"__x", 0, 1},
        {"_1", 0, 1},
        {"a__b", 1, 1},
        {"a b", 0, 0},
        {"a-b", 0, 0},
        {"a.b", 0, 0},
        {"\xE9", 0, 0},
        {"a\xE9", 0, 0},
        {"a\xE9"
         "b",
         0, 0},
        {" a", 0, 0},
        {"a ", 0, 0},
        {std::string("a\0b", 3), 0, 0},
        {"@a", 0, 0},
        {"[a", 0, 0},
        {"a{", 0, 0},
    };
    for (const auto& [text, passes, passes_with_underscore] : cases) {
        EXPECT_EQ(checkvarname(text), passes) << text;
        EXPECT_EQ(checkvarname_with_pre_underscore(text), passes_with_underscore) << text;
    }
}

TEST(Checkvarname, FollowsItsRuleOnEveryShortText) {
    for_each_text("aZ9_-", 6, [](const std::string& text) {
        const std::string_view letters = "aZ", inner = "aZ9_", last = "aZ9";
        const bool body = !text.empty() && last.find(text.back()) != std::string_view::npos &&
                          text.find_first_not_of(inner, 1) == std::string::npos;
        const bool letter_first = body && letters.find(text[0]) != std::string_view::npos;
        ASSERT_EQ(checkvarname(text), letter_first) << text;
        ASSERT_EQ(checkvarname_with_pre_underscore(text), letter_first || (body && text[0] == '_'))
            << text;
    });
}

TEST(Beginbynumber, LooksAtTheFirstByteOnly) {
    const form cases[] = {{"", 0},  {"3abc", 1}, {" 3", 0}, {"0", 1},   {"9", 1},
                          {"/", 0}, {":", 0},    {"-1", 0}, {"\xB2", 0}};
    for (const auto& [text, passes] : cases) EXPECT_EQ(beginbynumber(text), passes) << text;
}

TEST(Checks, AreDecidedByEachByteAlone) {
    random_source random(21);
    for (int round = 0; round < 50'000; ++round) {
        const std::string text = random.text("01289aAfFgh-", 6);
        const auto only = [&text](const char* set) {
            return text.find_first_not_of(set) == std::string::npos;
        };
        ASSERT_EQ(checkuint(text), only("0123456789") && !text.empty()) << text;
        ASSERT_EQ(checkhex(text), only("0123456789abcdefABCDEF")) << text;
        ASSERT_EQ(checkbin(text), only("01")) << text;
        ASSERT_EQ(checkint("-" + text), checkuint(text)) << text;
        ASSERT_EQ(checkhexintel(text + "h"), checkhex(text)) << text;
    }
}

}  // namespace
