// What a line draws in a PDF document, and what its filter keeps. The documents themselves are
// those of golden_test.cpp.
#include <gtest/gtest.h>

#include <algorithm>
#include <sstream>

#include <limits>

#include "tests/viewer/documents.h"

namespace {

using namespace std::string_literals;

std::string cell(int x, int y, const std::string& text) {
    return "   BT\n     /F1 7 Tf\n     " + std::to_string(x) + " " + std::to_string(y) + " Td\n(" +
           text + ") Tj\n   ET\n";
}

std::string segment(int x1, int y1, int x2, int y2, const std::string& indent = "    ") {
    std::ostringstream out;
    out.imbue(std::locale::classic());
    out << indent << x1 << ' ' << y1 << " m\n" << indent << x2 << ' ' << y2 << " l\n       S\n";
    return out.str();
}

/// What a new filter writes for the last of `lines`, after the others.
std::string last_drawn(const text_lines& lines) {
    OFD_afficheur_filtre_impression filter(nullptr, 0);
    written([&](std::fstream& out) {
        filter.begin_pdf(out);
        for (std::size_t line = 0; line + 1 < lines.size(); ++line) filter.pdf(out, lines[line]);
    });
    return written([&](std::fstream& out) { filter.pdf(out, lines.back()); });
}

/// What stands between the contents of a document's pages.
text_lines page_breaks(const std::string& document) {
    text_lines parts = parts_of(document, "\nstream\n");
    parts.erase(parts.begin());
    for (std::string& each : parts) each = each.substr(each.find("endstream\n")) + "\nstream\n";
    return parts;
}

TEST(PdfDocument, IsOneEmptyPageForACountBelowOne) {
    OFD_afficheur_filtre_impression negative(nullptr, -5);
    EXPECT_EQ(written([&](std::fstream& out) { negative.imprime_pdf(out); }),
              golden("no_line.pdf"));
}

TEST(PdfText, IsCutToItsColumnBeforeItLosesItsParentheses) {
    const struct {
        std::string definition, line, drawn;
    } cases[] = {
        {"#C 10 ", "(a)b", cell(45, 770, "ab")},
        {"#C 3 ", "(a)b", cell(45, 770, "a")},
        {"#C 1 ", "(a)b", cell(45, 770, "")},
        {"#C 10 20 ", "a#b#c", cell(45, 770, "a") + cell(95, 770, "b") + cell(195, 770, "")},
        {"#C 10 20 ", "a#", cell(45, 770, "a") + cell(95, 770, "")},
        {"#C 10 20 ", "", cell(45, 770, "")},
        {"#C 10 20 ", " ", ""},
        {"#C 10 20 ", " # #x", cell(195, 770, "")},
        {"#C 10 20 ", "( )# (#", cell(195, 770, "")},
        {"#C 10 20 ", "  #a", cell(45, 770, "  ") + cell(95, 770, "a")},
        {"#C 1 ", "  ", ""},  // one space is left
        {"#C 9 ", "\\(\xE9\0\xFF"s, cell(45, 770, "\\\xE9\0\xFF"s)},
        {"#C 3 9", "abcd#efgh",
         cell(45, 770, "abc") + cell(60, 770, "")},  // the last width is dropped
        {"#C", "a#b", cell(45, 770, "") + cell(45, 770, "")}};
    for (const auto& [definition, line, drawn] : cases)
        EXPECT_EQ(last_drawn({definition, line}), drawn) << definition << '\n' << line;
}

TEST(PdfText, GoesToTheNextRowEvenWhenNothingIsDrawn) {
    EXPECT_EQ(last_drawn({"#C 9 ", " ", "x"}), cell(45, 760, "x"));
    EXPECT_EQ(last_drawn({"#C 9 ", "x", "#T", "x"}), cell(45, 750, "x"));
}

TEST(PdfText, StartsOneRowHigherAfterATopDefinition) {
    EXPECT_EQ(last_drawn({"#P 9 ", "x"}), cell(45, 780, "x"));
    EXPECT_EQ(last_drawn({"#P 9 ", "x", "x"}), cell(45, 770, "x"));
    EXPECT_EQ(last_drawn({"#C 9 ", "x", "x", "#P 9 ", "x"}), cell(45, 780, "x"));
}

TEST(PdfText, HasNoColumnAfterTheFifteenth) {
    std::string definition = "#C ", line, drawn;
    for (int column = 0; column < 40; ++column) {
        definition += "T2 ";
        line += "xyz#";
        drawn += column < 15 ? cell(45 + 10 * column, 770, "xy") : cell(195, 770, "");
    }
    EXPECT_EQ(last_drawn({definition, line}), drawn + cell(195, 770, ""));
}

TEST(PdfRule, IsAsWideAsTheColumns) {
    EXPECT_EQ(last_drawn({"#C 10 20 ", "#T"}), segment(40, 770, 190, 770));
    EXPECT_EQ(last_drawn({"#P 10 20 ", "#T"}), segment(40, 780, 190, 780));
    EXPECT_EQ(last_drawn({"#T"}), segment(40, 770, 40, 770));
    EXPECT_EQ(last_drawn({"#C 1 1 1 1 1 1 1 1 1 1 1 1 1 1 1 1 1 ", "#T"}),
              segment(40, 770, 115, 770));
}

TEST(PdfDefinition, DrawsTheRulesOfTheBlockThatItCloses) {
    EXPECT_EQ(last_drawn({"#C T10 T20 T "}), "");
    EXPECT_EQ(last_drawn({"#C T10 T20 T ", "x", "x", "#C 5 "}),
              segment(40, 760, 40, 780) + segment(90, 760, 90, 780) + segment(190, 760, 190, 780));
    EXPECT_EQ(last_drawn({"#C 10 T20 ", "x", "#C"}), segment(90, 770, 90, 780));
    EXPECT_EQ(last_drawn({"#C 10 20 ", "x", "#C"}), "");
    // the second block starts where it was opened
    EXPECT_EQ(last_drawn({"#C 9 ", "x", "x", "#C T9 ", "x", "#C"}), segment(40, 750, 40, 760));
    EXPECT_EQ(last_drawn({"#C 9 ", "x", "#C T9 ", "#C"}), segment(40, 770, 40, 770));
    // #P draws nothing, and leaves the start of the block where it was
    EXPECT_EQ(last_drawn({"#C T9 ", "x", "#P T8 "}), "");
    EXPECT_EQ(last_drawn({"#C T9 ", "x", "x", "#C T9 ", "#P T8 ", "x", "#C"}),
              segment(40, 780, 40, 760));
    EXPECT_EQ(last_drawn({"#P T8 ", "#C"}), segment(40, 790, 40, 780));
}

TEST(PdfDefinition, WrapsCoordinatesAtThirtyTwoBits) {
    EXPECT_EQ(last_drawn({"#C 2147483647 ", "#T"}), segment(40, 770, -2147483613, 770));
    EXPECT_EQ(last_drawn({"#C 500000000 ", "#T"}), segment(40, 770, -1794967256, 770));
}

TEST(PdfFilter, KeepsItsColumnsFromOneDocumentToTheNext) {
    text_lines lines = {"#C T10 ", "x"};
    OFD_afficheur_filtre_impression filter(lines.data(), 2);
    const auto printed = [&] {
        return streams(written([&](std::fstream& out) { filter.imprime_pdf(out); }));
    };
    const std::string at_end = segment(40, 770, 40, 780, "      ");
    EXPECT_EQ(printed(), text_lines{cell(45, 770, "x") + at_end});
    EXPECT_EQ(printed(), text_lines{segment(40, 780, 40, 780) + cell(45, 770, "x") + at_end});
    filter.count = 0;
    EXPECT_EQ(printed(), text_lines{segment(40, 780, 40, 780, "      ")});
}

TEST(PdfFilter, CountsPagesOfItsOwn) {
    const text_lines breaks = page_breaks(golden("table.pdf"));
    ASSERT_EQ(breaks.size(), 2u);
    OFD_afficheur_filtre_impression filter(nullptr, 0);
    const std::string head = written([&](std::fstream& out) { filter.begin_pdf(out); });
    // the page that the caller names plays no part
    EXPECT_EQ(written([&](std::fstream& out) { filter.next_page_pdf(out, 77); }), breaks[0]);
    filter.line_counter = filter.column_start_line = 9;
    EXPECT_EQ(written([&](std::fstream& out) { filter.next_page_pdf(out, -1); }), breaks[1]);
    EXPECT_EQ(filter.line_counter, 1);
    EXPECT_EQ(filter.column_start_line, 1);
    EXPECT_EQ(written([&](std::fstream& out) { filter.begin_pdf(out); }), head);
    EXPECT_EQ(filter.page_index, 0);
    EXPECT_EQ(head + written([&](std::fstream& out) { filter.end_pdf(out); }),
              golden("no_line.pdf"));
}

TEST(PdfFilter, PlacesItsPageAsItsFieldsSay) {
    OFD_afficheur_filtre_impression filter(nullptr, 0);
    EXPECT_EQ(filter.page_height, 800);
    EXPECT_EQ(filter.top, 780);
    EXPECT_EQ(filter.left, 40);
    EXPECT_EQ(sizeof filter.scratch, 100000u);
}

/// How many times this process has asked the system to write; 0 when the system does not say.
long writes_so_far() {
    std::ifstream accounts("/proc/self/io");
    for (std::string name; accounts >> name;)
        if (long value; name == "syscw:" && accounts >> value) return value;
    return 0;
}

TEST(EveryDocument, IsWrittenLineByLine) {
    if (writes_so_far() == 0) GTEST_SKIP() << "this system does not count writes";
    text_lines lines = joined(
        {{"#C T10 T20 T ", "#T"}, copies(78, "un#deux"), {std::string(30000, 'x'), "#P T30000 "}});
    lines.push_back(lines[80]);
    OFD_afficheur_filtre_impression print(lines.data(), count_of(lines));
    OFD_afficheur_filtre_texte text(lines.data(), count_of(lines));
    const std::function<void(std::fstream&)> exports[] = {
        [&](std::fstream& out) { print.imprime_pdf(out); },
        [&](std::fstream& out) { print.imprime_postscript(out); },
        [&](std::fstream& out) { text.imprime(out); }};
    for (const auto& each : exports) {
        const temporary_folder folder;
        const std::filesystem::path file = folder / "document";
        std::fstream out(file, std::ios::out);
        const long before = writes_so_far();
        each(out);
        const long writes = writes_so_far() - before;
        const std::string document = bytes_of(file);  // not closed yet: all of it was flushed
        EXPECT_EQ(writes, std::ranges::count(document, '\n'));
        EXPECT_GT(writes, 80);
    }
}

TEST(PdfOutput, TheLargestCounterWraps) {
    std::string lines[] = {"#C 5 "};
    OFD_afficheur_filtre_impression filter(lines, 1);
    constexpr std::int32_t largest = std::numeric_limits<std::int32_t>::max();
    written([&](std::fstream& out) {
        for (const std::string line : {"text", "#T"}) {
            filter.line_counter = largest;
            filter.pdf(out, line);
            EXPECT_EQ(filter.line_counter, -largest - 1) << line;
            filter.line_counter = largest;
            filter.postscript(out, line);
            EXPECT_EQ(filter.line_counter, -largest - 1) << line;
        }
        filter.page_index = filter.column_start_line = largest;
        filter.next_page_pdf(out, largest);
        EXPECT_EQ(filter.page_index, -largest - 1);
        filter.next_page_postscript(out, largest);
    });
}

}  // namespace
