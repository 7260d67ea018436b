#include "strings/file_paths.h"

#include <stdlib.h>
#include <unistd.h>

#include <filesystem>
#include <vector>

#include <gtest/gtest.h>

#include "strings/record_scanning.h"
#include "strings/text_search.h"
#include "tests/strings/texts.h"
#include "tests/support/files.h"

namespace {

TEST(ExtractFilename, SplitsAtTheLastSlash) {
    const struct {
        std::string path, name, directory;
    } cases[] = {{"/usr/lib/x.so", "x.so", "/usr/lib"},
                 {"x.so", "x.so", "."},
                 {"dir/", "", "dir"},
                 {"/x.so", "x.so", "/"},
                 {"a/b/", "", "a/b"},
                 {"/", "", "/"},
                 {"", "", "."},
                 {"//", "", "/"},
                 {"//x", "x", "/"},
                 {"a//b", "b", "a/"},
                 {"a\\b", "a\\b", "."}};
    for (const auto& [path, name, directory] : cases) {
        EXPECT_EQ(extract_filename_name(path), name) << path;
        EXPECT_EQ(extract_filename_path(path), directory) << path;
    }
}

TEST(ExtractFilename, KeepsEveryByteButTheSlash) {
    for_each_text("ab./", 7, [](const std::string& path) {
        const std::string name = extract_filename_name(path);
        ASSERT_EQ(name.find('/'), std::string::npos);
        if (path.find('/') == std::string::npos)
            ASSERT_EQ(name, path);
        else if (path.rfind('/') == 0)
            ASSERT_EQ(extract_filename_path(path) + name, path);
        else
            ASSERT_EQ(extract_filename_path(path) + "/" + name, path);
    });
}

TEST(SupressFilenameExtension, RemovesTheLastExtension) {
    const struct {
        std::string path, shorter;
    } cases[] = {
        {"dir/file.txt", "dir/file"},
        {"file.", "file"},
        {"dir.d/file", "dir.d/file"},
        {"a..b", "a..b"},
        {".profile", ""},
        {"a.\\b", "a.\\b"},
        {"c:\\dir.x\\file", "c:\\dir"},
        {"a.tar.gz", "a.tar"},
        {"dir/.profile", "dir/"},
        {"x/..", "x/."},
        {"", ""},
        {".", ""},
        {"..", "."},
        {"...", ".."},
        {"a.b/", "a.b/"},
        {"a", "a"},
        {"..a", "..a"},
        {"dir/..a", "dir/..a"},
        {"a/b.c.d", "a/b.c"},
        {".\\x", ".\\x"},
        {"a.b.", "a.b"},
        {"/.", "/"},
        {"a./b", "a./b"},
        {"x..", "x."},
    };
    for (const auto& [path, shorter] : cases)
        EXPECT_EQ(supress_filename_extension(path), shorter) << path;
}

/// The rules one after the other, each by its own test.
std::string without_extension_by_rules(const std::string& path) {
    const int n = static_cast<int>(path.size());
    int p = 0, d = -1;
    for (int at = 0; at < n; ++at)
        if (path[static_cast<std::size_t>(at)] == '/') p = at + 1;
    for (int at = p; at < n; ++at)
        if (path[static_cast<std::size_t>(at)] == '.') d = at;
    if (d < 0) return path;
    const std::string before = path.substr(0, static_cast<std::size_t>(d));
    if (d == n - 1) return before;
    const char next = path[static_cast<std::size_t>(d) + 1];
    if (next == '/' || next == '\\') return path;
    if (d == 0) return before;
    return before.back() == '.' ? path : before;
}

TEST(SupressFilenameExtension, FollowsItsRulesOnEveryShortPath) {
    for_each_text("a./\\", 7, [](const std::string& path) {
        ASSERT_EQ(supress_filename_extension(path), without_extension_by_rules(path)) << path;
    });
}

/// A temporary directory to stand in, left and removed at the end.
class CurrentDirectory : public testing::Test {
protected:
    void SetUp() override {
        if (const char* pwd = getenv("PWD")) old_pwd_ = pwd;
    }
    void TearDown() override { setenv("PWD", old_pwd_.c_str(), 1); }

    current_folder folder_;
    std::filesystem::path directory_ = std::filesystem::canonical(folder_.path());
    std::string old_pwd_;
};

TEST_F(CurrentDirectory, IsTheResolvedPathWhenPwdNamesAnotherPlace) {
    std::filesystem::current_path(directory_);
    setenv("PWD", "/", 1);
    EXPECT_EQ(my_current_directory(), directory_.string());
    unsetenv("PWD");
    EXPECT_EQ(my_current_directory(), directory_.string());
}

TEST_F(CurrentDirectory, IsPwdWhenThatNamesIt) {
    std::filesystem::create_directory(directory_ / "real");
    std::filesystem::create_symlink("real", directory_ / "link");
    std::filesystem::current_path(directory_ / "link");
    setenv("PWD", (directory_ / "link").c_str(), 1);
    EXPECT_EQ(my_current_directory(), (directory_ / "link").string());
}

TEST_F(CurrentDirectory, IsEmptyWhenTheSystemCannotTell) {
    std::filesystem::create_directory(directory_ / "gone");
    std::filesystem::current_path(directory_ / "gone");
    std::filesystem::remove(directory_ / "gone");
    unsetenv("PWD");
    EXPECT_EQ(my_current_directory(), "");
    captured_output output;
    EXPECT_EQ(relative_directory_path("a/b", ""), "a/b");
    EXPECT_EQ(output.err(), "demarrage a/b|\nintermediaire: a/b|\n--> a/b\n");
}

TEST_F(CurrentDirectory, StandsInForAnEmptyBase) {
    std::filesystem::current_path(directory_);
    setenv("PWD", directory_.c_str(), 1);
    captured_output output;
    EXPECT_EQ(relative_directory_path(directory_.string() + "/x/y", ""), "x/y");
    EXPECT_EQ(output.err(), "demarrage " + directory_.string() + "/x/y|" + directory_.string() +
                                "\nintermediaire: x/y|\n--> x/y\n");
    EXPECT_EQ(relative_directory_path(directory_.string(), ""), ".");
}

TEST(RelativeDirectoryPath, LeadsFromTheBaseToTheTargetAndTracesIt) {
    const struct {
        std::string target, base, result, middle;
    } cases[] = {
        {"/home/a/x/y", "/home/a/z", "../x/y", "x/y|z"},
        {"/home/a", "/home/a/z/w", "../..", "|z/w"},
        {"/home/a/z/w", "/home/a", "z/w", "z/w|"},
        {"/home/a", "/home/b", "../a", "a|b"},
        {"doc/x", "/home/a", "doc/x", "doc/x|/home/a"},
        {"doc/x", "doc/y", "../x", "x|y"},
        {"/x", "/", "x", "x|"},
        {"/x", "y", "..//x", "/x|y"},
        {"a", "a/b/", "../..", "|b/"},
        {"a/b/", "a", "b/", "b/|"},
        {"/home/a", "/home/a//x", "..", "|x"},
        {"", "x", "", "|x"},
        {"", "/x", "", "|x"},
        {"", "a/b", "", "|a/b"},
    };
    for (const auto& [target, base, result, middle] : cases) {
        captured_output output;
        EXPECT_EQ(relative_directory_path(target, base), result) << target << " " << base;
        const std::vector<std::string> lines = {"demarrage " + target + "|" + base + "\n",
                                                "intermediaire: " + middle + "\n",
                                                "--> " + result + "\n"};
        EXPECT_EQ(output.err(), lines[0] + lines[1] + lines[2]);
        EXPECT_EQ(output.err_flushes(), lines);
        EXPECT_EQ(output.out(), "");
    }
}

TEST(RelativeDirectoryPath, IsAPointBetweenEqualPaths) {
    const struct {
        std::string target, base;
    } cases[] = {
        {"/home/a", "/home/a"}, {"a", "a"}, {"a/", "a"}, {"a", "a/"}, {"a", "a///"}, {"/", "//"},
        {"/a/", "/a"},          {"", "/"},  {"", "///"}};
    for (const auto& [target, base] : cases) {
        captured_output output;
        EXPECT_EQ(relative_directory_path(target, base), ".") << target << " " << base;
        EXPECT_EQ(output.err(), "demarrage " + target + "|" + base + "\n--> .\n");
    }
}

/// Component by component with next_record, given up once both paths are used up.
std::string relative_path_by_records(const std::string& target, const std::string& base) {
    if (target == base) return ".";
    std::string rest_t = target, rest_d = base, prev_t, prev_d, component_t, component_d;
    do {
        prev_t = rest_t;
        prev_d = rest_d;
        if (prev_t.empty() && prev_d.empty()) return ".";
        component_t = next_record(rest_t, '/', rest_t);
        component_d = next_record(rest_d, '/', rest_d);
    } while (component_t == component_d);
    std::string climb;
    for (int slashes = char_occurences(prev_d, '/'); slashes > 0; --slashes) climb += "../";
    if (!prev_d.empty()) climb += "..";
    if (prev_t == target && target[0] != '/') return prev_t;
    if (prev_t.empty()) return climb;
    if (prev_d.empty()) return prev_t;
    return climb + "/" + prev_t;
}

TEST(RelativeDirectoryPath, EndsOnEveryPairOfShortPaths) {
    captured_output output;
    for_each_text("ab/", 4, [](const std::string& target) {
        for_each_text("ab/", 4, [&target](const std::string& base) {
            if (base.empty()) return;
            ASSERT_EQ(relative_directory_path(target, base), relative_path_by_records(target, base))
                << target << "|" << base;
        });
    });
}

TEST(RelativeDirectoryPath, ArrivesAtTheTarget) {
    random_source random(81);
    captured_output output;
    const auto path = [&random] {
        std::string result;
        for (int left = random.number(1, 5); left > 0; --left)
            result += "/" + std::string(1, "ab"[random.number(0, 1)]);
        return result;
    };
    for (int round = 0; round < 5'000; ++round) {
        const std::string target = path(), base = path();
        const std::filesystem::path way = relative_directory_path(target, base);
        auto arrived = (std::filesystem::path(base) / way).lexically_normal().string();
        if (arrived.size() > 1 && arrived.back() == '/') arrived.pop_back();
        ASSERT_EQ(arrived, target) << base << " " << way;
    }
}

}  // namespace
