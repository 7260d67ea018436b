#include "viewer/text_filter.h"

#include <gtest/gtest.h>

#include "tests/viewer/documents.h"

namespace {

using namespace std::string_literals;

const std::string dashes = "-------------------------------------------------------\n";

TEST(TextDocument, CopiesTextAndRulesOffMarkup) {
    const struct {
        text_lines lines;
        std::string text;
    } cases[] = {{{}, ""},
                 {{""}, "\n"},
                 {{"un#deux", "(trois)"}, "un#deux\n(trois)\n"},
                 {{"#", "#X", "##", "#c", " #C"}, "#\n#X\n##\n#c\n #C\n"},
                 {{"#C"}, dashes},
                 {{"#P T10 ", "#T", "#Tx", "#C T1 "}, dashes + dashes + dashes + dashes},
                 {{"\0\xFF"s}, "\0\xFF\n"s},
                 {{std::string(20000, 'x')}, std::string(20000, 'x') + "\n"}};
    for (const auto& [lines, text] : cases) EXPECT_EQ(as_text(lines), text);
    EXPECT_EQ(dashes.size(), 56u);
}

TEST(TextDocument, HasNoPages) {
    std::string text;
    for (int line = 0; line < 200; ++line) text += "x\n";
    EXPECT_EQ(as_text(copies(200, "x")), text);
}

TEST(TextDocument, IsEmptyForACountBelowOne) {
    for (const int count : {0, -1}) {
        OFD_afficheur_filtre_texte filter(nullptr, count);
        EXPECT_EQ(written([&](std::fstream& out) { filter.imprime(out); }), "");
    }
}

TEST(TextDocument, HasEachLineInTheFileAtOnce) {
    const temporary_folder folder;
    const std::filesystem::path file = folder / "document";
    std::fstream out(file, std::ios::out);
    OFD_afficheur_filtre_texte filter(nullptr, 0);
    filter.imprime_ligne(out, "un");
    EXPECT_EQ(bytes_of(file), "un\n");
    filter.imprime_ligne(out, "#T");
    EXPECT_EQ(bytes_of(file), "un\n" + dashes);
}

TEST(TextDocument, IgnoresAStreamThatFails) {
    text_lines lines = {"un"};
    std::fstream closed;
    OFD_afficheur_filtre_texte(lines.data(), 1).imprime(closed);
    EXPECT_FALSE(closed.is_open());
}

}  // namespace
