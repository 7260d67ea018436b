// Tests that leave out something: tools/skipped_tests must tell each of them.
#include <gtest/gtest.h>

namespace {

TEST(Skipping, Nothing) { SUCCEED(); }
TEST(Skipping, WithAReason) { GTEST_SKIP() << "a moon: a rocket"; }
TEST(Skipping, InTwoLines) { GTEST_SKIP() << "a moon:\na ladder\n"; }
TEST(Skipping, WithoutAReason) { GTEST_SKIP(); }

}  // namespace
