#include "strings/number_formatting.h"

#include <bitset>
#include <cmath>
#include <cstdio>
#include <limits>

#include <gtest/gtest.h>

#include "tests/strings/texts.h"

namespace {

TEST(Unslong2S, WritesDecimalDigits) {
    const struct {
        unsigned long value;
        std::string text;
    } cases[] = {{0, "0"},
                 {7, "7"},
                 {9, "9"},
                 {10, "10"},
                 {100, "100"},
                 {1234567, "1234567"},
                 {18446744073709551615U, "18446744073709551615"}};
    for (const auto& [value, text] : cases) {
        EXPECT_EQ(unslong2S(value), text);
        EXPECT_EQ(unslonglong2S(value), text);
    }
}

TEST(Long2S, WritesAMinusBeforeTheMagnitude) {
    const struct {
        long value;
        std::string text;
    } cases[] = {{0, "0"},
                 {-5, "-5"},
                 {5, "5"},
                 {-10, "-10"},
                 {std::numeric_limits<long>::max(), "9223372036854775807"},
                 {std::numeric_limits<long>::min(), "-9223372036854775808"}};
    for (const auto& [value, text] : cases) {
        EXPECT_EQ(long2S(value), text);
        EXPECT_EQ(longlong2S(value), text);
    }
}

TEST(Long2S, AgreesWithTheStandardLibrary) {
    random_source random(11);
    for (int round = 0; round < 100'000; ++round) {
        const unsigned long value = random.any_magnitude();
        ASSERT_EQ(unslong2S(value), std::to_string(value));
        ASSERT_EQ(unslonglong2S(value), std::to_string(value));
        ASSERT_EQ(long2S(-static_cast<long>(value)), std::to_string(-static_cast<long>(value)));
        ASSERT_EQ(longlong2S(static_cast<long>(value)), std::to_string(static_cast<long>(value)));
    }
}

TEST(UnslongbyS, WritesBase8InLetters) {
    const struct {
        unsigned long value;
        std::string text;
    } cases[] = {
        {0, "A"},  {1, "B"},   {7, "H"},    {8, "BA"},
        {9, "BB"}, {63, "HH"}, {64, "BAA"}, {18446744073709551615U, "BHHHHHHHHHHHHHHHHHHHHH"}};
    for (const auto& [value, text] : cases) EXPECT_EQ(unslongbyS(value), text);
}

TEST(UnslongbyS, IsOctalShiftedFromDigitsToLetters) {
    random_source random(12);
    for (int round = 0; round < 50'000; ++round) {
        const unsigned long value = random.any_magnitude();
        char octal[32];
        const int length = std::snprintf(octal, sizeof octal, "%lo", value);
        for (int at = 0; at < length; ++at) octal[at] = static_cast<char>(octal[at] + 'A' - '0');
        ASSERT_EQ(unslongbyS(value), octal);
    }
}

TEST(Bin8toS, WritesTheLowEightBits) {
    const struct {
        int value;
        std::string text;
    } cases[] = {{0, "00000000"},
                 {5, "00000101"},
                 {128, "10000000"},
                 {255, "11111111"},
                 {256, "00000000"},
                 {-1, "11111111"},
                 {-2, "11111110"},
                 {std::numeric_limits<int>::min(), "00000000"},
                 {std::numeric_limits<int>::max(), "11111111"}};
    for (const auto& [value, text] : cases) EXPECT_EQ(bin8toS(value), text) << value;
    for (int value = -70'000; value < 70'000; ++value)
        ASSERT_EQ(bin8toS(value), std::bitset<8>(static_cast<unsigned>(value)).to_string());
}

TEST(Hex1toS, KeepsTheSignOfTheRemainder) {
    const std::string characters = "!\"#$%&'()*+,-./0123456789abcdef";  // of -15 to 15
    for (int value = -15; value <= 15; ++value) {
        const std::string expected(1, characters[static_cast<std::size_t>(value + 15)]);
        EXPECT_EQ(hex1toS(value), expected) << value;
        EXPECT_EQ(hex1toS(value + (value < 0 ? -160 : 160)), expected) << value;
    }
    EXPECT_EQ(hex1toS(10), "a");
    EXPECT_EQ(hex1toS(-1), "/");
    EXPECT_EQ(hex1toS(16), "0");
    EXPECT_EQ(hex1toS(-16), "0");
    EXPECT_EQ(hex1toS(std::numeric_limits<int>::min()), "0");
}

TEST(HexNtoS, WritesItsWidthWhateverTheValue) {
    EXPECT_EQ(hex2toS(255), "ff");
    EXPECT_EQ(hex2toS(0x1ff), "ff");
    EXPECT_EQ(hex2toS(0), "00");
    EXPECT_EQ(hex2toS(-1), "//");
    EXPECT_EQ(hex2toS(-16), "/0");
    EXPECT_EQ(hex4toS(4660), "1234");
    EXPECT_EQ(hex4toS(0x12345), "2345");
    EXPECT_EQ(hex4toS(-1), "////");
    EXPECT_EQ(hex8toS(305419896), "12345678");
    EXPECT_EQ(hex8toS(0), "00000000");
    EXPECT_EQ(hex8toS(-1), "////////");
    EXPECT_EQ(hex8toS(0x7fffffff), "7fffffff");
}

TEST(Hex8toS, WritesItsHalvesAsInts) {
    EXPECT_EQ(hex8toS(0xFFFFFFFF), "ffff////");  // the low half is the int -1
    EXPECT_EQ(hex8toS(0x80000000), "80000000");  // the int -2147483648: remainders of 0
    EXPECT_EQ(hex8toS(0x1234567800000001), "00000001");
}

TEST(HexNtoS, AgreesWithTheStandardLibraryOnNonNegativeValues) {
    random_source random(13);
    for (int round = 0; round < 100'000; ++round) {
        const int value = random.number(0, std::numeric_limits<int>::max());
        char text[9];
        std::snprintf(text, sizeof text, "%08x", static_cast<unsigned>(value));
        const std::string digits = text;
        ASSERT_EQ(hex8toS(value), digits);
        ASSERT_EQ(hex4toS(value), digits.substr(4));
        ASSERT_EQ(hex2toS(value), digits.substr(6));
        ASSERT_EQ(hex1toS(value), digits.substr(7));
    }
}

TEST(DtoS, WritesExactlyTheAskedDigits) {
    const struct {
        double value;
        int precision;
        std::string text;
    } cases[] = {
        {3.14159, 2, "3.14"},
        {-2.5, 1, "-2.5"},
        {0.05, 3, "0.050"},
        {1.0, 0, "1."},
        {3.0, -1, "3."},
        {3.0, -2147483647 - 1, "3."},
        {0.0, 2, "0.00"},
        {-0.0, 1, "0.0"},
        {12.0625, 4, "12.0625"},
        {1e15, 1, "1000000000000000.0"},
        {-1234.5678, 2, "-1234.57"},
        {0.25, 18, "0.250000000000000000"},
        {9e18, 1, "9000000000000000000.0"},
        {-0.001, 2, "-0.00"},  // the sign is that of the value, not of the digits
        {5e-324, 3, "0.000"},
    };
    for (const auto& [value, precision, text] : cases)
        EXPECT_EQ(dtoS(value, precision), text) << value << " " << precision;
}

TEST(DtoS, NeverCarriesIntoTheWholePart) {
    EXPECT_EQ(dtoS(0.999, 2), "0.00");
    EXPECT_EQ(dtoS(2.7, 0), "2.");
    EXPECT_EQ(dtoS(9.96, 1), "9.0");
    EXPECT_EQ(dtoS(-1.999, 1), "-1.0");
}

TEST(DtoS, DropsARemainderOfExactlyHalf) {
    EXPECT_EQ(dtoS(0.125, 2), "0.12");
    EXPECT_EQ(dtoS(0.375, 2), "0.37");
    EXPECT_EQ(dtoS(2.5, 0), "2.");
    EXPECT_EQ(dtoS(0.1259765625, 2), "0.13");
}

TEST(DtoS, WritesWhatNo64BitIntegerHoldsExactly) {
    const double infinity = std::numeric_limits<double>::infinity();
    EXPECT_EQ(dtoS(9223372036854775808.0, 1), "9223372036854775808.0");
    EXPECT_EQ(dtoS(-1e19, 2), "-10000000000000000000.00");
    EXPECT_EQ(dtoS(1e22, 0), "10000000000000000000000.");
    EXPECT_EQ(dtoS(1e19, 1000), "10000000000000000000.000000000000000000");
    EXPECT_EQ(dtoS(infinity, 2), "inf");
    EXPECT_EQ(dtoS(-infinity, 2), "-inf");
    EXPECT_EQ(dtoS(std::nan(""), 2), "nan");
    EXPECT_EQ(dtoS(-std::nan(""), 2), "nan");
    EXPECT_EQ(dtoS(std::numeric_limits<double>::max(), 0).size(), 310U);
}

TEST(DtoS, ReturnsForPrecisionsThatOverflowItsScale) {
    for (const int precision : {19, 20, 22, 40, 63, 64, 65, 1000, 2147483647})
        for (const double value : {0.0, 3.25, -3.25, 0.9999999, 1e18})
            EXPECT_EQ(dtoS(value, precision).find('.'), dtoS(value, 0).size() - 1) << precision;
    EXPECT_EQ(dtoS(3.25, 64), "3.");  // the scale has wrapped to 0
}

TEST(DtoS, RoundsTheFractionToTheNearest) {
    random_source random(14);
    double power[10] = {1};
    for (int precision = 1; precision < 10; ++precision)
        power[precision] = 10 * power[precision - 1];
    for (int round = 0; round < 100'000; ++round) {
        const int precision = random.number(0, 9);
        const long whole = random.number(0, 1 << 20);
        const double fraction = random.number(0, (1 << 30) - 1) / std::ldexp(1.0, 30);
        const std::string text = dtoS(-static_cast<double>(whole) - fraction, precision);
        const std::string start = (whole + fraction > 0 ? "-" : "") + std::to_string(whole) + ".";
        ASSERT_EQ(text.substr(0, start.size()), start);
        const std::string digits = text.substr(start.size());
        ASSERT_EQ(digits.size(), static_cast<std::size_t>(precision));
        const double units = digits.empty() ? 0 : static_cast<double>(std::stol(digits));
        const double error = std::fabs(units - fraction * power[precision]);
        const bool carry_lost = fraction * power[precision] > power[precision] - 0.5 && units == 0;
        ASSERT_TRUE(carry_lost || error <= 0.5 + 1e-5) << text << " " << fraction;
    }
}

TEST(CtoS, HoldsOneCharacter) {
    EXPECT_EQ(ctoS('x'), "x");
    for (int byte = -128; byte < 128; ++byte)
        EXPECT_EQ(ctoS(static_cast<char>(byte)), std::string(1, static_cast<char>(byte)));
}

}  // namespace
