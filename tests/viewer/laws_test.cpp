// What holds for every document, shown on random ones.
#include <gtest/gtest.h>

#include <algorithm>

#include "tests/strings/texts.h"
#include "tests/viewer/documents.h"

namespace {

/// Lines of text, rules and definitions in any order;
/// `text` makes the text of a line from its index.
template <class Text>
text_lines random_lines(random_source& source, Text text) {
    text_lines lines(source.number<std::size_t>(0, 500));
    for (std::size_t index = 0; index < lines.size(); ++index) {
        const int kind = source.number(0, 9);
        if (kind == 0) lines[index] = source.number(0, 1) ? "#C" : "#P";
        if (kind == 0) lines[index] += source.text("T    12", 20) + " 9 ";
        if (kind == 1) lines[index] = "#T";
        if (kind > 1) lines[index] = text(index);
    }
    return lines;
}

std::string together(const text_lines& pages) {
    std::string all;
    for (const std::string& page : pages) all += page;
    return all;
}

TEST(Laws, ThePagesHoldOneScreenLineForEachLineInOrder) {
    random_source source(1);
    for (int round = 0; round < 100; ++round) {
        text_lines lines =
            random_lines(source, [&](std::size_t) { return source.text("abc# ()", 30); });
        OFD_afficheur_filtre_affichage line_by_line(nullptr, 0);
        std::string expected;
        for (const std::string& line : lines) expected += line_by_line.visu_ligne(line) + "\n";
        const text_lines pages = screen_pages(lines);
        ASSERT_EQ(together(pages), expected);

        OFD_afficheur_filtre_affichage filter(lines.data(), count_of(lines));
        ASSERT_EQ(filter.visu_page(count_of(pages)), "");
        for (std::size_t page = 0; page < pages.size(); ++page)
            ASSERT_TRUE(!pages[page].empty() || lines.empty()) << page;
    }
}

TEST(Laws, EachPageButTheLastHoldsSeventySevenCountedLines) {
    random_source source(2);
    for (int round = 0; round < 100; ++round) {
        const text_lines lines = random_lines(source, [](std::size_t) { return "x"; });
        const text_lines pages = screen_pages(lines);
        std::size_t line = 0;
        for (const std::string& page : pages) {
            long counted = 0;
            for (auto rest = std::ranges::count(page, '\n'); rest > 0; --rest, ++line)
                counted += !lines[line].starts_with("#C") && !lines[line].starts_with("#P");
            ASSERT_LE(counted, 77);
            if (&page != &pages.back()) {
                ASSERT_EQ(counted, 77);
            }
        }
        ASSERT_EQ(line, lines.size());
    }
}

/// The marks that each page of a document shows, in order. A mark is "<INDEX>".
std::vector<text_lines> marks(const text_lines& pages) {
    std::vector<text_lines> all;
    for (const std::string& page : pages) {
        all.emplace_back();
        for (std::string& part : parts_of(page, ">"))
            if (const std::size_t start = part.find('<'); start != std::string::npos)
                all.back().push_back(part.substr(start + 1));
    }
    return all;
}

TEST(Laws, PdfPostscriptAndScreenBreakAtTheSameLines) {
    random_source source(3);
    for (int round = 0; round < 60; ++round) {
        text_lines lines = random_lines(
            source, [](std::size_t index) { return "<" + std::to_string(index) + ">"; });
        for (std::string& line : lines)
            if (line.starts_with("#C") || line.starts_with("#P")) line.insert(2, "9 ");
        lines.insert(lines.begin(), "#C 9 ");
        const auto on_screen = marks(screen_pages(lines));
        ASSERT_EQ(marks(streams(as_pdf(lines))), on_screen);
        ASSERT_EQ(marks(parts_of(as_postscript(lines), "showpage\n")), on_screen);
    }
}

TEST(Laws, TheTextHasALineForEachLine) {
    random_source source(4);
    for (int round = 0; round < 60; ++round) {
        const text_lines lines =
            random_lines(source, [&](std::size_t) { return source.text("abc# ()", 30); });
        ASSERT_EQ(parts_of(as_text(lines), "\n").size(), lines.size());
    }
}

TEST(Laws, TheTextOfAPdfHasNoParentheses) {
    random_source source(5);
    for (int round = 0; round < 20; ++round) {
        const text_lines lines =
            random_lines(source, [&](std::size_t) { return source.text("a#()", 30); });
        for (const std::string& line : parts_of(as_pdf(lines), "\n"))
            if (line.ends_with(") Tj")) {
                ASSERT_EQ(line.find_first_of("()", 1), line.size() - 4) << line;
            }
    }
}

/// Any bytes; some lines begin like a definition, and hold rules and numbers, a few of them huge.
std::string hostile_line(random_source& source) {
    const std::string any = source.text("", 60);
    switch (source.number(0, 3)) {
        case 0:
            return any;
        case 1:
            return "#" + source.text("CPT#", 1) + any;
        case 2:
            return "#C" + source.text(source.number(0, 20) ? "T   012" : "T 0123456789", 200);
        default:
            return source.text("#() ", 120);
    }
}

TEST(Laws, HostileLinesBreakNothing) {
    random_source source(6);
    for (int round = 0; round < 100; ++round) {
        text_lines lines(source.number<std::size_t>(0, 120));
        for (std::string& line : lines) line = hostile_line(source);
        OFD_afficheur_filtre_affichage screen(lines.data(), count_of(lines));
        OFD_afficheur_filtre_impression print(lines.data(), count_of(lines));
        const auto documents = [&] {
            return written([&](std::fstream& out) { print.imprime_pdf(out); }) +
                   written([&](std::fstream& out) { print.imprime_postscript(out); });
        };
        documents();
        ASSERT_EQ(documents(),
                  documents());  // from the second on, the columns at the start are the same
        for (int page = -1; page <= screen.nb_pages() + 1; ++page)
            ASSERT_LE(screen.visu_page(page).size(), lines.size() * 1'001'000);
        ASSERT_FALSE(as_text(lines).empty() && !lines.empty());
    }
}

TEST(Laws, AVeryLongLineIsNoSlowerThanItsLength) {
    const text_lines lines = {"#C 1 2 3 ", std::string(200'000, '#'),
                              "#C" + std::string(1'000'000, '7'), "(#)"};
    const std::string pdf = as_pdf(lines);
    EXPECT_EQ(parts_of(pdf, " Tj\n").size(), 200'001u + 2u);
    EXPECT_EQ(screen_pages(lines).size(), 1u);
}

}  // namespace
