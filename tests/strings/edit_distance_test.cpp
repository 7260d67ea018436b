#include "strings/edit_distance.h"

#include <algorithm>
#include <latch>
#include <numeric>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

#include "tests/strings/texts.h"

namespace {

TEST(Levenshtein, CountsInsertionsDeletionsAndReplacements) {
    const struct {
        std::string a, b;
        int distance;
    } cases[] = {{"", "", 0},
                 {"", "abc", 3},
                 {"abc", "", 3},
                 {"kitten", "sitting", 3},
                 {"abc", "abc", 0},
                 {"abc", "Abc", 1},
                 {"abc", "acb", 2},
                 {"\xE9", "e", 1},
                 {"abcdef", "bcdefg", 2},
                 {std::string("a\0", 2), "a", 1},
                 {"flaw", "lawn", 2}};
    for (const auto& [a, b, distance] : cases) {
        captured_output output;
        EXPECT_EQ(levenshtein(a, b), distance) << a << " " << b;
        EXPECT_EQ(output.err() + output.out(), "");
    }
}

TEST(Levenshtein, Takes998BytesAndRefuses999) {
    const std::string longest(998, 'a'), too_long(999, 'a');
    const struct {
        std::string a, b;
        int distance;
    } cases[] = {{longest, longest, 0},
                 {longest, "", 998},
                 {"", longest, 998},
                 {longest, std::string(998, 'b'), 998},
                 {too_long, "", -1},
                 {"", too_long, -1},
                 {too_long, too_long, -1},
                 {longest, too_long, -1},
                 {std::string(100'000, 'a'), "a", -1}};
    for (const auto& [a, b, distance] : cases) {
        captured_output output;
        EXPECT_EQ(levenshtein(a, b), distance);
        const std::vector<std::string> message = {"chaines trop grandes!\n"};
        EXPECT_EQ(output.err(), distance < 0 ? message.front() : "");
        EXPECT_EQ(output.err_flushes(), distance < 0 ? message : std::vector<std::string>());
        EXPECT_EQ(output.out(), "");
    }
}

/// With two rows instead of a table.
int two_row_distance(const std::string& a, const std::string& b) {
    std::vector<int> above(b.size() + 1), row(b.size() + 1);
    std::iota(above.begin(), above.end(), 0);
    for (std::size_t i = 0; i < a.size(); ++i) {
        row[0] = static_cast<int>(i) + 1;
        for (std::size_t j = 0; j < b.size(); ++j)
            row[j + 1] = std::min({row[j] + 1, above[j + 1] + 1, above[j] + (a[i] != b[j])});
        std::swap(above, row);
    }
    return above[b.size()];
}

TEST(Levenshtein, AgreesWithTwoRows) {
    random_source random(51);
    for (int round = 0; round < 50'000; ++round) {
        const std::string a = random.text("abc", 12), b = random.text("abc", 12);
        ASSERT_EQ(levenshtein(a, b), two_row_distance(a, b)) << a << " " << b;
    }
    for (int round = 0; round < 10; ++round) {
        const std::string a = random.text("abcd", 998), b = random.text("abcd", 998);
        ASSERT_EQ(levenshtein(a, b), two_row_distance(a, b));
    }
}

TEST(Levenshtein, IsAMetric) {
    random_source random(52);
    for (int round = 0; round < 50'000; ++round) {
        const std::string a = random.text("ab", 6), b = random.text("ab", 6),
                          c = random.text("ab", 6);
        const int distance = levenshtein(a, b);
        ASSERT_EQ(distance, levenshtein(b, a));
        ASSERT_EQ(distance == 0, a == b);
        ASSERT_LE(distance, levenshtein(a, c) + levenshtein(c, b));
        ASSERT_GE(distance, std::abs(static_cast<int>(a.size()) - static_cast<int>(b.size())));
        ASSERT_LE(distance, static_cast<int>(std::max(a.size(), b.size())));
    }
}

TEST(Levenshtein, ServesTwoThreadsAtOnce) {
    std::latch start(2);
    const auto compare = [&start](unsigned seed, int* wrong) {
        random_source random(seed);
        start.arrive_and_wait();
        for (int round = 0; round < 60; ++round) {
            const std::string a = random.text("abc", 600), b = random.text("abc", 600);
            *wrong += levenshtein(a, b) != two_row_distance(a, b);
        }
    };
    int wrong[2] = {0, 0};
    std::thread one(compare, 1U, &wrong[0]), other(compare, 2U, &wrong[1]);
    one.join();
    other.join();
    EXPECT_EQ(wrong[0], 0);
    EXPECT_EQ(wrong[1], 0);
}

}  // namespace
