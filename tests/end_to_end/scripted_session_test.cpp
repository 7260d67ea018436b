// The session that ./run plays where there is no display.
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>

#include "tests/support/programs.h"

namespace {

namespace files = std::filesystem;

// Whether a screenshot has a colour: "#C0C0C0".
bool has_colour(const std::string& picture, const std::string& colour) {
    const outcome counted =
        run_program({"convert", picture, "-depth", "8", "-format", "%c", "histogram:info:-"});
    EXPECT_EQ(counted.status, 0) << counted.err;
    return counted.out.find(colour) != std::string::npos;
}

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

// The station's window is gone by the end, while the panel tells that the session is over.
TEST_F(ScriptedSession, ShowsTheStationAndThePanel) {
    const outcome end = play(QUORIN_PROGRAMS);
    ASSERT_EQ(end.status, 0) << end.out << end.err;
    const std::string panel = "#C0C0C0", station = "#F3F4F6";  // what their widgets stand on
    const struct {
        std::string picture;
        bool shows_station;
    } cases[] = {{"1-start.png", true},
                 {"2-glue.png", true},
                 {"3-part.png", true},
                 {"4-press.png", true},
                 {"5-end.png", false}};
    for (const auto& [picture, shows_station] : cases) {
        EXPECT_TRUE(has_colour(pictures + "/" + picture, panel)) << picture;
        EXPECT_EQ(has_colour(pictures + "/" + picture, station), shows_station) << picture;
    }
}

TEST_F(ScriptedSession, SaysThatItFailedWhenTheStationDoesNotCome) {
    const outcome end = play("/nowhere");
    EXPECT_EQ(end.status, 1);
    EXPECT_EQ(end.err.rfind("FAILED: the panel did not appear", 0), 0u) << end.err;
}

}  // namespace
