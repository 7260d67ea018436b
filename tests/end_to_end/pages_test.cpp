// The pages: where their links lead, and the scripts that they show.
#include "tests/support/pages.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <filesystem>
#include <regex>

#include "tests/support/programs.h"

namespace {

namespace files = std::filesystem;

const files::path root = QUORIN_SOURCE;

std::vector<files::path> all_pages() {
    std::vector<files::path> pages;
    for (const files::path& folder : {root, root / "docs"})
        for (const auto& entry : files::directory_iterator(folder))
            if (entry.path().extension() == ".md") pages.push_back(entry.path());
    return pages;
}

// The lines of a page, but for its blocks of code.
std::vector<std::string> prose(const files::path& page) {
    std::vector<std::string> lines;
    bool code = false;
    for (const std::string& line : lines_of(bytes_of(page)))
        if (line.starts_with("```"))
            code = !code;
        else if (!code)
            lines.push_back(line);
    return lines;
}

// "What's where" is found as "whats-where".
std::string anchor_of(const std::string& heading) {
    std::string anchor;
    for (const unsigned char letter : heading)
        if (letter == ' ')
            anchor += '-';
        else if (std::isalnum(letter) || letter == '-' || letter == '_' || letter >= 0x80)
            anchor += static_cast<char>(std::tolower(letter));
    return anchor;
}

bool has_anchor(const files::path& page, const std::string& anchor) {
    for (const std::string& line : prose(page)) {
        const std::size_t text = line.find_first_not_of('#');
        if (text != 0 && text != std::string::npos && line[text] == ' ' &&
            anchor_of(line.substr(text + 1)) == anchor)
            return true;
    }
    return false;
}

// Where the links of a page lead, as they are written.
std::vector<std::string> links_of(const files::path& page) {
    static const std::regex code("`[^`]*`"), link(R"(\]\(([^()\s]*)\))");
    std::string text;
    for (const std::string& line : prose(page)) text += std::regex_replace(line, code, "") + "\n";
    std::vector<std::string> targets;
    for (std::sregex_iterator each(text.begin(), text.end(), link), end; each != end; ++each)
        targets.push_back((*each)[1]);
    return targets;
}

TEST(Pages, LinkToWhatExists) {
    const std::vector<files::path> pages = all_pages();
    EXPECT_GT(pages.size(), 10u);
    for (const files::path& page : pages)
        for (const std::string& link : links_of(page)) {
            if (link.find("://") != std::string::npos) continue;
            const std::size_t hash = std::min(link.find('#'), link.size());
            const files::path target = hash ? page.parent_path() / link.substr(0, hash) : page;
            EXPECT_TRUE(files::exists(target)) << page << ": " << link;
            if (hash == link.size()) continue;
            EXPECT_TRUE(has_anchor(target, link.substr(hash + 1))) << page << ": " << link;
        }
}

TEST(Pages, StandInTheTableOfContents) {
    const std::vector<std::string> listed = links_of(root / "docs/README.md");
    for (const files::path& page : all_pages()) {
        if (page.parent_path() != root / "docs" || page.filename() == "README.md") continue;
        EXPECT_EQ(std::ranges::count(listed, page.filename().string()), 1) << page;
    }
}

TEST(Pages, NameFilesOfTheTree) {
    static const std::regex name(R"(`([a-z_]+)(/[\w/]+\.(?:h|cpp|txt))`)");
    int named = 0;
    for (const files::path& page : all_pages()) {
        const std::string text = bytes_of(page);
        for (std::sregex_iterator each(text.begin(), text.end(), name), end; each != end; ++each) {
            const std::string folder = (*each)[1], rest = (*each)[2];
            EXPECT_TRUE(files::exists(root / (folder + rest))) << page << ": " << folder << rest;
            ++named;
        }
    }
    EXPECT_GT(named, 30);
}

// A picture that no page shows is not kept.
TEST(Pages, ShowEveryPicture) {
    std::string shown;
    for (const files::path& page : all_pages())
        for (const std::string& link : links_of(page))
            shown += "\n" + files::path(link).filename().string();
    shown += "\n";
    for (const auto& picture : files::directory_iterator(root / "docs/images"))
        EXPECT_NE(shown.find("\n" + picture.path().filename().string() + "\n"), std::string::npos)
            << picture;
}

// Runs a script of a page as it stands, with the programs of this build.
outcome run_script(const std::string& shell, const std::string& script) {
    const current_folder folder;
    write_bytes(folder.path() / "script", script);
    return run_program({shell, "script"},
                       {"PATH=" QUORIN_PROGRAMS ":" + std::string(getenv("PATH"))});
}

class PageScripts : public testing::TestWithParam<std::string> {
protected:
    leaves_nothing nothing_;
};

TEST_P(PageScripts, EndTheirStationAndSayWhatHappened) {
    const std::vector<std::string> scripts = code_blocks(page("docs/zk4sim.md"), "sh");
    ASSERT_EQ(scripts.size(), 2u);
    for (const std::string& script : scripts) {
        const outcome end = run_script(GetParam(), script);
        EXPECT_EQ(end.status, 0) << script << end.err;
        EXPECT_NE(end.err.find("\nbilan: bonnes=0 mauvaises=0 incidents=0\n"), std::string::npos)
            << script << end.err;
        EXPECT_EQ(leftovers::processes().size(), 0u) << script;
    }
}

// However late it begins, a watch ends with how things were at the end.
TEST_P(PageScripts, ShowWhatTheyWatched) {
    const outcome end = run_script(GetParam(), code_blocks(page("docs/zk4sim.md"), "sh").at(1));
    EXPECT_TRUE(end.out.starts_with("b1e=")) << end.out;
    const auto last = [&](const std::string& name) {
        return end.out.substr(end.out.rfind(name) + name.size(), 2);
    };
    EXPECT_EQ(last("b1e="), "1\n") << end.out;
    EXPECT_EQ(last("b1s="), "0\n") << end.out;
}

// The page of recordings has the bytes of both files, and what a forged one gives.
TEST_P(PageScripts, RecordAndReplayAsThePageShows) {
    const std::string text = page("docs/recordings.md");
    const std::vector<std::string> scripts = code_blocks(text, "sh");
    ASSERT_EQ(scripts.size(), 2u);
    const current_folder folder;
    const auto run = [](const std::string& script) {
        write_bytes("script", "exec 2>&1\n" + script);
        return run_program({GetParam(), "script"},
                           {"PATH=" QUORIN_PROGRAMS ":" + std::string(getenv("PATH"))});
    };
    const outcome recorded = run(scripts[0]);
    EXPECT_EQ(recorded.status, 0) << recorded.out;
    EXPECT_EQ(bytes_of("seance.csv"), code_blocks(text, "csv").at(0)) << recorded.out;
    EXPECT_EQ(bytes_of("seance.vcd"), code_blocks(text, "vcd").at(0));
    EXPECT_EQ(run(scripts[1]).out, code_blocks(text, "text").at(0));
    EXPECT_EQ(bytes_of("encore.csv"), bytes_of("seance.csv"));
}

INSTANTIATE_TEST_SUITE_P(Shells, PageScripts, testing::Values("sh", "bash"),
                         [](const auto& shell) { return shell.param; });

}  // namespace
