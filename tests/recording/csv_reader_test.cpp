// Reading rows back: only the form in which they are written is one.
#include <gtest/gtest.h>

#include <random>
#include <sstream>

#include "recording/csv_reader.h"

namespace {

struct read_back {
    std::vector<event_row> rows;
    bool cut = false;
    std::string problem;
};

read_back rows_of(const std::string& text) {
    std::stringbuf bytes(text);
    csv_reader reader(bytes);
    read_back result;
    try {
        event_row row;
        while (reader.next(row)) result.rows.push_back(row);
    } catch (const recording_problem& problem) {
        result.problem = std::to_string(problem.line) + ": " + problem.why;
    }
    result.cut = reader.cut();
    return result;
}

TEST(CsvReader, AFieldIsWhatStandsBetweenTheCommas) {
    const struct {
        std::string text;
        event_row row;
    } cases[] = {
        {"0,session,format,1\n", {"0", "session", "format", "1"}},
        {",,,\n", {"", "", "", ""}},
        {"0,session,titre,\"a,b\"\n", {"0", "session", "titre", "a,b"}},
        {"0,session,titre,\"dit \"\"non\"\"\"\n", {"0", "session", "titre", "dit \"non\""}},
        {"0,session,titre,\"\"\"\"\n", {"0", "session", "titre", "\""}},
        {"0,session,titre,\"a\nb\"\n", {"0", "session", "titre", "a\nb"}},
        {"0,session,titre,\"a\r\nb\"\n", {"0", "session", "titre", "a\r\nb"}},
        {"\",\",\"\n\",x,é\n", {",", "\n", "x", "é"}},
    };
    for (const auto& [text, row] : cases) {
        const read_back back = rows_of(text);
        ASSERT_EQ(back.rows.size(), 1U) << text;
        EXPECT_EQ(back.rows[0], row) << text;
        EXPECT_FALSE(back.cut) << text;
    }
}

TEST(CsvReader, OtherFormsAreRefusedWithTheirLine) {
    const struct {
        std::string text, problem;
    } cases[] = {
        {"a,b,c\n", "1: moins de quatre champs"},
        {"a,b,c,d\n\n", "2: moins de quatre champs"},
        {"a,b,c,d,e\n", "1: plus de quatre champs"},
        {"a,b,c,d\r\n", "1: un retour chariot"},
        {"a,b,c,d\na,\r,c,d\n", "2: un retour chariot"},
        {"a,b\"c,d,e\n", "1: un guillemet au milieu d'un champ"},
        {"a,\"b\",c,d\n", "1: des guillemets inutiles"},
        {"a,\"\",c,d\n", "1: des guillemets inutiles"},
        {"a,\"b,\"x,c,d\n", "1: du texte après un guillemet fermant"},
        {"a,\"b,\" ,c,d\n", "1: du texte après un guillemet fermant"},
        {"\"a\n\nb\",b,c,d\na,b,c\n", "4: moins de quatre champs"},
        {"a,b,c,\xE9\n", "1: un octet qui n'a pas de place dans un texte"},
        {"a,b,c,\xC3\n", "1: un octet qui n'a pas de place dans un texte"},
        {"a,b,c,\xC0\x80\n", "1: un octet qui n'a pas de place dans un texte"},
        {"a,b,c,\xED\xA0\x80\n", "1: un octet qui n'a pas de place dans un texte"},
        {"a,b,c,\x1B[2J\n", "1: un octet qui n'a pas de place dans un texte"},
        {std::string("a,b,\0,d\n", 8), "1: un octet qui n'a pas de place dans un texte"},
    };
    for (const auto& [text, problem] : cases) EXPECT_EQ(rows_of(text).problem, problem) << text;
}

TEST(CsvReader, ARowThatIsCutOffIsLeftOut) {
    const std::string whole = "1,a,b,c\n2,\"x,\"\"y\",é,\"l\nm\"\n";
    for (std::size_t length = 0; length <= whole.size(); ++length) {
        const read_back back = rows_of(whole.substr(0, length));
        const bool first = length >= 8, second = length == whole.size();
        EXPECT_EQ(back.rows.size(), static_cast<std::size_t>(first) + second) << length;
        EXPECT_EQ(back.cut, length != 0 && length != 8 && !second) << length;
        EXPECT_EQ(back.problem, "") << length;
    }
}

TEST(CsvReader, ARowOfMoreThan64KiBIsNone) {
    const std::string most(65536 - 7, 'x');
    EXPECT_EQ(rows_of("a,b,c," + most + "\n").rows.size(), 1U);
    EXPECT_EQ(rows_of("a,b,c," + most + "x\n").problem, "1: plus de 65536 octets");
    EXPECT_EQ(rows_of("a,b,c,\"" + std::string(100'000, ',')).problem, "1: plus de 65536 octets");
}

/// Any text that a row may hold, of the characters that matter.
std::string some_text(std::mt19937& random) {
    static const std::string pieces[] = {"a", ",", "\"", "\n", "\r", "é", " ", "€", "\t", "0"};
    std::string text;
    for (auto length = random() % 6; length > 0; --length) text += pieces[random() % 10];
    return text;
}

TEST(CsvReader, WhatIsWrittenIsReadBack) {
    std::mt19937 random(13);
    for (int i = 0; i < 20'000; ++i) {
        std::vector<event_row> rows;
        std::string text;
        for (auto count = random() % 4; count > 0; --count) {
            rows.push_back(
                {some_text(random), some_text(random), some_text(random), some_text(random)});
            text += csv_line(rows.back());
        }
        const read_back back = rows_of(text);
        ASSERT_EQ(back.rows, rows) << text;
        ASSERT_FALSE(back.cut) << text;
    }
}

TEST(CsvReader, WhatIsReadWasWrittenSo) {
    constexpr char bytes[] = "a,\"\n\r";
    std::mt19937 random(29);
    for (int i = 0; i < 200'000; ++i) {
        std::string text;
        for (auto length = random() % 12; length > 0; --length) text += bytes[random() % 5];
        const read_back back = rows_of(text);
        if (!back.problem.empty() || back.cut) continue;
        std::string written;
        for (const event_row& each : back.rows) written += csv_line(each);
        ASSERT_EQ(written, text);
    }
}

}  // namespace
