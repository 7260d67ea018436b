// The exercises that come with the programs.
#include "lesson/bundled_exercises.h"

#include "lesson/exercise_text.h"
#include "tests/lesson/exercise_texts.h"
#include "tests/support/files.h"

namespace {

/// QUORIN_EXERCICES while the object lives.
class named_folder {
public:
    explicit named_folder(const std::string& folder) {
        setenv("QUORIN_EXERCICES", folder.c_str(), 1);
    }
    ~named_folder() { unsetenv("QUORIN_EXERCICES"); }
    named_folder(const named_folder&) = delete;
    named_folder& operator=(const named_folder&) = delete;
};

TEST(BundledExercises, AllAreExercisesInBothLanguages) {
    const std::vector<std::string> names = bundled_exercise_names();
    EXPECT_GE(names.size(), 3u);
    EXPECT_EQ(names.front(), "01_premiere_commande");
    for (const std::string& name : names) {
        const exercise read = read_exercise_file(bundled_exercise_file(name), workcell_model(0));
        EXPECT_NE(read.title.english, "") << name;
        EXPECT_NE(read.task.english, "") << name;
        EXPECT_TRUE(read.station.duration_ms) << name;
        for (const exercise_goal& each : read.goals) EXPECT_NE(each.text.english, "") << name;
        for (const exercise_ban& each : read.bans) EXPECT_NE(each.text.english, "") << name;
        for (const exercise_hint& each : read.hints) EXPECT_NE(each.text.english, "") << name;
        for (const exercise_balance& each : read.balances) EXPECT_NE(each.text.english, "") << name;
    }
}

TEST(BundledExercises, HiddenTheyAreTheSame) {
    for (const std::string& name : bundled_exercise_names()) {
        exercise read = read_exercise_file(bundled_exercise_file(name), workcell_model(0));
        exercise copy = exercise_in(hidden_exercise_text(read));
        copy.digest = read.digest;
        EXPECT_EQ(copy, read) << name;
    }
}

TEST(BundledExercises, AFileComesBeforeABundledNameOfItsKind) {
    const current_folder here;
    std::filesystem::create_directory("ours");
    write_bytes("ours/b.toml", "");
    write_bytes("ours/a.toml", "");
    write_bytes("ours/c.txt", "");
    write_bytes("here.toml", "");
    write_bytes("b", "");
    std::filesystem::create_directory("a");
    const named_folder named("ours");
    EXPECT_EQ(bundled_exercise_names(), (std::vector<std::string>{"a", "b"}));
    const struct {
        std::string word, file;
    } rows[] = {{"here.toml", "here.toml"},
                {"a", "ours/a.toml"},
                {"b", "b"},
                {"-", "-"},
                {"ours/a.toml", "ours/a.toml"}};
    for (const auto& [word, file] : rows) EXPECT_EQ(exercise_file_called(word), file);
    for (const char* const word :
         {"", "c", "a.toml", ".", "..", "../ours/a", "/ours/a", "here", "\x1B"})
        EXPECT_THROW((void)exercise_file_called(word), failure) << word;
}

TEST(BundledExercises, AFolderThatIsNotThereIsSaid) {
    const named_folder named("/none\n");
    try {
        (void)bundled_exercise_names();
        FAIL();
    } catch (const failure& why) {
        EXPECT_EQ(why.why, "/none\\x0A: fichier ou dossier introuvable");
    }
}

}  // namespace
