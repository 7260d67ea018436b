// A replay in the window: shown, taken to any moment by its slider, and staying at its end.
#include <filesystem>

#include "tests/station_view/window_on_display.h"

namespace {

class WindowReplay : public WindowOnDisplay {
protected:
    const temporary_folder files;
    const std::string recording = files / "a.csv", copy = files / "b.csv";

    void SetUp() override {
        ASSERT_EQ(run_zk4sim({"--headless", "--no-panel", "--speed", "100", "--duration", "60",
                              "--fault", "te=flicker", "--csv", recording})
                      .status,
                  0);
    }

    /// Clicks on the slider, where the moment is that share of the replay.
    void choose_moment(double share) {
        const area at = window_layout::moment;
        display.click(window, at.x + static_cast<int>(at.w * share), at.y + at.h / 2);
    }
    bool comes_between(double from_s, double to_s) {
        return wait_until(
            [&] {
                const double now_s = live->simulated_s();
                return now_s >= from_s && now_s <= to_s;
            },
            seconds(10));
    }
};

TEST_F(WindowReplay, BearsTheRecordingsTitleUnlessItIsGivenAnother) {
    const std::string titled = files / "titled.csv";
    ASSERT_EQ(run_zk4sim({"--headless", "--no-panel", "--speed", "100", "--duration", "1",
                          "--title", "poste 3", "--csv", titled})
                  .status,
              0);
    start({"--play", titled, "--no-panel"}, "poste 3");
    end();
    start({"--play", titled, "--no-panel", "--title", "relu"}, "relu");
    end();
}

TEST_F(WindowReplay, TheSliderTakesItToAnyMoment) {
    start({"--play", recording, "--no-panel", "--csv", copy});
    EXPECT_TRUE(comes_between(0.1, 10)) << "it runs at its pace";
    for (const double share : {0.5, 0.8, 0.2, 0.6, 0.1}) {
        choose_moment(share);
        EXPECT_TRUE(comes_between(60 * share - 5, 60 * share + 8)) << share;
        EXPECT_EQ(live->told("etat"), "marche") << share;
        EXPECT_EQ(live->told("incidents"), "0");
    }
    click(window_layout::pause);
    EXPECT_TRUE(told_becomes("etat", "pause"));
    choose_moment(0.7);
    EXPECT_TRUE(comes_between(37, 50));
    EXPECT_EQ(live->told("etat"), "pause") << "a pause stays one";
    click(window_layout::pause);
    EXPECT_TRUE(told_becomes("etat", "marche"));
    choose_moment(0.999);
    EXPECT_TRUE(told_becomes("secondes", "60.000"));
    EXPECT_TRUE(told_becomes("etat", "pause")) << "it stays at its end";
    EXPECT_TRUE(live->process->running());
    choose_moment(0.3);
    EXPECT_TRUE(comes_between(13, 30));
    EXPECT_EQ(live->told("etat"), "pause");
    click(window_layout::pause);
    choose_moment(0.999);
    EXPECT_TRUE(told_becomes("secondes", "60.000"));
    EXPECT_TRUE(told_becomes("etat", "pause"));
    display.close(window);
    EXPECT_EQ(live->process->wait(), 0) << live->process->err();
    EXPECT_EQ(bytes_of(copy), bytes_of(recording)) << "each event once";
}

TEST_F(WindowReplay, TheKeyOfTheFaultsBringsTheKeyboardToNoBoxThatTicks) {
    start({"--play", recording, "--no-panel", "--paused"});
    for (const x_key key : {XK_f, XK_space, XK_f, XK_Tab, XK_f, XK_space}) display.key(key);
    display.key(XK_j);
    ASSERT_NE(display.wait_for_window("Journal de la session : " +
                                      std::filesystem::current_path().string()),
              0u)
        << "all of them were heard";
    EXPECT_EQ(live->told("pannes"), "te=flicker");
    end();
}

TEST_F(WindowReplay, ItsFaultsScroll) {
    start({"--play", recording, "--no-panel", "--paused"});
    const area& list = window_layout::faults;
    const auto first = pixels(list);
    for (int turns = 0; turns < 30; ++turns)
        display.click(window, list.x + list.w / 2, list.y + list.h / 2, 5);
    EXPECT_TRUE(wait_until([&] { return pixels(list) != first; }, seconds(5)));
    end();
}

TEST_F(WindowReplay, ASessionHasNoSliderForItsTime) {
    start({"--no-panel"});
    EXPECT_TRUE(comes_between(0.5, 10));
    const double before_s = live->simulated_s();
    choose_moment(0.1);
    EXPECT_TRUE(wait_until([&] { return live->simulated_s() > before_s + 0.5; }));
    end();
}

}  // namespace
