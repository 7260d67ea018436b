// The formats that a foreign line may bring into a browser.
#include "forms/browser_formats.h"

#include <gtest/gtest.h>

namespace {

struct example {
    std::string line, kept;
};

TEST(BrowserFormats, FontsBeyondTheToolkitsOwnAreTakenOut) {
    const example cases[] = {{"@F1000x", "x"},
                             {"@F16", ""},
                             {"@F-1x", "x"},
                             {"@F-100x", "x"},
                             {"@F +16x", "x"},
                             {"@F99999999999999999999x", "x"},
                             {"@F4294968296x", "x"},  // 1000, in the 32 bits that are kept
                             {"@b@F1000@C1x", "@b@C1x"},
                             {"@F1000@S99999999@F1x", "@F1x"},
                             {"@.@F1000", "@.@F1000"}};
    for (const auto& [line, kept] : cases) EXPECT_EQ(without_unsafe_formats(line), kept) << line;
}

TEST(BrowserFormats, SizesBeyondWhatADisplayTakesAreTakenOut) {
    const example cases[] = {
        {"@S2000x", "@S2000x"}, {"@S2001x", "x"}, {"@S99999999x", "x"}, {"@f@S70000 x", "@f x"}};
    for (const auto& [line, kept] : cases) EXPECT_EQ(without_unsafe_formats(line), kept) << line;
}

TEST(BrowserFormats, EverythingElseStays) {
    for (const std::string line : {"",
                                   "x",
                                   "@",
                                   "@@",
                                   "@@F1000",
                                   "@.",
                                   "@.@F1000",
                                   "x@F1000",
                                   " @F1000",
                                   "@F",
                                   "@F15x",
                                   "@F0x",
                                   "@Fx",
                                   "@S",
                                   "@S0",
                                   "@S-5x",
                                   "@S14 x",
                                   "@C999999999x",
                                   "@B-1x",
                                   "@b@i@l@c@r@-@ux",
                                   "@C12@B3@F4@S20@.@F1000",
                                   "\xE9@F1000",
                                   "@\xE9",
                                   "@C",
                                   "@F@@"})
        EXPECT_EQ(without_unsafe_formats(line), line);
}

// The number that a format then finds behind it would be read as its own.
TEST(BrowserFormats, AFormatLeftWithANewNumberIsJudgedAgain) {
    const example cases[] = {{"@F@S99999 1000x", "x"},
                             {"@F@S99999 10x", "@F 10x"},
                             {"@S@F@F1000 99999 8888x", "x"},
                             {"@C@F1000 34x", "@C 34x"},
                             {"@C7@F1000 34x", "@C7 34x"}};
    for (const auto& [line, kept] : cases) EXPECT_EQ(without_unsafe_formats(line), kept) << line;
}

TEST(BrowserFormats, AMegabyteOfThemTakesNoTime) {
    std::string line;
    for (int i = 0; i < 150'000; ++i) line += "@F1000";
    EXPECT_EQ(without_unsafe_formats(line + "x"), "x");
}

}  // namespace
