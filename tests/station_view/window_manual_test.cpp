// A station whose inputs are set by hand: the simulator's two panels beside the segment.
#include <gtest/gtest.h>
#include <sys/resource.h>

#include "tests/station_view/window_on_display.h"
#include "tests/support/sanitizers.h"

namespace {

constexpr int height = window_layout::height;
constexpr char by_hand[] = "a la main";

class ManualOnDisplay : public WindowOnDisplay {
protected:
    void click_at(int x, int y) { display.click(window, x, y); }
    /// The "Signal" box of an input, from 0; its lists show 16 pixels a line or so.
    void tick_signal(int input) { click_at(22, 40 + 17 * input); }
    void go() { click_at(210, height - 20); }
    void init() { click_at(40, height - 20); }
    void quit() { click_at(360, height - 20); }
};

TEST_F(ManualOnDisplay, SetsInputsByNamesOfAFileAndShowsOutputs) {
    const temporary_folder names;
    write_bytes(names / "names", "poussoir\ncapteur 2\n\nMOTEUR\n@F9999 L\n");
    start({"--title", by_hand, "--manual", "--names", (names / "names").string(), "--no-panel"},
          by_hand);
    tick_signal(1);
    EXPECT_EQ(live->value("capteur 2"), "0") << "not before GO";
    go();
    EXPECT_TRUE(becomes("capteur 2", "1"));
    EXPECT_EQ(live->value("poussoir"), "0");
    go();
    EXPECT_TRUE(becomes("capteur 2", "0")) << "a signal that is not sticky is sent once";
    const window_layout::area outputs = {400, 20, 240, height - 60};
    const auto before = pixels(outputs);
    ASSERT_EQ(live->io({"set", "MOTEUR=1"}).status, 0);
    EXPECT_TRUE(wait_until([&] { return pixels(outputs) != before; }, seconds(5)));
    quit();
    expect_end("fenêtre fermée");
}

TEST_F(ManualOnDisplay, ItsNamesAreTheZk4StationsAndThePanelShowsThem) {
    start({"--title", by_hand, "--manual"}, by_hand);
    tick_signal(0);
    go();
    EXPECT_TRUE(panel_shows("b1e", red));
    init();
    EXPECT_TRUE(panel_shows("b1e", blue));
    EXPECT_EQ(live->told("station"), "manuel");
    display.close(panel);
    expect_end("panneau fermé");
}

TEST_F(ManualOnDisplay, ItsTitleTellsThatTheDiskIsFull) {
    const struct {
        std::vector<std::string> options;
        std::string words;
    } cases[] = {{{}, "fichier trop grand; la suite n'est pas enregistrée"},
                 {{"--english"}, "file too large; the rest is not recorded"}};
    for (const auto& [more, words] : cases) {
        const temporary_folder files;
        std::vector<std::string> options = {"--title",    by_hand, "--manual",
                                            "--no-panel", "--csv", files / "a.csv"};
        options.insert(options.end(), more.begin(), more.end());
        start(options, by_hand);
        const rlimit no_more = {300, 300};
        ASSERT_EQ(prlimit(live->process->id(), RLIMIT_FSIZE, &no_more, nullptr), 0);
        ASSERT_EQ(live->io({"set", "MT=1"}).status, 0);
        const std::string told = (files / "a.csv").string() + ": " + words;
        EXPECT_TRUE(wait_until([&] { return display.title(window) == told; }, seconds(10)))
            << display.title(window);
        EXPECT_NE(live->process->err().find("a.csv: fichier trop grand; la suite n'est pas "
                                            "enregistrée\n"),
                  std::string::npos)
            << "the error stream is French: " << live->process->err();
        display.key(XK_p);
        EXPECT_TRUE(told_becomes("etat", "pause"));
        EXPECT_EQ(display.title(window), told) << "it stays true";
        quit();
        expect_end("fenêtre fermée");
    }
}

TEST_F(ManualOnDisplay, ItsTitleTellsWhatCannotBeOpenedUntilTheNextAction) {
    if (address_sanitizer) GTEST_SKIP() << "it needs descriptors of its own";
    start({"--title", by_hand, "--manual", "--no-panel", "--english"}, by_hand);
    rlimit files{};
    ASSERT_EQ(prlimit(live->process->id(), RLIMIT_NOFILE, nullptr, &files), 0);
    const rlimit none = {3, files.rlim_max};
    const auto limit = [&](const rlimit& now) {
        ASSERT_EQ(prlimit(live->process->id(), RLIMIT_NOFILE, &now, nullptr), 0);
    };
    const auto title_is = [&](const std::string& title) {
        return wait_until([&] { return display.title(window) == title; }, seconds(10));
    };
    limit(none);
    display.key(XK_j);
    EXPECT_TRUE(title_is("journal: too many open files")) << display.title(window);
    display.key(XK_p);
    EXPECT_TRUE(title_is(by_hand)) << display.title(window) << " by the next action";
    display.key(XK_j);
    EXPECT_TRUE(title_is("journal: too many open files")) << display.title(window);
    limit(files);
    display.key(XK_j);
    EXPECT_TRUE(title_is(by_hand)) << display.title(window) << " by the next success";
    EXPECT_TRUE(told_becomes("etat", "pause"));
    end();
}

TEST_F(ManualOnDisplay, TakesFaultsAndAPause) {
    start({"--title", by_hand, "--manual", "--no-panel"}, by_hand);
    display.key(XK_p);
    EXPECT_TRUE(told_becomes("etat", "pause"));
    tick_signal(0);
    go();
    EXPECT_EQ(live->value("b1e"), "0");
    display.key(XK_p);
    EXPECT_TRUE(becomes("b1e", "1"));
    live->ask("fault b1e=stuck0");
    EXPECT_TRUE(becomes("b1e", "0"));
    end();
}

TEST_F(ManualOnDisplay, AnActuatorsRowHasItsOwnKindsWhateverTheInputsAreCalled) {
    const temporary_folder names;
    write_bytes(names / "names", "\xEF\xBB\xBFX\n\nX\nY\n");
    start({"--title", by_hand, "--manual", "--names", (names / "names").string(), "--no-panel"},
          by_hand);
    constexpr int left = window_layout::desk_title.x - 8 - window_layout::panels_width;
    const int x = window_layout::faults.x - left + 8 + 96 + 10, y = window_layout::faults.y + 2;
    click_at(x, y + 20 + 10);
    EXPECT_TRUE(told_becomes("pannes", "X=stuck0")) << live->told("pannes");
    // Below two heads, the input's row, the gap and the row of the output X.
    click_at(x, y + 4 * 20 + 8 + 10);
    EXPECT_TRUE(told_becomes("pannes", "X=stuck0 Y=dead")) << live->told("pannes");
    end();
}

}  // namespace
