// Pages of the viewer's window, and the pieces that a long line is shown in.
#include "tests/viewer/viewer_on_display.h"

#include <climits>
#include <optional>
#include <random>

using namespace viewer_tests;

namespace {

TEST(ViewerPages, SeventySevenLinesMakeOnePageAndSeventyEightTwo) {
    OFD_afficheur viewer(nullptr, 0);
    strings lines = numbered(77);
    lines.push_back("#C 600 ");
    lines.push_back("#P 600 ");
    give(viewer, lines);
    EXPECT_EQ(label_of(viewer.page_indicator), "page 1 / 2    ") << "a definition after the 77th";
    lines = numbered(77);
    give(viewer, lines);
    EXPECT_EQ(label_of(viewer.page_indicator), "page 1 / 1    ");
    EXPECT_EQ(shown(viewer), page_of(1, 77));
    lines = numbered(78);
    give(viewer, lines);
    EXPECT_EQ(label_of(viewer.page_indicator), "page 1 / 2    ");
    EXPECT_EQ(shown(viewer), page_of(1, 77));
    viewer.page_suivante();
    EXPECT_EQ(label_of(viewer.page_indicator), "page 2 / 2    ");
    EXPECT_STREQ(viewer.page_input->value(), "2");
    EXPECT_EQ(shown(viewer), page_of(78, 78));
}

TEST(ViewerPages, OnlyPagesThatExistAreGoneTo) {
    OFD_afficheur viewer(nullptr, 0);
    strings lines = numbered(77 * 3);
    give(viewer, lines);
    viewer.page_precedente();
    EXPECT_EQ(viewer.page, 0);
    const struct {
        int asked, page;
    } jumps[] = {{2, 2}, {3, 2}, {-1, 2}, {INT_MAX, 2}, {INT_MIN, 2}, {0, 0}, {1, 1}};
    for (const auto& [asked, page] : jumps) {
        viewer.page_numero(asked);
        EXPECT_EQ(viewer.page, page) << asked;
        EXPECT_EQ(shown(viewer), page_of(77 * page + 1, 77 * page + 77)) << asked;
    }
    viewer.page_suivante();
    viewer.page_suivante();
    EXPECT_EQ(viewer.page, 2);
    viewer.page_precedente();
    EXPECT_EQ(viewer.page, 1);
}

TEST(ViewerPages, LongScreenLinesAreCutIntoPiecesThatLoseTheCharacterAfterEach) {
    // The screen line is "@f@S14 " and the text: 7 bytes and `text` of them.
    const struct {
        int text;
        std::vector<int> pieces;
    } cases[] = {{153, {160}},      {154, {161}},         {155, {161, 0}},
                 {156, {161, 1}},   {157, {161, 2}},      {315, {161, 160}},
                 {316, {161, 161}}, {317, {161, 161, 0}}, {318, {161, 161, 1}}};
    for (const auto& [text, pieces] : cases) {
        std::string digits;
        for (int i = 0; i < text; ++i) digits += static_cast<char>('0' + i % 10);
        strings lines = {"#C 600 ", digits, "next"};
        OFD_afficheur viewer(nullptr, 0);
        give(viewer, lines);
        strings expected = {""};
        std::string rest = "@f@S14 " + digits;
        for (const int length : pieces) {
            expected.push_back(rest.substr(0, length));
            rest.erase(0, length + 1);
        }
        expected.push_back("@f@S14 next");
        EXPECT_EQ(shown(viewer), expected) << text;
    }
}

TEST(ViewerPages, LaterPiecesGoToTheBrowserWithoutAnythingBeforeThem) {
    strings lines = {"#C 600 ", std::string(155, 'x') + "@bold\n@C1red"};
    OFD_afficheur viewer(nullptr, 0);
    give(viewer, lines);
    EXPECT_EQ(shown(viewer), (strings{"", "@f@S14 " + std::string(154, 'x'), "@bold", "@C1red"}));
}

TEST(ViewerPages, LaterPiecesLoseTheFormatsThatWouldEndTheProgram) {
    const std::string first(154, 'x');
    strings lines = {"#C 600 ", first + ".@F1000x", first + ".@S99999999x", "a\n@F-100@bx"};
    OFD_afficheur viewer(nullptr, 0);
    give(viewer, lines);
    EXPECT_EQ(shown(viewer),
              (strings{"", "@f@S14 " + first, "x", "@f@S14 " + first, "x", "@f@S14 a", "@bx"}));
}

/// The pieces of a page's text, taken one byte at a time.
strings pieces_of(const std::string& text) {
    strings pieces;
    std::optional<std::string> piece;
    for (const char each : text) {
        if (!piece) piece = "";
        if (each == '\n' || piece->size() == 161) {
            pieces.push_back(*piece);
            piece.reset();
        } else {
            *piece += each;
        }
    }
    if (piece) pieces.push_back(*piece);
    return pieces;
}

TEST(ViewerPages, AllPagesTogetherHoldThePiecesOfEveryLineInOrder) {
    std::mt19937 random(20);
    const auto below = [&](int n) { return static_cast<int>(random() % static_cast<unsigned>(n)); };
    for (int round = 0; round < 60; ++round) {
        strings lines(static_cast<std::size_t>(below(400)));
        for (std::string& line : lines) {
            const char* const starts[] = {"", "#C ", "#P ", "#T", "@", "#x", "@C1", "\n"};
            line = starts[below(8)] + (below(3) ? std::string("900 40 ") : std::string());
            const int length = below(10) ? below(60) : 140 + below(700);
            for (int i = 0; i < length; ++i) line += "abc @#\n("[below(40) ? below(4) : below(8)];
        }
        OFD_afficheur viewer(nullptr, 0);
        give(viewer, lines);
        OFD_afficheur_filtre_affichage filter(lines.data(), static_cast<int>(lines.size()));
        filter.visu_page(0);  // as the viewer did: the columns go on from page to page
        strings expected, seen;
        for (int page = 0; page <= filter.nb_pages(); ++page) {
            const strings pieces = pieces_of(filter.visu_page(page));
            expected.insert(expected.end(), pieces.begin(), pieces.end());
        }
        for (int page = 0;; ++page) {
            viewer.page_numero(page);
            if (viewer.page != page) break;
            const strings more = shown(viewer);
            seen.insert(seen.end(), more.begin(), more.end());
        }
        ASSERT_EQ(seen, expected) << "round " << round;
    }
}

}  // namespace
