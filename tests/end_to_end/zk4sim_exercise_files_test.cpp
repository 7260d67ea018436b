// What zk4sim --exercise and quorin-lesson mark read is not written over, and streams that take
// nothing.
#include "tests/end_to_end/zk4sim_exercise.h"

namespace {

TEST_F(Zk4simExercise, MarkWritesOverNothingThatItReads) {
    const std::string exercise = task(goal);
    ASSERT_EQ(run_task(exercise, {"--csv", file("a.csv"), "--exec", "true"}).status, 3);
    const std::string recording = bytes_of(file("a.csv"));
    const struct {
        std::vector<std::string> options;
        int status;
    } rows[] = {
        {{"--csv", file("a.csv")}, 1},
        {{"--pdf", file("a.csv")}, 1},
        {{"--csv", exercise}, 1},
        {{"--pdf", "-"}, 2},
        {{"--csv", "-"}, 2},
        {{"--csv", file("x"), "--pdf", file("x")}, 2},
        {{"--csv", file("x"), "--pdf", file("./x")}, 2},
        {{"--csv", ""}, 2},
        {{"--csv", file("no/where")}, 1},
    };
    for (const auto& [options, status] : rows) {
        std::vector<std::string> words = {built("quorin-lesson"), "mark", exercise, file("a.csv")};
        words.insert(words.end(), options.begin(), options.end());
        const outcome end = run_program(words);
        EXPECT_EQ(end.status, status) << options[0] << options[1] << end.err;
        EXPECT_EQ(lines_in(end.err), 1) << end.err;
        EXPECT_EQ(bytes_of(file("a.csv")), recording);
    }
    EXPECT_EQ(run_program({built("quorin-lesson"), "mark", exercise}).status, 2);
}

TEST_F(Zk4simExercise, AnErrorStreamThatTakesNothingCostsNoMark) {
    const std::string exercise = task(goal), none = file("none.csv");
    for (const std::string stream : {"2>&-", "2>/dev/full"}) {
        const outcome end = run_program({"sh", "-c",
                                         built("quorin-lesson") + " mark " + exercise + " " + none +
                                             " " + none + " " + stream});
        EXPECT_EQ(end.status, 3) << stream;
        EXPECT_EQ(end.out, none + "\trefuse\t\t\t\n" + none + "\trefuse\t\t\t\n") << stream;
    }
}

TEST_F(Zk4simExercise, NothingIsRecordedOverWhatIsRead) {
    const std::string exercise = task(goal), names = file("names");
    write_bytes(names, "in\n\nout\n");
    std::filesystem::create_symlink(exercise, file("link"));
    const std::vector<std::string> rows[] = {
        {"--exercise", exercise, "--csv", exercise},
        {"--exercise", exercise, "--vcd", file("link")},
        {"--exercise", file("link"), "--csv", file("./a.toml")},
        {"--manual", "--names", names, "--csv", names},
    };
    const std::string before = bytes_of(exercise), names_before = bytes_of(names);
    for (std::vector<std::string> words : rows) {
        const std::string refused = words.back() + ": ce fichier est lu, il reste comme il est\n";
        words.insert(words.end(), {"--headless", "--exec", "true"});
        const outcome end = run_zk4sim(words);
        EXPECT_EQ(end.status, 1) << refused;
        EXPECT_EQ(end.out, "") << refused;
        EXPECT_EQ(end.err, "zk4sim: " + refused);
        EXPECT_EQ(bytes_of(exercise), before);
        EXPECT_EQ(bytes_of(names), names_before);
    }
}

}  // namespace
