#include "strings/number_parsing.h"

#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstring>
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

TEST(Stod, ReadsTheAcceptedTexts) {
    const struct {
        std::string text;
        char separator;
        double value;
    } cases[] = {
        {"3,25", ',', 3.25},        {"3.25", '.', 3.25},
        {"  -1.5E2", '.', -150.0},  {"0", '.', 0.0},
        {"2.5e-1", '.', 0.25},      {"0.5", '.', 0.5},
        {"-0.5", '.', -0.5},        {"12", '.', 12.0},
        {"-7", '.', -7.0},          {"1E3", '.', 1000.0},
        {"1e+3", '.', 1000.0},      {"-3,5E+2", ',', -350.0},
        {"0.000000001", '.', 1e-9}, {"10.05", '.', 10.05},
        {"  7", '.', 7.0},          {"2147483647", '.', 2147483647.0},
        {"1;5", ';', 1.5},          {"0.25E1", '.', 2.5},
        {"1E12", '.', 1e12},
    };
    for (const auto& [text, separator, value] : cases)
        EXPECT_DOUBLE_EQ(Stod(text, separator), value) << text;
}

TEST(Stod, ReadsEveryOtherTextAsZero) {
    for (const char* text :
         {"",     "-0",    "-",    "+1",   "+",   ".5",   "5.",    "1,5",   "00",   "05",   "0E5",
          "1E",   "1E0",   "1E05", "1E+",  "1E-", "1E-0", "1E+01", "1.5E",  "1.E2", "1..2", "12 ",
          " ",    "- 1",   "--1",  "1 2",  "1a",  "a",    "1E2.5", "1E2E3", "\t1",  "-.5",  "-00",
          "-0E1", "1.5.2", "0 ",   "0x10", "nan", "inf",  "1E 2",  "1E2 ",  "1e2-"}) {
        EXPECT_EQ(Stod(text, '.'), 0.0) << text;
        EXPECT_FALSE(std::signbit(Stod(text, '.'))) << text;
    }
    EXPECT_EQ(Stod("3.25", ','), 0.0);
    EXPECT_EQ(Stod(std::string("1\0", 2), '.'), 0.0);
}

TEST(Stod, GivesANegativeZeroForNegativeZeroWithAFraction) {
    EXPECT_EQ(Stod("-0.0", '.'), 0.0);
    EXPECT_TRUE(std::signbit(Stod("-0.0", '.')));
}

TEST(Stod, TriesTheSeparatorBeforeDigitsAndE) {
    EXPECT_EQ(Stod("1E5", 'E'), 1.5);
    EXPECT_EQ(Stod("152", '5'), 1.2);
    EXPECT_EQ(Stod("0-5", '-'), 0.5);
    EXPECT_EQ(Stod(" 1 5", ' '), 1.5);
    EXPECT_EQ(Stod("001", '0'), 0.1);
}

TEST(Stod, WrapsItsPiecesTo32Bits) {
    const struct {
        std::string text;
        double value;
    } cases[] = {
        {"2147483648", -2147483648.0},
        {"3000000000", -1294967296.0},
        {"-3000000000", 1294967296.0},
        {"1.12345678901", -539222987.0 / 1215752192.0 + 1.0},
        {"1E4294967297", 10.0},  // the exponent wraps to 1
        {"5E2147483648", 5.0},   // to the lowest integer: no step at all
        {"1E2147483647", std::numeric_limits<double>::infinity()},
        {"-1E999999999", -std::numeric_limits<double>::infinity()},
        {"1E-2147483647", 0.0},
        {"0.0E2000000000", 0.0},
        {"0." + std::string(31, '0') + "1", std::numeric_limits<double>::infinity()},
    };
    for (const auto& [text, value] : cases) EXPECT_EQ(Stod(text, '.'), value) << text;
    EXPECT_TRUE(std::isnan(Stod("0." + std::string(32, '0'), '.')));
    EXPECT_TRUE(std::isnan(Stod("0." + std::string(32, '0') + "E2000000000", '.')));
}

TEST(Stod, ScalesOneStepAtATime) {
    double down = 7.0, up = 7.0;
    for (int exponent = 1; exponent <= 330; ++exponent) {
        down /= 10.0;
        up *= 10.0;
        EXPECT_EQ(Stod("7E-" + std::to_string(exponent), '.'), down) << exponent;
        EXPECT_EQ(Stod("7E" + std::to_string(exponent), '.'), up) << exponent;
    }
}

TEST(Stod, AgreesWithTheStandardLibraryWithinTheRangeOfItsPieces) {
    random_source random(3);
    for (int round = 0; round < 100'000; ++round) {
        std::string text = random.number(0, 1) ? "-" : "";
        text += std::to_string(random.number(0, 2147483647) >> random.number(0, 30));
        text += "." + std::to_string(random.number(0, 999999999));
        if (random.number(0, 1))
            text += (random.number(0, 1) ? "E-" : "e") + std::to_string(random.number(1, 40));
        double expected = 0;
        std::from_chars(text.data(), text.data() + text.size(), expected);
        ASSERT_NEAR(Stod(text, '.'), expected, std::fabs(expected) * 1e-13) << text;
    }
}

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
