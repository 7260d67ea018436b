// quorin on a real display, started by a caller that closed some of its standard streams.
#include "tests/ioshare/test_segment.h"
#include "tests/support/screen.h"

namespace {

struct row {
    const char* closed;
    bool error_stream;  ///< Whether it is there.
};

constexpr row rows[] = {{"2>&-", false},     {">&-", true},          {"<&-", true},
                        {">&- 2>&-", false}, {"<&- 2>&-", false},    {"<&- >&-", true},
                        {"", true},          {"<&- >&- 2>&-", false}};

constexpr std::uint32_t red = 0xFF0000;

/// An option that the toolkit takes, and what it says of it once the display is open: a report that
/// must not go there.
constexpr char reported_option[] = " -bg nosuchcolour ";
constexpr char reported[] = "\nUnknown color: nosuchcolour\n";

/// Shows an input, writes an output, and ends with its window.
void expect_to_work(screen& display, test_server& server, program& panel) {
    const x_window window = display.wait_for_window("quorin", seconds(15));
    ASSERT_NE(window, 0u);
    server->setreset_input(0, 1);
    server->inputs_go();
    EXPECT_TRUE(wait_until([&] { return display.pixel(window, 395, 14) == red; }));
    display.click(window, 240, 20);
    EXPECT_TRUE(wait_until([&] { return server->output_value(0) == 1; }));
    display.close(window);
    EXPECT_EQ(panel.wait(seconds(15)), 0);
}

TEST(PanelStreams, ThePanelWorksWhicheverAreClosed) {
    const leaves_nothing nothing;
    screen display;
    for (const auto& [closed, error_stream] : rows) {
        SCOPED_TRACE(closed);
        display.retire_window_ids();
        test_server server({"te"}, {"RENT"});
        const std::string ident = std::to_string(server->memory_ident());
        program panel(
            {"sh", "-c",
             "exec " + built("quorin") + " -automemlink " + ident + reported_option + closed});
        expect_to_work(display, server, panel);
        EXPECT_EQ(panel.out(), "");
        EXPECT_EQ(panel.err(), error_stream ? "ident_mem=" + ident + reported : "");
    }
}

TEST(PanelStreams, AnErrorStreamWhoseFileMayNotGrowDoesNotEndThePanel) {
    const leaves_nothing nothing;
    const temporary_folder files;
    screen display;
    test_server server({"te"}, {"RENT"});
    program panel({"sh", "-c",
                   "ulimit -f 0; exec " + built("quorin") + " -automemlink " +
                       std::to_string(server->memory_ident()) + " 2>" + (files / "full").string()});
    expect_to_work(display, server, panel);
}

TEST(PanelStreams, ItsStatusIsWhatItIsWithAllOfThem) {
    const struct {
        const char* words;
        int status;
    } commands[] = {{"-h", 0}, {"", 1}, {"-automemlink 0", 1}, {"-automemlink 2147483647", 1}};
    for (const auto& [words, status] : commands) {
        for (const row& each : rows) {
            const outcome end = run_program(
                {"sh", "-c", "exec " + built("quorin") + " " + words + " " + each.closed});
            EXPECT_EQ(end.status, status) << words << each.closed;
        }
    }
}

}  // namespace
