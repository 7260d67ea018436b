// The session that ./run plays where there is no display.
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>

#include "tests/support/programs.h"

namespace {

namespace files = std::filesystem;

class ScriptedSession : public testing::Test {
protected:
    outcome play(const std::string& programs) {
        return run_program({QUORIN_SOURCE "/tools/scripted_session", programs, pictures}, {},
                           seconds(90));
    }
    void TearDown() override { files::remove_all(pictures); }

    leaves_nothing nothing_;
    const std::string pictures =
        files::temp_directory_path() / ("quorin_session_" + std::to_string(getpid()));
};

TEST_F(ScriptedSession, MakesOneGoodBaseATaleAndFivePictures) {
    const outcome end = play(QUORIN_PROGRAMS);
    EXPECT_EQ(end.status, 0) << end.out << end.err;
    EXPECT_EQ(end.err, "");
    EXPECT_NE(end.out.find("\nThe session is over: bilan: bonnes=1 mauvaises=0 incidents=0\n"),
              std::string::npos)
        << end.out;
    EXPECT_NE(end.out.find("\nScreenshots: " + pictures + "\n"), std::string::npos);
    EXPECT_GE(std::count(end.out.begin(), end.out.end(), '\n'), 20) << "a line for each step";
    for (const char* const name :
         {"1-start.png", "2-glue.png", "3-part.png", "4-press.png", "5-end.png"}) {
        std::error_code missing;
        EXPECT_GT(files::file_size(files::path(pictures) / name, missing), 1000u) << name;
    }
}

TEST_F(ScriptedSession, SaysThatItFailedWhenTheStationDoesNotCome) {
    const outcome end = play("/nowhere");
    EXPECT_EQ(end.status, 1);
    EXPECT_EQ(end.err.rfind("FAILED: the panel did not appear", 0), 0u) << end.err;
}

}  // namespace
