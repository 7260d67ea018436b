// The manual's pages: what the formatter says of them, where they lead, and the commands that the
// overview shows.
#include <gtest/gtest.h>

#include <filesystem>
#include <regex>

#include "tests/support/pages.h"
#include "tests/support/programs.h"

namespace {

namespace files = std::filesystem;

std::vector<files::path> man_pages() {
    std::vector<files::path> pages;
    for (const auto& entry : files::directory_iterator(QUORIN_SOURCE "/docs/man"))
        pages.push_back(entry.path());
    return pages;
}

// As a reader types it: a page's dashes are escaped.
std::string typed(const std::string& text) {
    return std::regex_replace(text, std::regex(R"(\\-)"), "-");
}

// What stands between .nf and .fi: the commands that a page shows.
std::vector<std::string> shown_commands(const std::string& text) {
    std::vector<std::string> blocks;
    bool inside = false;
    for (const std::string& line : lines_of(text))
        if (line == ".nf" || line == ".fi") {
            inside = line == ".nf";
            if (inside) blocks.emplace_back();
        } else if (inside) {
            blocks.back() += typed(line) + "\n";
        }
    return blocks;
}

TEST(ManPages, AreFormattedWithoutAWarning) {
    EXPECT_EQ(man_pages().size(), 6u);
    for (const files::path& page : man_pages()) {
        const outcome end = run_program({"man", "--warnings", "-E", "UTF-8", "-l", page.string()});
        EXPECT_EQ(end.status, 0) << page;
        EXPECT_EQ(end.err, "") << page;
        EXPECT_NE(end.out.find("SEE ALSO"), std::string::npos) << page;
    }
}

// "zk4sim.1" is told as ".BR zk4sim (1),".
TEST(ManPages, AreFoundFromTheOverview) {
    const std::string overview = typed(page("docs/man/quorin.7"));
    const std::string also = overview.substr(overview.find(".SH SEE ALSO"));
    for (const files::path& page : man_pages()) {
        if (page.extension() != ".1") continue;
        EXPECT_NE(also.find(".BR " + page.stem().string() + " (1)"), std::string::npos) << page;
        EXPECT_NE(overview.find(".TP\n.BR " + page.stem().string() + " (1)\n"), std::string::npos)
            << page;
    }
}

TEST(ManPages, AreFoundFromEachOther) {
    static const std::regex name(R"(\.BR (quorin[a-z-]*|zk4sim) \((\d)\))");
    int named = 0;
    for (const files::path& page : man_pages()) {
        const std::string text = typed(bytes_of(page));
        for (std::sregex_iterator each(text.begin(), text.end(), name), end; each != end; ++each) {
            const std::string file = (*each)[1].str() + "." + (*each)[2].str();
            EXPECT_TRUE(files::exists(page.parent_path() / file)) << page << ": " << file;
            ++named;
        }
    }
    EXPECT_GT(named, 10);
}

// The session without a display, and its replay.
TEST(ManPages, ShowCommandsThatRun) {
    const leaves_nothing nothing;
    const std::vector<std::string> shown = shown_commands(page("docs/man/quorin.7"));
    ASSERT_EQ(shown.size(), 4u);
    const current_folder folder;
    write_bytes("script", "set -e\n" + shown[2]);
    const outcome end =
        run_program({"sh", "script"}, {"PATH=" QUORIN_PROGRAMS ":" + std::string(getenv("PATH"))});
    EXPECT_EQ(end.status, 0) << end.err;
    EXPECT_NE(bytes_of("seance.csv").find(",entree,b1s,1\n"), std::string::npos) << end.err;
}

// The exercise that it names is bundled, and shown by the command that it gives.
TEST(ManPages, NameABundledExercise) {
    const std::string lesson = shown_commands(page("docs/man/quorin.7")).at(3);
    const outcome end = run_program({"sh", "-c", lesson.substr(0, lesson.find('\n'))},
                                    {"PATH=" QUORIN_PROGRAMS ":" + std::string(getenv("PATH")),
                                     "QUORIN_EXERCICES=" QUORIN_SOURCE "/lesson/exercices"});
    EXPECT_EQ(end.status, 0) << end.err;
    EXPECT_NE(end.out, "");
}

}  // namespace
