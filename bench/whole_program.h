// What benchmarks of whole programs share.
#pragma once
#include <sys/types.h>

#include <algorithm>
#include <fstream>
#include <string>
#include <vector>

#include "tests/support/elapsed.h"

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
