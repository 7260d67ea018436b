// What the benchmark of recordings measures on live sessions, and what both of its halves need.
#pragma once
#include <algorithm>
#include <chrono>
#include <vector>

inline double seconds_since(std::chrono::steady_clock::time_point start) {
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

inline double median(std::vector<double> values) {
    std::ranges::sort(values);
    return values[values.size() / 2];
}

/// Prints what a recorded session costs beside one that is not, and its memory.
void measure_live_sessions();
