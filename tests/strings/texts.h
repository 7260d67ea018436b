// What the tests of the byte-string toolkit share: many texts, and what was printed.
#pragma once
#include <cstddef>
#include <iostream>
#include <random>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

/// Calls `visit` with every text of at most `longest` bytes of `alphabet`, the shorter ones first.
template <class Visit>
void for_each_text(std::string_view alphabet, std::size_t longest, Visit visit) {
    std::vector<std::string> texts = {""};
    for (std::size_t first = 0, length = 0; length <= longest; ++length) {
        const std::size_t end = texts.size();
        for (std::size_t at = first; at < end; ++at) {
            visit(texts[at]);
            if (length < longest)
                for (const char byte : alphabet) texts.push_back(texts[at] + byte);
        }
        first = end;
    }
}

/// Random texts and numbers, the same ones in every run.
class random_source {
public:
    explicit random_source(unsigned seed) : engine_(seed) {}

    /// A number from `low` to `high`, both included.
    template <class Integer = int>
    Integer number(Integer low, Integer high) {
        return std::uniform_int_distribution<Integer>(low, high)(engine_);
    }

    /// A number of any magnitude: small ones are as frequent as large ones.
    unsigned long any_magnitude() { return engine_() >> number(0, 63); }

    /// At most `longest` bytes of `alphabet`, or of all bytes when it is empty.
    std::string text(std::string_view alphabet, std::size_t longest) {
        std::string result(number<std::size_t>(0, longest), '\0');
        for (char& byte : result)
            byte = alphabet.empty() ? static_cast<char>(engine_())
                                    : alphabet[number<std::size_t>(0, alphabet.size() - 1)];
        return result;
    }

private:
    std::mt19937_64 engine_;
};

/// Keeps what was written, and what each flush let out of it; a flush of nothing does not count.
class flush_recorder : public std::stringbuf {
public:
    std::vector<std::string> flushed;

protected:
    int sync() override {
        const std::string_view waiting = view().substr(flushed_bytes_);
        if (!waiting.empty()) flushed.emplace_back(waiting);
        flushed_bytes_ += waiting.size();
        return 0;
    }

private:
    std::size_t flushed_bytes_ = 0;
};

/// While it lives, collects what is written on the standard streams. The error stream is not
/// flushed by itself meanwhile, as it is elsewhere after each output: only the flushes that the
/// code asks for are seen.
class captured_output {
public:
    captured_output() : old_err_(std::cerr.rdbuf(&err_)), old_out_(std::cout.rdbuf(&out_)) {
        std::cerr.unsetf(std::ios_base::unitbuf);
    }
    ~captured_output() {
        std::cerr.setf(std::ios_base::unitbuf);
        std::cerr.rdbuf(old_err_);
        std::cout.rdbuf(old_out_);
    }
    captured_output(const captured_output&) = delete;
    captured_output& operator=(const captured_output&) = delete;

    std::string err() const { return err_.str(); }
    std::string out() const { return out_.str(); }

    /// What each flush of the error stream let out.
    const std::vector<std::string>& err_flushes() const { return err_.flushed; }

private:
    flush_recorder err_;
    std::stringbuf out_;
    std::streambuf* old_err_;
    std::streambuf* old_out_;
};
