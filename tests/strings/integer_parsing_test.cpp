#include "strings/number_parsing.h"

#include <limits>
#include <memory>

#include <gtest/gtest.h>

#include "strings/number_formatting.h"
#include "tests/strings/texts.h"

namespace {

const std::string all_bytes;  // for random_source::text

TEST(Stoa, CopiesTheBytesAndEndsThemWithANul) {
    for (const std::string& text : {std::string(), std::string("te"), std::string("a\0b", 3),
                                    std::string("\xE9\xFF"), std::string(5000, 'x')}) {
        const std::unique_ptr<char[]> copy(Stoa(text));
        EXPECT_EQ(std::string(copy.get(), text.size() + 1), text + '\0');
    }
}

TEST(Stoi, ReadsEveryByteAsADigit) {
    const struct {
        std::string text;
        int value;
    } cases[] = {
        {"", 0},
        {"-", 0},
        {"0", 0},
        {"7", 7},
        {"-12", -12},
        {"0012", 12},
        {"1a", 59},
        {"+5", -45},
        {" 5", -155},
        {"--5", 25},
        {"-+5", 45},
        {"5-", 47},
        {"\xE9", -71},
        {"\x80", -176},
        {"\x7F", 79},
        {"-\xFF", 49},
        {"12 ", 104},
        {"1.5", 85},
        {"A", 17},
        {std::string("\0", 1), -48},
        {std::string("1\0", 2), -38},
    };
    for (const auto& [text, value] : cases) {
        EXPECT_EQ(Stoi(text), value) << text;
        EXPECT_EQ(Stol(text), value) << text;
        EXPECT_EQ(Stoll(text), value) << text;
    }
}

TEST(Stoi, WrapsTo32Bits) {
    const struct {
        std::string text;
        int value;
    } cases[] = {
        {"2147483647", 2147483647},
        {"2147483648", std::numeric_limits<int>::min()},
        {"-2147483648", std::numeric_limits<int>::min()},
        {"-2147483649", 2147483647},
        {"4294967295", -1},
        {"4294967297", 1},
        {"-4294967297", -1},
        {"99999999999999999999", 1661992959},
    };
    for (const auto& [text, value] : cases) EXPECT_EQ(Stoi(text), value) << text;
}

TEST(Stol, WrapsTo64Bits) {
    const struct {
        std::string text;
        long value;
    } cases[] = {
        {"5000000000", 5000000000},
        {"9223372036854775807", std::numeric_limits<long>::max()},
        {"9223372036854775808", std::numeric_limits<long>::min()},
        {"-9223372036854775808", std::numeric_limits<long>::min()},
        {"18446744073709551617", 1},
        {"-18446744073709551618", -2},
    };
    for (const auto& [text, value] : cases) {
        EXPECT_EQ(Stol(text), value) << text;
        EXPECT_EQ(Stoll(text), value) << text;
    }
}

TEST(Stoi, ReadsBackWhatLong2SWrites) {
    random_source random(1);
    for (int round = 0; round < 100'000; ++round) {
        const auto value = static_cast<long>(random.any_magnitude());
        ASSERT_EQ(Stol(long2S(value)), value);
        ASSERT_EQ(Stol(long2S(-value)), -value);
        ASSERT_EQ(Stoll(longlong2S(-value)), -value);
        ASSERT_EQ(Stoi(long2S(value)), static_cast<int>(value));
    }
}

TEST(Stoi, SumsSignedBytesTimesPowersOfTen) {
    random_source random(2);
    for (int round = 0; round < 100'000; ++round) {
        const std::string text = random.text(all_bytes, 12);
        const bool negative = !text.empty() && text[0] == '-';
        long sum = 0, power = 1;
        for (std::size_t at = text.size(); at-- > (negative ? 1U : 0U); power *= 10)
            sum += power * (static_cast<signed char>(text[at]) - 48);
        if (negative) sum = -sum;
        ASSERT_EQ(Stol(text), sum) << text;
        ASSERT_EQ(Stoll(text), sum) << text;
        ASSERT_EQ(Stoi(text), static_cast<int>(sum)) << text;
    }
}

}  // namespace
