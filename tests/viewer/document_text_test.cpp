// Foreign text made safe for each kind of document.
#include "viewer/document_text.h"

#include <gtest/gtest.h>

#include <random>

#include "tests/viewer/documents.h"

namespace {

struct example {
    std::string line, safe;
};

std::string in_pdf(const std::string& line, const std::string& definition = "#C 1000 ") {
    line_markup::column_layout columns;
    columns.define(definition);
    return document_text::for_pdf(line, columns);
}

std::string in_postscript(const std::string& line) {
    line_markup::column_layout columns;
    return document_text::for_postscript(line, columns);
}

// Characters of every length, the last ones of their length and around what is no character.
const example well_formed[] = {
    {"", ""},
    {"te;1 ~}", "te;1 ~}"},
    {"\xC2\xA0\xC3\xA9\xC3\xBF", "\xA0\xE9\xFF"},
    {"\xC4\x80 \xDF\xBF", "? ?"},
    {"\xE0\xA0\x80 \xE2\x82\xAC \xED\x9F\xBF \xEE\x80\x80", "? ? ? ?"},
    {"\xF0\x90\x80\x80\xF0\x9F\x94\xA9.\xF4\x8F\xBF\xBF", "??.?"},
};

// Bytes alone, characters cut short, too long for what they say, halves of pairs, beyond U+10FFFF.
const example wrong[] = {
    {"\x80 \xBF", "? ?"},
    {"a\xC3", "a?"},
    {"\xE2\x82", "??"},
    {"\xE2\x82.", "??."},
    {"\xF0\x9F\x94\xC3\xA9", "???\xE9"},
    {"\xC0\x80\xC1\xBF", "????"},
    {"\xE0\x9F\xBF", "???"},
    {"\xF0\x8F\xBF\xBF", "????"},
    {"\xED\xA0\x80\xED\xBF\xBF", "??????"},
    {"\xF4\x90\x80\x80", "????"},
    {"\xF8\x88\x80\x80\x80\xFF", "??????"},
};

const example controls[] = {
    {std::string("\0a\tb\nc\r\x1F\x7F", 9), " a b c   "},
    {"\xC2\x80\xC2\x9F", "  "},
};

TEST(DocumentText, HasAByteForEachCharacterOfUtf8) {
    for (const auto& [line, safe] : well_formed) {
        EXPECT_TRUE(document_text::is_utf8(line)) << line;
        EXPECT_EQ(document_text::for_text(line), safe);
        EXPECT_EQ(in_pdf(line), safe);
    }
}

TEST(DocumentText, HasAQuestionMarkForEachWrongByte) {
    for (const auto& [line, safe] : wrong) {
        EXPECT_FALSE(document_text::is_utf8(line)) << line;
        EXPECT_EQ(document_text::for_text(line), safe);
        EXPECT_EQ(in_pdf(line), safe);
    }
}

TEST(DocumentText, HasBlanksForControlCharacters) {
    for (const auto& [line, safe] : controls) {
        EXPECT_EQ(document_text::for_text(line), safe);
        EXPECT_EQ(in_pdf(line), safe);
        EXPECT_EQ(in_postscript(line), safe);
    }
}

TEST(DocumentText, LeavesTheMarkupAlone) {
    for (const std::string line : {"#C T20\tT8 T", "#P 1\x01 ", "#T", "#Total\xC3\xA9"}) {
        EXPECT_EQ(document_text::for_text(line), line);
        EXPECT_EQ(in_pdf(line), line);
        EXPECT_EQ(in_postscript(line), line);
    }
    for (const std::string line : {"#", "##", "#c", "a#b", "a##", "(a)b"}) {
        EXPECT_EQ(document_text::for_text(line), line);
        EXPECT_EQ(in_pdf(line), line);
        EXPECT_EQ(in_postscript(line), line);
    }
}

TEST(DocumentText, EscapesWhatPrintWouldTakeForThePartsOfADocument) {
    const example cases[] = {
        {"a\\b", "a\\\\b"},
        {"\\", "\\\\"},
        {"\\050\\\\", "\\\\050\\\\\\\\"},
        {"endstream", "\\145ndstream"},
        {"x endobj endobjx", "x \\145ndobj \\145ndobjx"},
        {"eendstreamendobj", "e\\145ndstream\\145ndobj"},
        {"end(st)ream", "\\145nd(st)ream"},  // the filters drop parentheses
        {"(e)ndobj(", "(\\145)ndobj("},
    };
    for (const auto& [line, safe] : cases) {
        EXPECT_EQ(in_pdf(line), safe);
        EXPECT_EQ(document_text::for_text(line), line);
    }
    for (const std::string line : {"Endstream end stream endob endstrea", "stream obj", "end#obj"})
        EXPECT_EQ(in_pdf(line), line);
    EXPECT_EQ(in_postscript("\\ endstream end(obj"), "\\\\ \\145ndstream \\145nd(obj");
}

TEST(DocumentText, NoEdgeOfAColumnCutsAnEscape) {
    const struct {
        std::string definition, line, safe;
    } cases[] = {{"#C 3 4 ", "ab\\#abc\\", "ab \\\\#abc \\\\"},
                 {"#C 4 4 ", "ab\\#ab\\", "ab\\\\#ab\\\\"},
                 {"#C 1 ", "\\\\", " \\\\\\\\"},
                 {"#C 3 ", "endobj", "   \\145ndobj"},
                 {"#C 4 ", "endobj", "\\145ndobj"},
                 {"#C 6 ", "((endobj", "((\\145ndobj"},
                 {"#C 5 ", "((endobj", "((   \\145ndobj"},
                 {"#C 5 ", "ab#\\", "ab#\\\\"},     // no column
                 {"#C 4294967295 ", "\\", "\\\\"},  // below 0
                 {"#C 3 ", "\xC3\xA9\xC3\xA9\\", "\xE9\xE9 \\\\"}};
    for (const auto& [definition, line, safe] : cases)
        EXPECT_EQ(in_pdf(line, definition), safe) << definition;
}

TEST(DocumentText, FollowsTheDefinitionsOfColumns) {
    line_markup::column_layout columns;
    EXPECT_EQ(document_text::for_pdf("#C T2 T3 T", columns), "#C T2 T3 T");
    EXPECT_EQ(columns.width(0), 2);
    EXPECT_EQ(document_text::for_pdf("a\\", columns), "a \\\\");
    EXPECT_EQ(document_text::for_postscript("#P 3 ", columns), "#P 3 ");
    EXPECT_EQ(document_text::for_postscript("a\\", columns), "a\\\\");
    EXPECT_EQ(document_text::for_pdf("#T 1 ", columns), "#T 1 ");
    EXPECT_EQ(columns.width(0), 3);
}

TEST(DocumentText, PostscriptHasTheStandardEncoding) {
    const example cases[] = {{"\xC3\xA9\xC3\x80\xC3\xA7\xC3\xBF", "eAcy"},
                             {"\xC2\xAB \xC2\xBB \xC2\xBF\xC2\xA7", "\xAB \xBB \xBF\xA7"},
                             {"\xC3\x86\xC3\x98\xC3\x9F\xC3\xA6\xC3\xB8", "\xE1\xE9\xFB\xF1\xF9"},
                             {"'`", "\xA9\xC1"},
                             {"20 \xC2\xB0"
                              "C, m\xC2\xB2",
                              "20 \xCA"
                              "C, m2"},
                             {"\xC2\xBD \xC3\x97 \xE2\x82\xAC \xE9", "? ? ? ?"},
                             {"#\xC3\x87"
                              "a#b",
                              "#ca#b"}};  // "#C" would define columns
    for (const auto& [line, safe] : cases) EXPECT_EQ(in_postscript(line), safe);
}

/// The text of each "(...) Tj" or "(...) show", as a reader finds it: escapes pair up, and nothing
/// else ends a text.
text_lines shown_texts(const std::string& document) {
    text_lines shown;
    for (std::size_t at = 0; (at = document.find('(', at)) != std::string::npos;) {
        const std::size_t start = ++at;
        while (at < document.size() && document[at] != ')') at += document[at] == '\\' ? 2 : 1;
        if (at >= document.size()) return {"not ended"};
        shown.push_back(document.substr(start, at - start));
    }
    return shown;
}

// Parts of words, escapes, wrong bytes and parentheses, cut by columns of any width.
TEST(DocumentText, AnyTextStaysInItsCells) {
    const char* const parts[] = {"end", "stream",    "obj",    "e",        "\\",   "(",
                                 ")",   "#",         " ",      "\xC3\xA9", "\xC3", "\n",
                                 "145", "endstream", "endobj", "\r1 0 obj"};
    std::mt19937 random(11);
    for (int round = 0; round < 1000; ++round) {
        text_lines lines = {"#C " + std::to_string(random() % 12) + " 7 "};
        for (int line = 0; line < 5; ++line) {
            lines.emplace_back("-");
            for (unsigned left = random() % 9; left > 0; --left)
                lines.back() += parts[random() % 16];
        }
        line_markup::column_layout columns;
        for (std::string& line : lines) line = document_text::for_pdf(line, columns);
        const std::string document = as_pdf(lines);
        const text_lines shown = shown_texts(document);
        ASSERT_EQ(shown.size(), parts_of(document, ") Tj\n").size()) << round;
        ASSERT_EQ(parts_of(document, "endstream").size(), 1u) << round;
        ASSERT_EQ(parts_of(document, "endobj").size(), 7u) << round;
        for (const std::string& each : shown) ASSERT_LE(each.size(), 11u) << round;
    }
}

}  // namespace
