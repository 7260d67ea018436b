// Texts as recordings hold them.
#include <gtest/gtest.h>

#include "recording/recorded_text.h"

namespace {

TEST(RecordedText, EveryCharacterOfUtf8HasItsLength) {
    const struct {
        std::string text;
        std::size_t length;
    } cases[] = {
        {"", 0},
        {"a", 1},
        {std::string(1, '\0'), 1},
        {"\x7F", 1},
        {"\xC2\x80", 2},
        {"\xDF\xBF", 2},
        {"\xE0\xA0\x80", 3},
        {"\xED\x9F\xBF", 3},
        {"\xEE\x80\x80", 3},
        {"\xEF\xBF\xBF", 3},
        {"\xF0\x90\x80\x80", 4},
        {"\xF4\x8F\xBF\xBF", 4},
        // no characters
        {"\x80", 0},
        {"\xC0\x80", 0},
        {"\xC1\xBF", 0},
        {"\xC2", 0},
        {"\xC2x", 0},
        {"\xE0\x9F\xBF", 0},
        {"\xED\xA0\x80", 0},
        {"\xE2\x82", 0},
        {"\xF0\x8F\xBF\xBF", 0},
        {"\xF4\x90\x80\x80", 0},
        {"\xF5\x80\x80\x80", 0},
        {"\xFF", 0},
    };
    for (const auto& [text, length] : cases) EXPECT_EQ(utf8_length(text), length) << text;
}

TEST(RecordedText, WhatIsNoneIsEscaped) {
    const struct {
        std::string text, name, value;
    } cases[] = {
        {"te", "te", "te"},
        {"dépôt €", "dépôt €", "dépôt €"},
        {"a\tb", "a\\x09b", "a\tb"},
        {"a\nb\r", "a\\x0Ab\\x0D", "a\nb\r"},
        {"\x1B[2J\x7F", "\\x1B[2J\\x7F", "\\x1B[2J\\x7F"},
        {"d\xE9p\xF4t", "d\\xE9p\\xF4t", "d\\xE9p\\xF4t"},
        {"\xE2\x82", "\\xE2\\x82", "\\xE2\\x82"},
        {std::string("a\0b", 3), "a\\x00b", "a\\x00b"},
    };
    for (const auto& [text, name, value] : cases) {
        EXPECT_EQ(recorded_name(text), name);
        EXPECT_EQ(recorded_text(text), value);
        EXPECT_EQ(recorded_name(name), name) << "once escaped it stays";
        EXPECT_EQ(recorded_text(value), value) << "once escaped it stays";
    }
}

}  // namespace
