#include "strings/case_folding.h"

#include <map>

#include <gtest/gtest.h>

#include "tests/strings/texts.h"

namespace {

std::string every_byte() {
    std::string bytes;
    for (int byte = 0; byte < 256; ++byte) bytes += static_cast<char>(byte);
    return bytes;
}

TEST(Downcase, TurnsOnlyAToZ) {
    EXPECT_EQ(downcase(""), "");
    EXPECT_EQ(downcase("\xC9T\xC9 ABC"), "\xC9t\xC9 abc");
    for (const char byte : every_byte()) {
        const char expected = byte >= 'A' && byte <= 'Z' ? static_cast<char>(byte + 32) : byte;
        EXPECT_EQ(downcase(std::string(1, byte)), std::string(1, expected));
    }
}

TEST(Upcase, DropsBytesOf128AndMore) {
    EXPECT_EQ(upcase(""), "");
    EXPECT_EQ(upcase("d\xE9j\xE0 vu"), "DJ VU");
    EXPECT_EQ(upcase("\xE9\xFF\x80"), "");
    for (const char byte : every_byte()) {
        std::string expected(1, byte >= 'a' && byte <= 'z' ? static_cast<char>(byte - 32) : byte);
        if (static_cast<unsigned char>(byte) >= 128) expected.clear();
        EXPECT_EQ(upcase(std::string(1, byte)), expected);
    }
}

TEST(UpcaseAccent, FoldsEightAccentedBytes) {
    const std::map<unsigned char, char> letters = {{233, 'E'}, {232, 'E'}, {234, 'E'}, {224, 'A'},
                                                   {226, 'A'}, {244, 'O'}, {231, 'C'}, {140, 'I'}};
    EXPECT_EQ(upcase_accent("d\xE9j\xE0 vu"), "DEJA VU");
    EXPECT_EQ(upcase_accent("\xEB\xEF\xF9\xFB\xEE\xC9"), "");
    for (const char byte : every_byte()) {
        const auto letter = letters.find(static_cast<unsigned char>(byte));
        const std::string expected =
            letter == letters.end() ? upcase(std::string(1, byte)) : std::string(1, letter->second);
        EXPECT_EQ(upcase_accent(std::string(1, byte)), expected);
    }
}

const std::map<unsigned char, char> utf8_letters = {
    {0xB6, 'O'}, {0xB4, 'O'}, {0xAE, 'I'}, {0xAD, 'I'}, {0xAB, 'E'},
    {0xA9, 'E'}, {0xA8, 'E'}, {0xA7, 'C'}, {0xA4, 'A'}, {0xA1, 'A'}};

TEST(UpcaseAccent2, FoldsTenUtf8Pairs) {
    for (const char second : every_byte()) {
        const auto letter = utf8_letters.find(static_cast<unsigned char>(second));
        const std::string expected =
            letter == utf8_letters.end() ? "" : std::string(1, letter->second);
        EXPECT_EQ(upcase_accent2(std::string("x\xC3") + second + "y"), "X" + expected + "Y");
    }
}

TEST(UpcaseAccent2, HandlesWordsAndOddPairs) {
    const struct {
        std::string text, folded;
    } cases[] = {
        {"", ""},
        {"\xC3\xA9l\xC3\xA8ve", "ELEVE"},
        {"f\xC3\xAAte", "FTE"},    // e circumflex is dropped
        {"\xC3\xA0\xC3\xA2", ""},  // and so are a grave and a circumflex
        {"\xC4\xB1x", "IX"},       // dotless i
        {"\xC4"
         "ab",
         "B"},                  // another byte after C4 goes with it
        {"\xC4\xC3\xA9", "E"},  // but a C3 leads a pair of its own
        {"\xC4\xC3", ""},
        {"\xC4\xC4\xB1", ""},
        {"a\xC4", "A"},
        {"a\xC3", "A"},
        {"\xC3"
         "abc",
         "BC"},  // C3 takes any byte along
        {"\xC3\xC3\xA9", ""},
        {"\xC3\xC4\xB1", ""},
        {"\xE9t\xE9", "T"},
        {std::string("\xC3\0a", 3), "A"},
        {std::string("\xC4\0a", 3), "A"},
        {std::string("a\0b", 3), std::string("A\0B", 3)},
        {"\xE2\x80\x99\xA9", ""},
        {"Z[`{", "Z[`{"},
    };
    for (const auto& [text, folded] : cases) EXPECT_EQ(upcase_accent2(text), folded) << text;
}

/// One byte or pair after the other, from the front.
std::string upcase_accent2_by_cases(const std::string& text) {
    if (text.empty()) return "";
    const auto first = static_cast<unsigned char>(text[0]);
    const auto second = static_cast<unsigned char>(text.size() > 1 ? text[1] : '\0');
    const std::string after_one = text.substr(1), after_two = text.size() > 1 ? text.substr(2) : "";
    if (first < 128) return upcase(text.substr(0, 1)) + upcase_accent2_by_cases(after_one);
    if (first == 195) {
        const auto letter = utf8_letters.find(second);
        return (letter == utf8_letters.end() ? "" : std::string(1, letter->second)) +
               upcase_accent2_by_cases(after_two);
    }
    if (first == 196 && second == 177) return "I" + upcase_accent2_by_cases(after_two);
    if (first == 196 && second != 195) return upcase_accent2_by_cases(after_two);
    return upcase_accent2_by_cases(after_one);
}

TEST(UpcaseAccent2, FollowsItsCasesOnEveryShortText) {
    for_each_text(std::string_view("a\0\xC3\xC4\xA9\xB1\xE9", 7), 6, [](const std::string& text) {
        ASSERT_EQ(upcase_accent2(text), upcase_accent2_by_cases(text));
    });
}

TEST(CaseFolding, WorksByteByByte) {
    random_source random(31);
    for (int round = 0; round < 30'000; ++round) {
        const std::string a = random.text("", 20), b = random.text("", 20);
        ASSERT_EQ(downcase(a + b), downcase(a) + downcase(b));
        ASSERT_EQ(upcase(a + b), upcase(a) + upcase(b));
        ASSERT_EQ(upcase_accent(a + b), upcase_accent(a) + upcase_accent(b));
        ASSERT_EQ(upcase_accent2(a), upcase_accent2_by_cases(a));
        ASSERT_EQ(upcase(upcase_accent(a)), upcase_accent(a));
    }
}

}  // namespace
