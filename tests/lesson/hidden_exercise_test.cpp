// Hidden copies: the same exercise, and nothing to read of what is hidden.
#include <random>

#include "lesson/exercise_text.h"
#include "lesson/hidden_part.h"
#include "tests/lesson/exercise_texts.h"

namespace {

/// The same exercise but for its digest.
exercise without_digest(exercise what) {
    what.digest.clear();
    return what;
}

std::string hidden_copy(const std::string& text) { return hidden_exercise_text(exercise_in(text)); }

const std::string hidden_fault = whole + "[station]\npannes_cachees = [\"b2s=stuck1\"]\n";
const std::string diagnosis = begun + "[diagnostic]\npannes = [\"vide=flicker\"]\npoints = 0\n";

const std::string awkward =
    "format = 1\ntitre = 'a \"b\" \\c'\ntitre_en = \"\xC3\xA9\"\n"
    "enonce = \"\"\"\n\n  a\t\\\\ \\\"\\\"\\\" ''' \n# no comment\n[x]\n\n\"\"\"\n"
    "[station]\nduree_s = 1e9\n[[but]]\ntexte = \"\\\\\"\nquand = [\"MT=-7\", \"dc=1\"]\n"
    "tenir_s = 0.001\navant_s = 0\npoints = 0\n";

const std::string samples[] = {whole, every_key, hidden_fault, diagnosis, awkward};

TEST(HiddenExercise, ReadsAsTheSameExercise) {
    for (const std::string& text : samples) {
        const std::string copy = hidden_copy(text);
        EXPECT_EQ(without_digest(exercise_in(copy)), without_digest(exercise_in(text))) << copy;
    }
}

TEST(HiddenExercise, ItsOwnCopyIsTheSameFile) {
    for (const std::string& text : samples) {
        const std::string copy = hidden_copy(text);
        EXPECT_EQ(hidden_copy(copy), copy);
    }
}

TEST(HiddenExercise, NothingHiddenCanBeRead) {
    for (const char* const word : {"b2s", "stuck1", "pannes_cachees", "diagnostic"})
        EXPECT_EQ(hidden_copy(hidden_fault).find(word), std::string::npos) << word;
    for (const char* const word : {"vide", "flicker", "diagnostic", "points"})
        EXPECT_EQ(hidden_copy(diagnosis).find(word), std::string::npos) << word;
    const std::string copy = hidden_copy(every_key);
    for (const char* const word : {"b2s", "stuck1", "DEPOSE", "dead", "#", "diagnostic"})
        EXPECT_EQ(copy.find(word), std::string::npos) << word;
    for (const char* const word : {"te=stuck0", "BZ2=slow", "MTA est rest\xC3\xA9 \xC3\xA0 1"})
        EXPECT_NE(copy.find(word), std::string::npos) << word;
}

TEST(HiddenExercise, WithNothingToHideThereIsNoCache) {
    EXPECT_EQ(hidden_copy(whole).find("cache"), std::string::npos);
}

/// Where the digits of a hidden copy begin and end.
std::pair<std::size_t, std::size_t> digits_of(const std::string& copy) {
    const std::size_t begin = copy.find("cache = \"") + 9;
    return {begin, copy.find('"', begin)};
}

TEST(HiddenExercise, ADamagedCacheIsOneProblem) {
    const std::string copy = hidden_copy(every_key);
    const auto [begin, end] = digits_of(copy);
    const auto line = 1 + std::count(copy.begin(), copy.begin() + static_cast<long>(begin), '\n');
    const std::vector<std::string> told = {
        std::to_string(line) + ": cache: abîmée: quorin-lesson hide l'a écrite autrement"};
    for (std::size_t at = begin; at < end; ++at) {
        std::string changed = copy;
        changed[at] = changed[at] == '9' ? '0' : static_cast<char>(changed[at] + 1);
        ASSERT_EQ(problems_in(changed), told) << at;
        ASSERT_EQ(problems_in(copy.substr(0, at) + copy.substr(end)), told) << at;
    }
    for (const std::string digits : {"", "0", "12", "abc", "-12", "+12", "\xC3\xA9", "256"})
        EXPECT_EQ(problems_in(copy.substr(0, begin) + digits + copy.substr(end)), told) << digits;
    EXPECT_EQ(problems_in(copy.substr(0, end) + "000" + copy.substr(end)), told);
}

TEST(HiddenExercise, WhatIsHiddenMustFit) {
    const auto with = [](const std::string& hidden, const std::string& more) {
        return begun + "cache = \"" + hidden_part(hidden) + "\"\n" + goal + more;
    };
    const std::string fault = "[station]\npannes_cachees = [\"te=late\"]\n";
    const std::string twice = "4: cache: elle tient lieu de pannes_cachees et de diagnostic";
    const std::string misfit = "4: cache: ce qu'elle cache ne va pas à cette station";
    const std::string damaged = "4: cache: abîmée: quorin-lesson hide l'a écrite autrement";
    const struct {
        std::string text;
        std::vector<std::string> told;
    } rows[] = {
        {with(fault, ""), {}},
        {with("", ""), {}},
        {with(fault, "[station]\npannes = [\"te=late\"]\n"),
         {"4: cache: une panne cachée est aussi dans pannes"}},
        {with(fault, "[station]\npannes_cachees = [\"ts=late\"]\n"), {twice}},
        {with(fault, "[diagnostic]\npannes = [\"ts=late\"]\n"), {twice}},
        {with("[station]\npannes_cachees = [\"zz=late\"]\n", ""), {misfit}},
        {with("[station]\ngraine = 3\n", ""), {misfit}},
        {with("titre = \"T\"\n", ""), {misfit}},
        {with("[diagnostic]\n", ""), {misfit}},
        {with("[station\n", ""), {damaged}},
        {begun + "cache = 3\n" + goal, {damaged}},
    };
    for (const auto& [text, told] : rows) EXPECT_EQ(problems_in(text), told) << text;
}

TEST(HiddenPart, IsDigitsThatGiveTheTextBack) {
    std::mt19937 chance(11);
    for (std::size_t length = 0; length < 200; ++length) {
        std::string text;
        for (std::size_t i = 0; i < length; ++i) text += static_cast<char>(chance());
        const std::string digits = hidden_part(text);
        EXPECT_EQ(digits.find_first_not_of("0123456789"), std::string::npos);
        EXPECT_EQ(shown_part(digits), text);
    }
    EXPECT_NE(hidden_part("a").substr(24), hidden_part("b").substr(24));
}

}  // namespace
