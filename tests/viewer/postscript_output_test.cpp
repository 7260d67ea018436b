// What a line draws in a PostScript document, and what its filter keeps. The documents themselves
// are those of golden_test.cpp.
#include <gtest/gtest.h>

#include "strings/substring_editing.h"
#include "tests/viewer/documents.h"

namespace {

using namespace std::string_literals;

std::string cell(int x, int y, const std::string& text) {
    return std::to_string(x) + " " + std::to_string(y) + " moveto (" + text + ") show\n";
}

std::string segment(int x1, int y1, int x2, int y2) {
    return "newpath " + std::to_string(x1) + " " + std::to_string(y1) + " moveto " +
           std::to_string(x2) + " " + std::to_string(y2) + " lineto stroke \n";
}

/// What a new filter writes for the last of `lines`, after the others.
std::string last_drawn(const text_lines& lines) {
    OFD_afficheur_filtre_impression filter(nullptr, 0);
    written([&](std::fstream& out) {
        filter.begin_postscript(out);
        for (std::size_t line = 0; line + 1 < lines.size(); ++line)
            filter.postscript(out, lines[line]);
    });
    return written([&](std::fstream& out) { filter.postscript(out, lines.back()); });
}

TEST(PostscriptDocument, IsOneEmptyPageForACountBelowOne) {
    OFD_afficheur_filtre_impression negative(nullptr, -5);
    EXPECT_EQ(written([&](std::fstream& out) { negative.imprime_postscript(out); }),
              golden("no_line.ps"));
}

TEST(PostscriptLine, IsDrawnByItsType) {
    const struct {
        text_lines lines;
        std::string drawn;
    } cases[] = {
        {{"#C 10 ", "(a)b"}, cell(45, 790, "ab")},
        {{"#C 3 ", "(a)b"}, cell(45, 790, "a")},
        {{"#C 10 20 ", "a#b#c"}, cell(45, 790, "a") + cell(95, 790, "b") + cell(195, 790, "")},
        {{"#C 10 20 ", " # #"}, cell(195, 790, "")},
        {{"#C 10 20 ", "( )"}, ""},
        {{"#C 10 20 ", " ", "x"}, cell(45, 780, "x")},
        {{"#C 9 ", "\\(\xE9\0\xFF"s}, cell(45, 790, "\\\xE9\0\xFF"s)},
        {{"#P 9 "}, ""},
        {{"#P 9 ", "x"}, cell(45, 800, "x")},
        {{"#P 9 ", "x", "x"}, cell(45, 790, "x")},
        {{"#C 10 20 ", "#T"}, "newpath 40 790 moveto 190 790 lineto stroke \n"},
        {{"#C 10 20 ", "#T", "#T"}, segment(40, 780, 190, 780)},
        {{"#P 10 20 ", "#T"}, segment(40, 800, 190, 800)},
        {{"#C T10 T20 T "}, ""},
        {{"#C T10 T20 T ", "x", "x", "#C 5 "},
         segment(40, 780, 40, 800) + segment(90, 780, 90, 800) + segment(190, 780, 190, 800)},
        {{"#C 9 ", "x", "x", "#C T9 ", "x", "#C"}, segment(40, 770, 40, 780)},
        {{"#C T9 ", "x", "#P T8 "}, ""},
        {{"#C T9 ", "x", "x", "#C T9 ", "#P T8 ", "x", "#C"}, segment(40, 800, 40, 780)},
        {{"#P T8 ", "#C"}, segment(40, 810, 40, 800)}};
    for (const auto& [lines, drawn] : cases) EXPECT_EQ(last_drawn(lines), drawn) << lines.back();
}

TEST(PostscriptFilter, NamesThePageThatItIsGiven) {
    const std::string document = golden("table.ps");
    const std::size_t start = document.find("showpage\n%%page : 1 1\n");
    ASSERT_NE(start, std::string::npos);
    const std::string page_break =
        document.substr(start, document.find("setfont\n", start) + 8 - start);
    OFD_afficheur_filtre_impression filter(nullptr, 0);
    EXPECT_EQ(written([&](std::fstream& out) { filter.next_page_postscript(out, 1); }), page_break);
    filter.line_counter = filter.column_start_line = 9;
    EXPECT_EQ(written([&](std::fstream& out) { filter.next_page_postscript(out, 1234); }),
              substitute_string(page_break, "1 1", "1234 1234"));
    EXPECT_EQ(filter.line_counter, 1);
    EXPECT_EQ(filter.column_start_line, 1);
    EXPECT_EQ(filter.page_index, 0);  // a matter of PDF
    EXPECT_EQ(written([&](std::fstream& out) { filter.begin_postscript(out); }) +
                  written([&](std::fstream& out) { filter.end_postscript(out); }),
              golden("no_line.ps"));
}

TEST(PostscriptFilter, LeavesThePagesOfThePdfThatItWroteBefore) {
    text_lines lines = copies(160, "x");
    OFD_afficheur_filtre_impression filter(lines.data(), 160);
    written([&](std::fstream& out) { filter.imprime_pdf(out); });
    EXPECT_EQ(filter.page_index, 2);
    written([&](std::fstream& out) { filter.imprime_postscript(out); });
    EXPECT_EQ(filter.page_index, 2);
}

TEST(PostscriptFilter, KeepsTheColumnsOfThePdfThatItWroteBefore) {
    text_lines lines = {"#C T10 ", "x"};
    OFD_afficheur_filtre_impression filter(lines.data(), 2);
    written([&](std::fstream& out) { filter.imprime_pdf(out); });
    const std::string document =
        written([&](std::fstream& out) { filter.imprime_postscript(out); });
    EXPECT_TRUE(document.ends_with("setfont\n" + segment(40, 800, 40, 800) + cell(45, 790, "x") +
                                   segment(40, 790, 40, 800) + "showpage\n"))
        << document;
}

}  // namespace
