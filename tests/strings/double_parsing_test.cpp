#include "strings/number_parsing.h"

#include <charconv>
#include <cmath>
#include <limits>

#include <gtest/gtest.h>

#include "tests/strings/texts.h"

namespace {

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

}  // namespace
