// Each family of the string toolkit against the standard library's nearest way of doing the same.
#include <algorithm>
#include <filesystem>
#include <iostream>
#include <list>
#include <memory>
#include <numeric>
#include <sstream>
#include <string>
#include <vector>

#include "bench/comparison.h"
#include "bench/strings_families.h"
#include "strings/edit_distance.h"
#include "strings/file_paths.h"
#include "strings/string_lists.h"

namespace {

int two_row_distance(const std::string& a, const std::string& b) {
    std::vector<int> above(b.size() + 1), row(b.size() + 1);
    std::iota(above.begin(), above.end(), 0);
    for (std::size_t i = 0; i < a.size(); ++i) {
        row[0] = static_cast<int>(i) + 1;
        for (std::size_t j = 0; j < b.size(); ++j)
            row[j + 1] = std::min({row[j] + 1, above[j + 1] + 1, above[j] + (a[i] != b[j])});
        std::swap(above, row);
    }
    return above[b.size()];
}

void add_distance() {
    for (const std::size_t length : {10UL, 100UL, 998UL}) {
        const std::string a = sample_text(length), b = sample_text(2 * length).substr(length);
        const std::string task = "distance of " + std::to_string(length) + " byte texts";
        add_way(task, "levenshtein", [=] { return levenshtein(a, b); });
        add_way(task, "two rows", [=] { return two_row_distance(a, b); });
    }
}

void add_paths() {
    static const std::string path = "/home/user/cell/station.tar.gz";
    static const std::string base = "/home/user/documents/notes/2024";
    add_way("file name", "extract_filename_name", [] { return extract_filename_name(path); });
    add_way("file name", "std::filesystem::path",
            [] { return std::filesystem::path(path).filename().string(); });
    add_way("without extension", "supress_filename_extension",
            [] { return supress_filename_extension(path); });
    add_way("without extension", "std::filesystem::path",
            [] { return std::filesystem::path(path).replace_extension().string(); });
    // The trace goes nowhere here, as the other way has none.
    add_way("way to a path", "relative_directory_path", [] {
        std::streambuf* const trace = std::cerr.rdbuf(nullptr);
        std::string way = relative_directory_path(path, base);
        std::cerr.rdbuf(trace);
        return way;
    });
    add_way("way to a path", "std::filesystem::path",
            [] { return std::filesystem::path(path).lexically_relative(base).string(); });
}

void add_lists() {
    static const std::list<std::string> list = [] {
        std::list<std::string> words;
        for (const std::string& word : stream_words(sample_text(5'000))) words.push_back(word);
        return words;
    }();
    add_way("list to array", "array_convert",
            [] { return std::unique_ptr<std::string[]>(array_convert(list)); });
    add_way("list to array", "std::vector",
            [] { return std::vector<std::string>(list.begin(), list.end()); });
    add_way("list printed", "operator<<", [] {
        std::ostringstream out;
        out << list;
        return out.str();
    });
    add_way("list printed", "a loop without flushes", [] {
        std::ostringstream out;
        for (const std::string& word : list) out << word << ", ";
        return out.str();
    });
}

}  // namespace

int main(int argc, char** argv) {
    add_number_families();
    add_text_families();
    add_distance();
    add_paths();
    add_lists();
    return run_comparisons(argc, argv);
}
