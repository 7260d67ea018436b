// The example on a real display, as its user has it: clicks on the left, lamps on the right.
#include <gtest/gtest.h>
#include <signal.h>

#include "tests/support/programs.h"
#include "tests/support/screen.h"

namespace {

const std::string example = built("echo_panels");

constexpr std::uint32_t yellow = 0xFFFF00, blue = 0x0000FF;

struct echo_panels : testing::Test {
    leaves_nothing check_at_the_end;
    screen display;
    program run{{example}};
    x_window window = 0;

    void SetUp() override {
        window = display.wait_for_window("echo_panels");
        ASSERT_NE(window, 0u) << run.err();
        ASSERT_TRUE(lights(0, yellow)) << "a lamp without a command stayed " << lamp(0);
    }

    std::uint32_t lamp(int row) { return display.pixel(window, 412, 40 + 17 * row); }
    bool lights(int row, std::uint32_t colour) {
        return wait_until([&] { return lamp(row) == colour; });
    }
    void click(int x, int y) { display.click(window, x, y); }
    void click_signal(int item) { click(70, 32 + 16 * (item - 1) + 8); }
    void click_sticky(int item) { click(270, 32 + 16 * (item - 1) + 8); }
    void click_go() { click(210, 220); }
    void click_init() { click(40, 220); }
    void click_quit() { click(360, 220); }
};

TEST_F(echo_panels, LightsOnTheRightWhatIsSetOnTheLeft) {
    click_signal(1);
    click_signal(3);
    click_sticky(3);
    click_go();
    EXPECT_TRUE(lights(0, blue)) << lamp(0);
    EXPECT_TRUE(lights(2, blue)) << lamp(2);
    EXPECT_EQ(lamp(1), yellow);

    click_go();  // the sticky signal stays, the other was sent once
    EXPECT_TRUE(lights(0, yellow)) << lamp(0);
    EXPECT_EQ(lamp(2), blue);

    click_init();
    EXPECT_TRUE(lights(2, yellow)) << lamp(2);

    click_quit();
    EXPECT_EQ(run.wait(), 0);
}

TEST_F(echo_panels, PagesToTheLastOutput) {
    click_signal(10);
    click_sticky(10);
    click_go();
    click(560, 220);  // "+"
    EXPECT_TRUE(lights(0, blue)) << lamp(0);
    click(480, 220);  // "-"
    EXPECT_TRUE(lights(0, yellow)) << lamp(0);
    click_quit();
    EXPECT_EQ(run.wait(), 0);
}

TEST_F(echo_panels, EndsWhenItsWindowIsClosed) {
    display.close(window);
    EXPECT_EQ(run.wait(), 0);
}

TEST_F(echo_panels, LeavesNoSegmentAndNoChildWhenItIsKilled) {
    EXPECT_EQ(leftovers::processes().size(), 2u);
    EXPECT_EQ(leftovers::segments().size(), 1u);
    run.signal(SIGKILL);
    EXPECT_EQ(run.wait(), 128 + SIGKILL);
}

// The first segment of an IPC namespace, as of a
// machine, has the identifier 0, which clients refuse.
TEST(EchoPanels, WorksWhereNoSegmentWasEverMade) {
    const std::vector<std::string> apart = {"unshare", "--user", "--map-root-user", "--ipc"};
    const auto in_a_namespace = [&](const std::string& command) {
        std::vector<std::string> words = apart;
        words.push_back(command);
        return words;
    };
    if (run_program(in_a_namespace("true")).status != 0) GTEST_SKIP() << "no IPC namespace here";
    screen display;
    program run(in_a_namespace(example));
    const x_window window = display.wait_for_window("echo_panels");
    ASSERT_NE(window, 0u) << run.err();
    EXPECT_TRUE(wait_until([&] { return display.pixel(window, 412, 40) == yellow; }));
    display.click(window, 70, 40);
    display.click(window, 210, 220);
    EXPECT_TRUE(wait_until([&] { return display.pixel(window, 412, 40) == blue; }));
    display.click(window, 360, 220);
    EXPECT_EQ(run.wait(), 0);
    EXPECT_EQ(run.err(), "ident_mem=1\n");
}

TEST(EchoPanels, NeedsADisplay) {
    leaves_nothing check_at_the_end;
    const outcome run = run_program({example}, {"DISPLAY=:64999"});
    EXPECT_EQ(run.status, 1);
    EXPECT_NE(run.err.find("display"), std::string::npos) << run.err;
}

}  // namespace
