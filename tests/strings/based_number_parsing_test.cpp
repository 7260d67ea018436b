// Hexadecimal and binary texts into numbers.
#include "strings/number_parsing.h"

#include <limits>
#include <locale>
#include <sstream>

#include <gtest/gtest.h>

#include "tests/strings/texts.h"

namespace {

TEST(Stouhex, ReadsHexadecimalAndTakesOtherBytesForZeros) {
    const struct {
        std::string text;
        unsigned long value;
    } cases[] = {
        {"", 0},
        {"ff", 255},
        {"FF", 255},
        {"1G", 16},
        {"0x1F", 31},
        {"-1", 1},
        {"1 1", 257},
        {"\xFF", 0},
        {"1\xE9", 16},
        {"aBcDeF", 0xabcdef},
        {"@", 0},
        {"`", 0},
        {":", 0},
        {"/1", 1},
        {"g", 0},
        {std::string("1\0", 2), 16},
        {"ffffffffffffffff", 18446744073709551615U},
        {"10000000000000000", 0},
        {"123456789abcdef01", 0x23456789abcdef01U},
    };
    for (const auto& [text, value] : cases) EXPECT_EQ(Stouhex(text), value) << text;
}

TEST(Stouhex, ReadsBackWhatTheStandardLibraryWrites) {
    random_source random(4);
    for (int round = 0; round < 50'000; ++round) {
        const unsigned long value = random.any_magnitude();
        std::ostringstream text;
        text.imbue(std::locale::classic());
        if (round % 2) text << std::uppercase;
        text << std::hex << value;
        ASSERT_EQ(Stouhex(text.str()), value);
    }
}

TEST(Stoshex, TakesTheFirstDigitForTheSign) {
    const struct {
        std::string text;
        long value;
    } cases[] = {
        {"", 0},
        {"7F", 127},
        {"80", -128},
        {"F", -1},
        {"8", -8},
        {"FFFF", -1},
        {"ffff", -1},
        {"7", 7},
        {"8000000", -134217728},
        {"FFFFFFF", -1},
        {"G", -16},
        {":", -16},
        {"\xFF", 0},
        {"\x80", 0},
        {"\xFF"
         "F",
         15},
        {" ", 0},
        {std::string("\0F", 2), 15},
        {"FFFFFFFF", 4294967294},  // eight digits lose 1
        {"80000000", 2147483647},
        {"800000000", 34359738368 - 16},  // nine lose 2 to the 4
        {"FFFFFFFFFFFFFFFF", -2},         // sixteen lose 1
        {"7FFFFFFFFFFFFFFF", 9223372036854775807},
    };
    for (const auto& [text, value] : cases) EXPECT_EQ(Stoshex(text), value) << text;
}

TEST(Stoshex, IsTwosComplementForOneToSevenDigits) {
    random_source random(5);
    for (int round = 0; round < 50'000; ++round) {
        const int digits = random.number(1, 7), bits = 4 * digits;
        const long value = random.number<long>(-(1L << (bits - 1)), (1L << (bits - 1)) - 1);
        char text[16];
        std::snprintf(text, sizeof text, "%0*lx", digits, value & ((1L << bits) - 1));
        ASSERT_EQ(Stoshex(text), value) << text;
    }
}

TEST(Stoubin, ReadsBinaryAndTakesOtherBytesForTheirDistanceFrom0) {
    const struct {
        std::string text;
        long value;
    } cases[] = {
        {"", 0},
        {"0", 0},
        {"1", 1},
        {"101", 5},
        {"2", 2},
        {"12", 4},
        {"\xFF", -49},
        {"1\x80", -174},
        {"-1", -5},
        {std::string(63, '1'), std::numeric_limits<long>::max()},
        {std::string(64, '1'), -1},
        {"1" + std::string(64, '0'), 0},
    };
    for (const auto& [text, value] : cases) EXPECT_EQ(Stoubin(text), value) << text;
}

TEST(Stosbin, TakesTheFirstByteForTheSign) {
    const struct {
        std::string text;
        long value;
    } cases[] = {
        {"", 0},
        {"0", 0},
        {"1", -1},
        {"0101", 5},
        {"1011", -5},
        {"10", -2},
        {"11", -1},
        {"1000", -8},
        {"00", 0},
        {"01", 1},
        {"2", -1},
        {"x", -1},
        {"x11", -1},
        {"x0", -2},
        {"02", 2},
        {"12", 0},
        {"\xFF", -1},
        {"0\xFF", -49},
        {std::string(64, '1'), -1},
        {"1" + std::string(63, '0'), std::numeric_limits<long>::min()},
    };
    for (const auto& [text, value] : cases) EXPECT_EQ(Stosbin(text), value) << text;
}

TEST(Stosbin, IsTwosComplementForEveryWidth) {
    random_source random(6);
    for (int round = 0; round < 50'000; ++round) {
        const int width = random.number(1, 64);
        std::string text = random.text("01", 64);
        text.resize(static_cast<std::size_t>(width), '0');
        unsigned long bits = 0;
        for (const char byte : text) bits = bits * 2 + (byte == '1');
        // Moved to the top and back, the bits bring their sign along.
        const long value = static_cast<long>(bits << (64 - width)) >> (64 - width);
        ASSERT_EQ(Stosbin(text), value) << text;
        ASSERT_EQ(Stoubin(text.substr(1)), Stosbin("0" + text.substr(1)));
    }
}

TEST(Stoloruhex, ReadsHexadecimalFromTheMarkerOn) {
    const struct {
        std::string marker, text;
        long value;
    } cases[] = {
        {"0x", "0x10", 16},
        {"0x", "10", 10},
        {"0x", "0x1F", 31},
        {"$", "$FF", 255},
        {"$", "12$FF", 255},
        {"$", "-12", -12},
        {"$", "", 0},
        {"", "10", 16},
        {"", "", 0},
        {"0x", "0x", 0},
        {"0x", "0X10", ('X' - '0') * 100 + 10},
        {"$", "1$2$3", 0x2 * 256 + 3},
        {"ff", "1ff", 255},
        {"long marker", "7", 7},
    };
    for (const auto& [marker, text, value] : cases) {
        captured_output output;
        EXPECT_EQ(Stoloruhex(marker, text), value) << marker << " " << text;
        EXPECT_EQ(output.err() + output.out(), "");
    }
}

TEST(Stohex, ReadsHexadecimalUpToTheMarker) {
    const struct {
        std::string text, marker;
        long value;
    } cases[] = {{"20h", "h", 32},    {"1Fh", "h", 31},    {"1Fhzz", "h", 31}, {"h", "h", 0},
                 {"FFx0", "x0", 255}, {"12h34h", "h", 18}, {"12", "", 0},      {"", "", 0}};
    for (const auto& [text, marker, value] : cases) {
        captured_output output;
        EXPECT_EQ(Stohex(text, marker), value) << text;
        EXPECT_EQ(output.err() + output.out(), "") << text;
    }
}

TEST(Stohex, TracesADecimalConversion) {
    const struct {
        std::string text, printed;
        long value;
    } cases[] = {
        {"20", "Decimal Conversion 20\n", 20},
        {"-5", "Decimal Conversion -5\n", -5},
        {"", "Decimal Conversion 0\n", 0},
        {"1234567", "Decimal Conversion 1234567\n", 1234567},
        {"9223372036854775807", "Decimal Conversion 9223372036854775807\n", 9223372036854775807}};
    for (const auto& [text, printed, value] : cases) {
        captured_output output;
        EXPECT_EQ(Stohex(text, "h"), value);
        EXPECT_EQ(output.err(), printed);
        EXPECT_EQ(output.err_flushes(), std::vector<std::string>{printed});
        EXPECT_EQ(output.out(), "");
    }
}

TEST(Stohex, TracesInDecimalWhateverTheStreamIsSetTo) {
    captured_output output;
    std::cerr << std::hex << std::showpos;
    Stohex("255", "h");
    std::cerr << std::dec << std::noshowpos;
    EXPECT_EQ(output.err(), "Decimal Conversion 255\n");
}

TEST(Stohex, AgreesWithStoloruhexOnWhereTheMarkerIs) {
    random_source random(7);
    for (int round = 0; round < 30'000; ++round) {
        const std::string text = random.text("0aFhx", 8), marker = random.text("hx", 2);
        const std::size_t position = text.find(marker);
        captured_output output;
        if (position == std::string::npos) {
            ASSERT_EQ(Stohex(text, marker), Stol(text));
            ASSERT_EQ(Stoloruhex(marker, text), Stol(text));
        } else {
            ASSERT_EQ(Stohex(text, marker), static_cast<long>(Stouhex(text.substr(0, position))));
            ASSERT_EQ(Stoloruhex(marker, text), static_cast<long>(Stouhex(text.substr(position))));
        }
    }
}

}  // namespace
