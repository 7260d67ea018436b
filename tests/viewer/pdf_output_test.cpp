#include <gtest/gtest.h>

#include <algorithm>
#include <sstream>

#include "tests/viewer/documents.h"

namespace {

using namespace std::string_literals;

const std::string up_to_kids =
    "%PDF-1.4\n"
    "1 0 obj\n"
    "  << /Type /Catalog\n"
    "     /Outlines 2 0 R\n"
    "     /Pages 3 0 R\n"
    "  >>\n"
    "endobj\n"
    "\n"
    "2 0 obj\n"
    "  << /Type /Outlines\n"
    "     /Count 0\n"
    "  >>\n"
    "endobj\n"
    "\n"
    "3 0 obj\n"
    "  << /Type /Pages\n"
    "     /Kids [\n";

const std::string from_count_on =
    "  >>\n"
    "endobj\n"
    "\n"
    "4 0 obj\n"
    "   [/PDF /Text]\n"
    "endobj\n"
    "\n"
    "5 0 obj\n"
    "  << /Type /Font\n"
    "     /Subtype /Type1\n"
    "     /Name /F1\n"
    "     /BaseFont /Times-Roman\n"
    "     /Encoding /WinAnsiEncoding\n"
    "  >>\n"
    "endobj\n"
    "\n";

std::string page_opening(const std::string& page, const std::string& content) {
    return page +
           " 0 obj\n"
           "  << /Type /Page\n"
           "     /Parent 3 0 R\n"
           "     /MediaBox [0 0 612 792]\n"
           "     /Contents " +
           content +
           " 0 R\n"
           "     /Resources << /ProcSet 4 0 R\n"
           "                   /Font << /F1 5 0 R >>\n"
           "                >>\n"
           "  >>\n"
           "endobj\n"
           "\n" +
           content +
           " 0 obj\n"
           "  << /Length 73 >>\n"
           "stream\n";
}

const std::string page_closing =
    "endstream\n"
    "endobj\n"
    "\n";

const std::string trailer =
    "xref\n"
    "0 8\n"
    "0000000000 65535 f\n"
    "0000000009 00000 n\n"
    "0000000074 00000 n\n"
    "0000000120 00000 n\n"
    "0000000179 00000 n\n"
    "0000000364 00000 n\n"
    "0000000466 00000 n\n"
    "0000000496 00000 n\n"
    "\n"
    "trailer\n"
    "  << /Size 8\n"
    "     /Root 1 0 R\n"
    "  >>\n"
    "startxref\n"
    "625\n"
    "%%EOF\n";

const std::string one_page_head =
    up_to_kids + "10 0 R\n         ]\n     /Count 1\n" + from_count_on + page_opening("10", "11");
const std::string tail = page_closing + trailer;

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

TEST(PdfDocument, IsOneEmptyPageWithoutLines) {
    EXPECT_EQ(as_pdf({}), one_page_head + tail);
    OFD_afficheur_filtre_impression negative(nullptr, -5);
    EXPECT_EQ(written([&](std::fstream& out) { negative.imprime_pdf(out); }), one_page_head + tail);
}

TEST(PdfDocument, HoldsOneLine) {
    EXPECT_EQ(as_pdf({"text"}), one_page_head + cell(45, 770, "") + tail);
    EXPECT_EQ(as_pdf({"#C T10 T ", "un (1)"}), one_page_head + cell(45, 770, "un 1") +
                                                   segment(40, 770, 40, 780, "      ") +
                                                   segment(90, 770, 90, 780, "      ") + tail);
}

TEST(PdfDocument, BreaksAfterSeventySevenCountedLines) {
    std::string page;
    for (int row = 1; row <= 77; ++row) page += cell(45, 780 - 10 * row, "x");
    EXPECT_EQ(as_pdf(joined({{"#C 9 "}, copies(77, "x")})), one_page_head + page + tail);

    const std::string two_page_head = up_to_kids +
                                      "10 0 R\n         12 0 R\n         ]\n     /Count 2\n" +
                                      from_count_on + page_opening("10", "11");
    EXPECT_EQ(
        as_pdf(joined({{"#C 9 "}, copies(78, "x")})),
        two_page_head + page + page_closing + page_opening("12", "13") + cell(45, 770, "x") + tail);

    const std::string three_page_head =
        up_to_kids + "10 0 R\n         12 0 R\n         14 0 R\n         ]\n     /Count 3\n" +
        from_count_on + page_opening("10", "11");
    EXPECT_EQ(as_pdf(joined({{"#C 9 "}, copies(155, "x")})),
              three_page_head + page + page_closing + page_opening("12", "13") + page +
                  page_closing + page_opening("14", "15") + cell(45, 770, "x") + tail);
}

TEST(PdfDocument, DrawsTheRulesOfTheOpenBlockAtEachPagesEnd) {
    const std::string document = as_pdf(joined({{"#C T9 T "}, copies(78, "x")}));
    const std::string at_break =
        cell(45, 10, "x") + segment(40, 10, 40, 780) + segment(85, 10, 85, 780) + page_closing;
    const std::string at_end = cell(45, 770, "x") + segment(40, 770, 40, 780, "      ") +
                               segment(85, 770, 85, 780, "      ") + tail;
    EXPECT_NE(document.find(at_break), std::string::npos);
    EXPECT_TRUE(document.ends_with(at_end));
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

TEST(PdfText, StartsOneRowHigherBehindATopDefinition) {
    EXPECT_EQ(last_drawn({"#P 9 ", "x"}), cell(45, 780, "x"));
    EXPECT_EQ(last_drawn({"#P 9 ", "x", "x"}), cell(45, 770, "x"));
    EXPECT_EQ(last_drawn({"#C 9 ", "x", "x", "#P 9 ", "x"}), cell(45, 780, "x"));
}

TEST(PdfText, HasNoColumnBehindTheFifteenth) {
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
    const auto print = [&] { return written([&](std::fstream& out) { filter.imprime_pdf(out); }); };
    const std::string first = print();
    EXPECT_EQ(first,
              one_page_head + cell(45, 770, "x") + segment(40, 770, 40, 780, "      ") + tail);
    EXPECT_EQ(print(), one_page_head + segment(40, 780, 40, 780) + cell(45, 770, "x") +
                           segment(40, 770, 40, 780, "      ") + tail);
    filter.count = 0;
    EXPECT_EQ(print(), one_page_head + segment(40, 780, 40, 780, "      ") + tail);
}

TEST(PdfFilter, CountsPagesOfItsOwn) {
    OFD_afficheur_filtre_impression filter(nullptr, 0);
    EXPECT_EQ(written([&](std::fstream& out) { filter.begin_pdf(out); }), one_page_head);
    // the page that the caller names plays no part
    EXPECT_EQ(written([&](std::fstream& out) { filter.next_page_pdf(out, 77); }),
              page_closing + page_opening("12", "13"));
    filter.line_counter = filter.column_start_line = 9;
    EXPECT_EQ(written([&](std::fstream& out) { filter.next_page_pdf(out, -1); }),
              page_closing + page_opening("14", "15"));
    EXPECT_EQ(filter.line_counter, 1);
    EXPECT_EQ(filter.column_start_line, 1);
    EXPECT_EQ(written([&](std::fstream& out) { filter.begin_pdf(out); }), one_page_head);
    EXPECT_EQ(filter.page_index, 0);
    EXPECT_EQ(written([&](std::fstream& out) { filter.end_pdf(out); }), tail);
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

}  // namespace
