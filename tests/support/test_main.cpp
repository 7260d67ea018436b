// The tests' main: in the locale of the environment, as a caller's program may well be, so that a
// number written with a locale's comma shows.
#include <clocale>
#include <iostream>
#include <locale>
#include <stdexcept>

#include <gtest/gtest.h>

namespace {

/// Puts the C and C++ libraries in the environment's locale. Ends the run when the machine lacks
/// that locale: a test that silently fell back to "C" would prove nothing.
void enter_environment_locale() {
    try {
        std::locale::global(std::locale(""));
    } catch (const std::runtime_error&) {
        std::cerr << "the locale of LC_ALL or LANG is not on this machine\n";
        std::exit(1);
    }
    std::setlocale(LC_ALL, "");
}

}  // namespace

int main(int argc, char** argv) {
    enter_environment_locale();
    testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
