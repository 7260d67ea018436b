// What the attacks share: a count from the command line, what was found, and the line of figures at
// the end. The status is 1 when something was found.
#pragma once
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <random>
#include <string>

#include "tests/support/elapsed.h"

class attack {
public:
    /// The count is the program's first argument, `usual` where there is none; the seed its second.
    attack(const char* name, int argc, char** argv, long usual)
        : wanted(argc > 1 ? std::atol(argv[1]) : usual), name_(name) {
        const unsigned seed =
            argc > 2 ? static_cast<unsigned>(std::atol(argv[2])) : std::random_device{}();
        random.seed(seed);
        std::fprintf(stderr, "%s: %ld, seed %u\n", name, wanted, seed);
    }

    /// Something that must not be. Told at once; the attack goes on.
    void find(const std::string& what) {
        ++found_;
        std::fprintf(stderr, "%s: FOUND at %ld: %s\n", name_, done, what.c_str());
    }
    /// False once it is done, or when so much was found that more of it tells nothing.
    bool goes_on() const { return done < wanted && found_ < 20; }
    long found() const { return found_; }

    /// Prints "name: <count> <of what>, <figures>, 0 found, 12 s". The program's status.
    int finish(const std::string& of_what, const std::string& figures) const {
        std::printf("%s: %ld %s, %s, %ld found, %.0f s\n", name_, done, of_what.c_str(),
                    figures.c_str(), found_, seconds_since(begun_));
        return found_ == 0 ? 0 : 1;
    }

    /// Whether times and growth are judged: a moment of it runs beside the rest of the suite, and
    /// every process grows at its beginning.
    bool judges_figures() const { return wanted >= 100; }

    /// Below `limit`.
    std::size_t below(std::size_t limit) { return random() % limit; }
    bool one_in(std::size_t count) { return below(count) == 0; }

    const long wanted;
    long done = 0;
    std::mt19937 random;

private:
    const char* name_;
    const std::chrono::steady_clock::time_point begun_ = std::chrono::steady_clock::now();
    long found_ = 0;
};
