#include "strings/document_filters.h"

#include <gtest/gtest.h>

#include "strings/substring_editing.h"
#include "tests/strings/texts.h"

namespace {

const struct {
    std::string pattern, escape;
} rows[] = {
    {"\x27", "\x5C\x27\x39\x31"},
    {"\xE2\x80\x99", "\x5C\x27\x32\x37"},
    {"\xC2\xAB", "\\'ab"},
    {"\xC2\xBB", "\\'bb"},
    {"\xE2\x80\x93", "-"},
    {"\xC3\x89", "\\'c9"},
    {"\xC3\x88", "\\'c8"},
    {"\xC3\x8A", "\\'ca"},
    {"\xC3\x8B", "\\'cb"},
    {"\xC3\x87", "\\'c7"},
    {"\xC3\xA9", "\x5C\x27\x65\x39"},
    {"\xC3\xA8", "\\'e8"},
    {"\xC3\xAA", "\\'ea"},
    {"\xC3\xAB", "\\'eb"},
    {"\xC3\xA7", "\\'e7"},
    {"\xC3\xA0", "\x5C\x27\x65\x4F"},
    {"\xC3\xB6", "\\'f6"},
    {"\xC3\xB4", "\\'f4"},
    {"\xC3\xAE", "\\'ee"},
    {"\xC3\xAF", "\\'ef"},
    {"\xC3\x97", "x"},
    {"\x23", "\x27\x32\x33"},
    {"\x24", "\\'24"},
};

TEST(RtfStringFilter, EscapesEachOfItsCharacters) {
    for (const auto& [pattern, escape] : rows) {
        EXPECT_EQ(rtf_String_filter(pattern), escape) << pattern;
        EXPECT_EQ(rtf_String_filter("a" + pattern + pattern + "b"), "a" + escape + escape + "b");
    }
}

TEST(RtfStringFilter, DoesNotEscapeAnEscape) {
    std::string text, expected;
    for (const auto& [pattern, escape] : rows) {
        text += pattern;
        expected += escape;
    }
    EXPECT_EQ(rtf_String_filter(text), expected);
    EXPECT_EQ(rtf_String_filter("l'\xC3\xA9t\xC3\xA9"), "l\\'91\\'e9t\\'e9");
    EXPECT_EQ(rtf_String_filter("#1"), "'231");
    EXPECT_EQ(rtf_String_filter("5$"), "5\\'24");
}

TEST(RtfStringFilter, CopiesTheRest) {
    for (const std::string& text :
         {std::string(), std::string("{x}\\y"), std::string("a\tb\r\n"),
          std::string("\xC3\xB9\xC3\xBB\xC3\xA2\xC3\xBC\xC5\x93\xC3\x80\xC3\x94\xE2\x80\x98"),
          std::string("\xC3"), std::string("\xC3x\xA9"), std::string("\xE2\x80"),
          std::string("\xA9\xC2"), std::string("a\0b", 3),
          std::string("%&*+,-./:;<=>?@[]^_`|~!\"()")})
        EXPECT_EQ(rtf_String_filter(text), text);
}

TEST(RtfStringFilter, SubstitutesRowAfterRow) {
    random_source random(91);
    for (int round = 0; round < 20'000; ++round) {
        const std::string text = random.text("a'#$\\\xC2\xC3\xE2\x80\x99\x93\xAB\xA9\xA0\x97", 24);
        std::string expected = text;
        for (const auto& [pattern, escape] : rows)
            expected = substitute_string(expected, pattern, escape);
        ASSERT_EQ(rtf_String_filter(text), expected);
    }
}

TEST(LatexStringFilter, EscapesTheUnderscoreOnly) {
    const struct {
        std::string text, filtered;
    } cases[] = {{"a_b_c", "a\\_b\\_c"},
                 {"", ""},
                 {"_", "\x5C\x5F"},
                 {"\\_", "\\\\_"},
                 {"\\{}%$&#^~'\xC3\xA9", "\\{}%$&#^~'\xC3\xA9"}};
    for (const auto& [text, filtered] : cases)
        EXPECT_EQ(latex_String_filter(text), filtered) << text;
}

}  // namespace
