#include "strings/edit_distance.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <iostream>
#include <memory>
#include <numeric>

namespace {

constexpr std::size_t table_side = 1000;
constexpr std::size_t longest_text = table_side - 2;

using distance_row = std::array<std::int32_t, table_side>;
using distance_table = std::array<distance_row, table_side>;

/// The calling thread's table, reserved at its first call. Not a plain thread_local array: its 4 MB
/// would be taken from the stack of every thread of the program, whether it calls or not.
distance_table& own_table() {
    thread_local const auto table = std::make_unique<distance_table>();
    return *table;
}

/// Fills columns 1 to the length of `b` from `above`, the row for one byte less of `a`.
void fill_row(distance_row& row, const distance_row& above, char byte_of_a, const std::string& b) {
    std::int32_t left = row[0];
    for (std::size_t j = 1; j <= b.size(); ++j) {
        const std::int32_t replaced = above[j - 1] + (byte_of_a == b[j - 1] ? 0 : 1);
        // What does not depend on `left` comes first, so that the processor can work ahead.
        left = std::min(left + 1, std::min(above[j] + 1, replaced));
        row[j] = left;
    }
}

}  // namespace

int levenshtein(const std::string& a, const std::string& b) {
    if (a.size() > longest_text || b.size() > longest_text) {
        std::cerr << "chaines trop grandes!" << std::endl;
        return -1;
    }
    distance_table& distance = own_table();
    std::iota(distance[0].begin(), distance[0].begin() + b.size() + 1, 0);
    for (std::size_t i = 1; i <= a.size(); ++i) {
        distance[i][0] = static_cast<std::int32_t>(i);
        fill_row(distance[i], distance[i - 1], a[i - 1], b);
    }
    return distance[a.size()][b.size()];
}
