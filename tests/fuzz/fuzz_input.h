// What the fuzz targets share: arguments cut out of the fuzzer's bytes, and a law that must hold.
#pragma once
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <iostream>
#include <string>
#include <string_view>

/// Gives out the fuzzer's bytes as arguments; when they are used up, zeros and empty texts.
class fuzz_input {
public:
    fuzz_input(const std::uint8_t* data, std::size_t size)
        : left_(reinterpret_cast<const char*>(data), size) {}

    char byte() {
        if (left_.empty()) return '\0';
        const char first = left_.front();
        left_.remove_prefix(1);
        return first;
    }

    int number() {
        int value = 0;
        const std::string_view bytes = left_.substr(0, sizeof value);
        std::memcpy(&value, bytes.data(), bytes.size());
        left_.remove_prefix(bytes.size());
        return value;
    }

    /// As many bytes as the next one says, modulo `most` + 1.
    std::string text(std::size_t most) {
        const std::size_t length = static_cast<unsigned char>(byte()) % (most + 1);
        const std::string result(left_.substr(0, length));
        left_.remove_prefix(result.size());
        return result;
    }

    bool empty() const { return left_.empty(); }

    std::string rest() const { return std::string(left_); }

private:
    std::string_view left_;
};

/// Ends the program, which the fuzzer reports with its input, unless `holds`.
inline void law(bool holds, const char* which) {
    if (holds) return;
    std::fprintf(stderr, "broken law: %s\n", which);
    std::abort();
}

/// Drops what the functions trace on the standard
/// error stream; the fuzzer's own words go elsewhere.
inline void drop_traces() { std::cerr.rdbuf(nullptr); }
