// Whole documents against files that this library did not write: see golden/make.py.
#include <gtest/gtest.h>

#include <numeric>

#include "tests/viewer/documents.h"

namespace {

const char* const cases[] = {"no_line",  "one_line", "one_cell", "example", "lines_77",
                             "lines_78", "table",    "mixed_1",  "mixed_2"};

text_lines lines_of(const std::string& name) { return parts_of(golden(name + ".lines"), "\n"); }

TEST(GoldenDocuments, AreWrittenByteForByte) {
    for (const std::string name : cases) {
        const text_lines lines = lines_of(name);
        EXPECT_TRUE(as_pdf(lines) == golden(name + ".pdf")) << name;
        EXPECT_TRUE(as_postscript(lines) == golden(name + ".ps")) << name;
        EXPECT_TRUE(as_text(lines) == golden(name + ".txt")) << name;
        EXPECT_EQ(screen_pages(lines), parts_of(golden(name + ".screen"), "\f")) << name;
    }
}

TEST(GoldenDocuments, HaveThePagesThatTheirNamesSay) {
    const struct {
        std::string name;
        int last_page;
    } pages[] = {{"no_line", 0}, {"one_line", 0}, {"lines_77", 0}, {"lines_78", 1}, {"table", 2}};
    for (const auto& [name, last_page] : pages)
        EXPECT_EQ(pages_of(lines_of(name)), last_page) << name;
}

}  // namespace
