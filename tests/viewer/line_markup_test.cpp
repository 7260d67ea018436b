#include "viewer/line_markup.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>

#include "strings/record_scanning.h"
#include "tests/strings/texts.h"
#include "tests/viewer/documents.h"

namespace {

using namespace std::string_literals;

TEST(TypeLigne, IsTheSameForEveryFilter) {
    const struct {
        std::string line;
        int type;
    } cases[] = {{"", 0},     {"#", 0},       {"x", 0},       {"C", 0},
                 {"text", 0}, {"##", 0},      {"# C", 0},     {" #C", 0},
                 {"C#", 0},   {"#C", 1},      {"#C T10 ", 1}, {"#Couleur", 1},
                 {"#P", 2},   {"#P T10 ", 2}, {"#T", 3},      {"#T and more", 3},
                 {"#c", 0},   {"#p", 0},      {"#t", 0},      {"#X", 0},
                 {"#\0"s, 0}, {"#\xC3", 0},   {"\0C"s, 0}};
    OFD_afficheur_filtre_affichage screen(nullptr, 0);
    OFD_afficheur_filtre_texte text(nullptr, 0);
    OFD_afficheur_filtre_impression print(nullptr, 0);
    for (const auto& [line, type] : cases) {
        EXPECT_EQ(screen.typeligne(line), type) << line;
        EXPECT_EQ(text.typeligne(line), type) << line;
        EXPECT_EQ(print.typeligne(line), type) << line;
    }
}

TEST(TypeLigne, IsNotTextForThreePairsOfBytesAlone) {
    int marked = 0;
    for (int first = 0; first < 256; ++first)
        for (int second = 0; second < 256; ++second) {
            const std::string line = {static_cast<char>(first), static_cast<char>(second)};
            marked += line_markup::type_of(line) != line_markup::text_line;
        }
    EXPECT_EQ(marked, 3);
}

TEST(Pages, HoldSeventySevenCountedLines) {
    const struct {
        std::string what;
        text_lines lines;
        int last_page;
    } cases[] = {{"no line", {}, 0},
                 {"one", copies(1, "x"), 0},
                 {"77", copies(77, "x"), 0},
                 {"78", copies(78, "x"), 1},
                 {"154", copies(154, "x"), 1},
                 {"155", copies(155, "x"), 2},
                 {"231", copies(231, "x"), 2},
                 {"232", copies(232, "x"), 3},
                 {"77 rules", copies(77, "#T"), 0},
                 {"78 rules and empty lines", joined({copies(40, "#T"), copies(38, "")}), 1},
                 {"definitions alone", joined({copies(200, "#C 10 "), copies(200, "#P")}), 0},
                 {"definitions before 77",
                  joined({
                      copies(5, "#C 10 "),
                      copies(77, "x"),
                  }),
                  0},
                 {"a definition among 77", joined({copies(40, "x"), {"#P"}, copies(37, "x")}), 0},
                 {"a definition among 78", joined({copies(40, "x"), {"#P"}, copies(38, "x")}), 1},
                 {"a definition after 77 is a page", joined({copies(77, "x"), {"#C 10 "}}), 1},
                 {"definitions between two pages",
                  joined({copies(77, "x"), copies(9, "#C"), copies(77, "x")}), 1},
                 {"other markers are text", copies(78, "#X"), 1}};
    for (const auto& [what, lines, last_page] : cases)
        EXPECT_EQ(pages_of(lines), last_page) << what;
}

TEST(Pages, AreNoneForACountBelowOne) {
    for (const int count : {0, -1, -2147483647 - 1}) {
        EXPECT_EQ(OFD_afficheur_filtre_affichage(nullptr, count).nb_pages(), 0);
        EXPECT_EQ(OFD_afficheur_filtre_affichage(nullptr, count).visu_page(0), "");
        EXPECT_EQ(OFD_afficheur_filtre_affichage(nullptr, count).visu_page(1), "");
    }
}

TEST(Pages, EndWhereTheNextOneStarts) {
    const text_lines lines =
        joined({{"#C 5 "}, copies(77, "x"), {"#P 5 "}, copies(77, "#T"), {"x"}});
    const int count = count_of(lines);
    const struct {
        int first, end;
    } cases[] = {{0, 78}, {78, 156}, {156, 157}, {157, 157}, {1, 78}, {2, 80}};
    for (const auto& [first, end] : cases)
        EXPECT_EQ(line_markup::page_end(lines.data(), count, first), end) << first;
    EXPECT_EQ(line_markup::page_end(nullptr, 0, 0), 0);
    EXPECT_EQ(line_markup::page_end(nullptr, -5, 0), -5);
}

TEST(ColumnDefinition, TakesWidthsThatASpaceEndsAndRules) {
    const struct {
        std::string line;
        std::vector<int> widths, flags;
    } cases[] = {{"#C T10 T20 T ", {10, 20}, {1, 1, 1}},
                 {"#C T10 T20 T", {10, 20}, {1, 1, 1}},
                 {"#C T10 T20", {10}, {1, 1}},  // the last width is dropped, its rule is not
                 {"#C", {}, {}},
                 {"#C ", {}, {}},
                 {"#C10 5 ", {10, 5}, {}},
                 {"#P 10 5 ", {10, 5}, {}},
                 {"#CT", {}, {1}},
                 {"#C 10T ", {10}, {1}},  // a rule inside a number is that of the number's column
                 {"#C 1T0 5 ", {10, 5}, {1}},  // and does not end the number
                 {"#C 1x0-5 ", {105}, {}},     // nor does any other byte
                 {"#C 0 7 ", {7}, {}},         // no column of width 0
                 {"#C 007 ", {7}, {}},
                 {"#C   4   T   6   T", {4, 6}, {0, 1, 1}},
                 {"#C\t4\t6 ", {46}, {}},
                 {"#C -4 t5 ", {4, 5}, {}},
                 {"#C 4294967297 4294967296 2147483648 ", {1, -2147483647 - 1}, {}},
                 {"#C TTT3 TT", {3}, {1, 1}}};
    for (const auto& [line, widths, flags] : cases) {
        line_markup::column_layout columns;
        columns.define("#C T99 T99 T99 T99 T99 T");  // forgotten by the next definition
        columns.define(line);
        for (std::size_t column = 0; column < 15; ++column) {
            EXPECT_EQ(columns.widths[column], column < widths.size() ? widths[column] : 0)
                << line << column;
            EXPECT_EQ(columns.flags[column], column < flags.size() ? flags[column] : 0)
                << line << column;
        }
    }
}

TEST(ColumnDefinition, StartsWithoutColumns) {
    const line_markup::column_layout columns;
    EXPECT_EQ(std::ranges::count(columns.widths, 0), 15);
    EXPECT_EQ(std::ranges::count(columns.flags, 0), 15);
    EXPECT_EQ(columns.total_width(), 0);
}

TEST(ColumnDefinition, IgnoresWhatPassesFifteenColumns) {
    std::string line = "#C ";
    for (int column = 1; column <= 40; ++column) line += "T" + std::to_string(column) + " T ";
    struct {
        std::array<char, 64> before;
        line_markup::column_layout columns;
        std::array<char, 64> after;
    } guarded;
    guarded.before.fill('b');
    guarded.after.fill('a');
    guarded.columns.define(line);
    for (int column = 0; column < 15; ++column) {
        EXPECT_EQ(guarded.columns.widths[column], column + 1);
        EXPECT_EQ(guarded.columns.flags[column], 1);
    }
    EXPECT_EQ(std::ranges::count(guarded.before, 'b'), 64);
    EXPECT_EQ(std::ranges::count(guarded.after, 'a'), 64);
    EXPECT_EQ(guarded.columns.total_width(), 120);
    EXPECT_EQ(guarded.columns.width(14), 15);
    EXPECT_EQ(guarded.columns.width(15), 0);
    EXPECT_EQ(guarded.columns.width(2147483647), 0);
}

TEST(Cells, AreCutAtEachSign) {
    const struct {
        std::string line;
        text_lines cells;
    } cases[] = {{"", {""}},      {"a", {"a"}},      {"a#b", {"a", "b"}},
                 {"#", {"", ""}}, {"a#", {"a", ""}}, {"##b", {"", "", "b"}}};
    for (const auto& [line, cells] : cases) {
        text_lines found;
        const auto take = [&, line = line, cells = cells](int column, std::string_view cell,
                                                          bool more) {
            EXPECT_EQ(column, count_of(found)) << line;
            found.emplace_back(cell);
            EXPECT_EQ(more, found.size() < cells.size()) << line;
        };
        line_markup::for_each_cell(line, take);
        EXPECT_EQ(found, cells) << line;
    }
}

TEST(Cells, AreTheirLineWhenASignJoinsThem) {
    for_each_text("a#(", 7, [](const std::string& line) {
        std::string rejoined;
        long cells = 0;
        line_markup::for_each_cell(line, [&](int column, std::string_view cell, bool more) {
            ASSERT_EQ(column, cells++) << line;
            ASSERT_EQ(cell.find('#'), std::string_view::npos) << line;
            rejoined.append(cell).append(more ? 1 : 0, '#');
        });
        ASSERT_EQ(rejoined, line);
        ASSERT_EQ(cells, 1 + std::ranges::count(line, '#')) << line;
    });
}

/// A second way to cut a line: a record at a time. It leaves no sign of a "#" at the line's end,
/// which an empty cell follows.
text_lines cells_by_records(std::string line) {
    text_lines cells;
    const bool ends_in_empty_cell = line.empty() || line.ends_with('#');
    while (!line.empty()) cells.push_back(next_record(line, '#', line));
    if (ends_in_empty_cell) cells.emplace_back();
    return cells;
}

TEST(Cells, AreTheRecordsOfTheLine) {
    for_each_text("a#", 10, [](const std::string& line) {
        text_lines found;
        line_markup::for_each_cell(
            line, [&](int, std::string_view cell, bool) { found.emplace_back(cell); });
        ASSERT_EQ(found, cells_by_records(line)) << line;
    });
}

}  // namespace
