#include "viewer/display_filter.h"

#include <gtest/gtest.h>

#include "tests/viewer/documents.h"

namespace {

using namespace std::string_literals;

/// What the last of `lines` shows, after the others were shown by the same filter.
std::string last_shown(const text_lines& lines) {
    OFD_afficheur_filtre_affichage filter(nullptr, 0);
    std::string shown;
    for (const std::string& line : lines) shown = filter.visu_ligne(line);
    return shown;
}

TEST(ScreenLine, LaysCellsOutInColumns) {
    const struct {
        std::string definition, line, shown;
    } cases[] = {
        {"#C 10 5 ", "ab#cdefgh", "@f@S14 ab        cdefg"},
        {"#C 10 5 ", "ab", "@f@S14 ab"},
        {"#C 10 5 ", "ab#", "@f@S14 ab        "},
        {"#C 10 5 ", "#", "@f@S14           "},
        {"#C 10 5 ", "", "@f@S14 "},
        {"#C 10 5 ", "0123456789#x", "@f@S14 0123456789x"},
        {"#C 10 5 ", "0123456789abc#x", "@f@S14 0123456789x"},
        {"#C 10 5 ", "0123456789abc", "@f@S14 0123456789"},
        {"#C 10 5 ", "a#b#c#d", "@f@S14 a         b    "},  // no column, no room
        {"#P T3 T3 T", "a#b", "@f@S14 a  b"},
        {"#C 3 9", "a#b", "@f@S14 a  "},  // the last width is dropped
        {"#C 9 9 ", "(a)b#@c\\", "@f@S14 (a)b     @c\\"},
        {"#C 9 ", "\0\xE9\xFF#"s, "@f@S14 \0\xE9\xFF      "s},
        {"#C 2147483648 3 ", "a#bcde", "@f@S14 bcd"},  // a width that wraps is negative: none
        {"#C", "a#b", "@f@S14 "},
        {"#C 10 5 ", "#T", "@f@S14 ---------------"},
        {"#C 10 5 ", "#T#C", "@f@S14 ---------------"},
        {"#C", "#T", "@f@S14 "},
        {"#C 2147483648 3 ", "#T", "@f@S14 "},
        {"#C 4 ", "#C 10 5 ", ""},
        {"#C 4 ", "#P", ""}};
    for (const auto& [definition, line, shown] : cases)
        EXPECT_EQ(last_shown({definition, line}), shown) << definition << '\n' << line;
}

TEST(ScreenLine, ShowsThePrefixAloneBeforeAnyDefinition) {
    for (const std::string line : {"text", "a#b", "", "#T"})
        EXPECT_EQ(last_shown({line}), "@f@S14 ") << line;
}

TEST(ScreenLine, HasNoColumnAfterTheFifteenth) {
    std::string definition = "#C ", line;
    for (int column = 0; column < 40; ++column) {
        definition += "2 ";
        line += "xyz#";
    }
    std::string shown = "@f@S14 ";
    for (int column = 0; column < 15; ++column) shown += "xy";
    EXPECT_EQ(last_shown({definition, line}), shown);
    EXPECT_EQ(last_shown({definition, "#T"}), "@f@S14 " + std::string(30, '-'));
}

TEST(ScreenLine, IsNotFilledBeyondAMillionCharacters) {
    const std::string wide = "#C 2000000000 2147483647 9 ";
    EXPECT_EQ(last_shown({wide, "a#b#c"}).size(), 1'000'000u + 2);
    EXPECT_EQ(last_shown({"#C 2000000000 ", "#T"}).size(), 1'000'000u);
    EXPECT_EQ(last_shown({"#C 900000 ", "#T"}), "@f@S14 " + std::string(900'000, '-'));
    EXPECT_EQ(last_shown({"#C 999993 ", "#T"}).size(), 1'000'000u);
    EXPECT_EQ(last_shown({"#C 999994 ", "#T"}).size(), 1'000'000u);
    EXPECT_EQ(last_shown({"#C 999992 5 ", "#b"}), "@f@S14 " + std::string(999'992, ' ') + "b");
    EXPECT_EQ(last_shown({wide, std::string(1'500'000, 'x') + "#y"}).size(), 1'500'008u);
}

TEST(ScreenPage, HasAScreenLineForEachLine) {
    EXPECT_EQ(screen_pages({}), text_lines{""});
    EXPECT_EQ(screen_pages({"text"}), text_lines{"@f@S14 \n"});
    EXPECT_EQ(
        screen_pages({"#C 10 5 ", "ab#cdefgh", "#T", "#P 2 ", "xyz", ""}),
        text_lines{"\n@f@S14 ab        cdefg\n@f@S14 ---------------\n\n@f@S14 xy\n@f@S14 \n"});
}

TEST(ScreenPage, BreaksAfterSeventySevenCountedLines) {
    std::string full = "\n";
    for (int line = 0; line < 77; ++line) full += "@f@S14 x\n";
    EXPECT_EQ(screen_pages(joined({{"#C 1 "}, copies(77, "x")})), text_lines{full});
    EXPECT_EQ(screen_pages(joined({{"#C 1 "}, copies(77, "x"), {"#P 1 ", "y"}})),
              (text_lines{full, "\n@f@S14 y\n"}));
    EXPECT_EQ(screen_pages(joined({{"#C 1 "}, copies(77, "x"), {"#P 1 "}, copies(77, "x"), {"z"}})),
              (text_lines{full, full, "@f@S14 z\n"}));
}

TEST(ScreenPage, IsEmptyWhenItDoesNotExist) {
    text_lines lines = joined({{"#C 1 "}, copies(78, "x")});
    OFD_afficheur_filtre_affichage filter(lines.data(), count_of(lines));
    for (const int page : {2, 3, 2147483647, -1, -2147483647 - 1})
        EXPECT_EQ(filter.visu_page(page), "") << page;
    EXPECT_EQ(filter.visu_page(1), "@f@S14 \n");
}

TEST(ScreenPage, DoesNotCountDefinitions) {
    const text_lines lines =
        joined({{"#C 1 "}, copies(40, "x"), {"#P 1 ", "#C 1 "}, copies(37, "#T"), {"y"}});
    std::string first = "\n";
    for (int line = 0; line < 40; ++line) first += "@f@S14 x\n";
    first += "\n\n";
    for (int line = 0; line < 37; ++line) first += "@f@S14 -\n";
    EXPECT_EQ(screen_pages(lines), (text_lines{first, "@f@S14 y\n"}));
}

TEST(ScreenPage, IsKeptByTheFilter) {
    text_lines lines = {"#C 1 ", "x"};
    OFD_afficheur_filtre_affichage filter(lines.data(), 2);
    EXPECT_EQ(filter.page_text, "");
    filter.visu_page(0);
    EXPECT_EQ(filter.page_text, "\n@f@S14 x\n");
    filter.visu_page(1);
    EXPECT_EQ(filter.page_text, "");
}

TEST(ScreenPage, HasTheColumnsOfThePageShownBeforeIt) {
    text_lines lines =
        joined({{"#C 3 "}, copies(77, "abcdef"), {"#C 5 "}, copies(77, "abcdef"), {"abcdef"}});
    OFD_afficheur_filtre_affichage filter(lines.data(), count_of(lines));
    EXPECT_EQ(filter.visu_page(2), "@f@S14 \n");
    filter.visu_page(0);
    EXPECT_EQ(filter.visu_page(2), "@f@S14 abc\n");
    filter.visu_page(1);
    EXPECT_EQ(filter.visu_page(2), "@f@S14 abcde\n");
}

TEST(ScreenPage, FollowsTheCallersLines) {
    text_lines lines = {"#C 3 ", "abc"};
    OFD_afficheur_filtre_affichage filter(lines.data(), 2);
    filter.visu_page(0);
    lines[1] = "xyz";
    EXPECT_EQ(filter.visu_page(0), "\n@f@S14 xyz\n");
}

}  // namespace
