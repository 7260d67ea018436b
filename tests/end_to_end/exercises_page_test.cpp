// The page of exercises: its file after each step, and its tables of keys.
#include <gtest/gtest.h>

#include <regex>
#include <set>

#include "lesson/exercise_file.h"
#include "tests/support/pages.h"
#include "workcell/workcell_model.h"

namespace {

exercise_problems problems_in(const std::string& text) {
    const auto read = read_exercise(text, workcell_model(0));
    const auto* const problems = std::get_if<exercise_problems>(&read);
    return problems ? *problems : exercise_problems();
}

TEST(ExercisesPage, HasAnExerciseAfterEveryStep) {
    const std::vector<std::string> steps = code_blocks(page("docs/exercises.md"), "toml");
    ASSERT_EQ(steps.size(), 7u);
    std::string file;
    for (const std::string& step : steps) {
        file += step;
        for (const exercise_problem& each : problems_in(file))
            ADD_FAILURE() << each.line << ": " << each.reason << "\n" << file;
    }
    const auto read = std::get<exercise>(read_exercise(file, workcell_model(0)));
    EXPECT_EQ(read.goals.size(), 2u);
    EXPECT_EQ(read.bans.size(), 1u);
    EXPECT_EQ(read.hints.size(), 1u);
    EXPECT_EQ(read.balances.size(), 1u);
    EXPECT_EQ(read.station.hidden_faults, read.diagnosis->faults);
    EXPECT_EQ(total_points(read), 1 + 2 + 1 + 5);
}

/// The keys that the reader itself names where it meets one that it does not know.
std::set<std::string> known_keys() {
    std::set<std::string> keys;
    const std::string text =
        "x = 1\n[station]\nx = 1\n[[but]]\nx = 1\n[[jamais]]\nx = 1\n[[indice]]\nx = 1\n"
        "[[bilan]]\nx = 1\n[diagnostic]\nx = 1\n";
    static const std::regex key("[a-z_]+");
    for (const exercise_problem& each : problems_in(text)) {
        const std::size_t list = each.reason.find("il y a ");
        if (list == std::string::npos) continue;
        const std::string names = each.reason.substr(list + 7);
        for (std::sregex_iterator name(names.begin(), names.end(), key), end; name != end; ++name)
            keys.insert(name->str());
    }
    return keys;
}

TEST(ExercisesPage, TellsEveryKey) {
    const std::string text = page("docs/exercises.md");
    const std::string keys = section(text, "Every key");
    EXPECT_EQ(known_keys().size(), 28u);
    for (const std::string& each : known_keys())
        EXPECT_TRUE(keys.find("`" + each + "`") != std::string::npos ||
                    keys.find("[" + each + "]") != std::string::npos)
            << each;
}

}  // namespace
