// The answer to an exercise's diagnosis as it is put together, without a display; and the words
// around it.
#include <gtest/gtest.h>

#include <set>

#include "lesson/judge.h"
#include "station_view/diagnosis_answer.h"
#include "station_view/exercise_words.h"
#include "station_view/signal_meanings.h"
#include "workcell/workcell_model.h"

namespace {

using texts = std::vector<std::string>;

constexpr language languages[] = {language::french, language::english};

TEST(DiagnosisAnswer, NamesThatCanBeFaultyWithTheKindsThatFit) {
    const workcell_model model(0);
    const texts names = names_to_choose(model);
    EXPECT_EQ(names.size(), model.inputs().size() + model.outputs().size());
    EXPECT_EQ(std::set<std::string>(names.begin(), names.end()).size(), names.size());
    for (const std::string& name : names) {
        EXPECT_FALSE(kinds_to_choose(name, model).empty()) << name;
        for (const fault_kind kind : kinds_to_choose(name, model))
            EXPECT_TRUE(fault_fits(name, kind, model)) << name;
        for (const language in : languages) EXPECT_NE(signal_meaning(name, in), "") << name;
    }
    EXPECT_EQ(kinds_to_choose("te", model).size(), 5u);
    EXPECT_EQ(kinds_to_choose("MT", model).size(), 2u);
    EXPECT_EQ(kinds_to_choose("DEPOSE", model).size(), 1u) << "it cannot be slow";
    EXPECT_TRUE(kinds_to_choose("nothing", model).empty());
    EXPECT_EQ(signal_meaning("nothing", language::french), "");
}

TEST(DiagnosisAnswer, HasOneFaultAName) {
    std::vector<station_fault> answer = faults_in("te=stuck0 b2s=stuck1 nothing x=y");
    EXPECT_EQ(answer_text(answer), "te=stuck0 b2s=stuck1");
    add_to(answer, {"te", fault_kind::late});
    add_to(answer, {"MT", fault_kind::dead});
    EXPECT_EQ(answer_text(answer), "te=late b2s=stuck1 MT=dead");
    EXPECT_TRUE(faults_in("").empty());
}

TEST(ExerciseWords, NoneIsEmpty) {
    for (int i = 0; i < static_cast<int>(exercise_word::count); ++i)
        for (const language in : languages)
            EXPECT_STRNE(text_of(static_cast<exercise_word>(i), in), "") << i;
}

}  // namespace
