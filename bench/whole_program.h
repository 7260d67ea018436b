// What benchmarks of whole programs share.
#pragma once
#include <sys/types.h>

#include <algorithm>
#include <chrono>
#include <fstream>
#include <string>
#include <vector>

inline double seconds_since(std::chrono::steady_clock::time_point start) {
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

inline double median(std::vector<double> values) {
    std::ranges::sort(values);
    return values[values.size() / 2];
}

/// The memory that a running process holds; 0 when it is none.
inline long resident_kib(pid_t pid) {
    std::ifstream status("/proc/" + std::to_string(pid) + "/status");
    for (std::string word; status >> word;) {
        long kib = 0;
        if (word == "VmRSS:" && status >> kib) return kib;
    }
    return 0;
}
