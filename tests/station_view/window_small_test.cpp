// A window that is low and narrow: desk and faults share a column, and one of them is seen.
#include <gtest/gtest.h>

#include "tests/station_view/window_on_display.h"

namespace {

namespace layout = window_layout;

constexpr int w = 1000, h = 300;

class SmallWindow : public WindowOnDisplay {
protected:
    void start_small(const std::vector<std::string>& options = {"--no-panel"}) {
        start(options);
        make_small();
    }
    void make_small() {
        const area& at = layout::emergency;
        plate_ = display.pixel(window, at.x + 3, at.y + at.h - 3);
        resize(w, h);
    }
    void resize(int to_w, int to_h) {
        ASSERT_TRUE(display.resize(window, to_w, to_h));
        wait_until([] { return false; }, seconds(0.4));
    }

    /// Where a part of the desk's column is in the small window.
    static area in_column(const area& at) {
        const area column = layout::arranged(w, h).middle;
        const int own_x = layout::desk_title.x - 8, own_w = layout::faults_title.x - 4 - own_x;
        return {column.x + (at.x - own_x) * column.w / own_w, at.y * column.h / layout::height,
                at.w * column.w / own_w, at.h * column.h / layout::height};
    }
    /// The same for what stands with the faults, whose texts keep their size.
    static area with_faults(const area& at) {
        return {layout::arranged(w, h).faults.x + at.x - (layout::faults_title.x - 4), at.y, at.w,
                at.h};
    }
    /// The box of the first sensor's first kind.
    static area first_box() { return with_faults(fault_box(0, 0)); }

    /// Whether the plate of the emergency stop is there.
    bool desk_is_seen() {
        const area at = in_column(layout::emergency);
        return display.pixel(window, at.x + 4, at.y + at.h - 4) == plate_;
    }
    /// Whether the frame of their list is there.
    bool faults_are_seen() {
        const area list = with_faults(layout::faults);
        return !desk_is_seen() && display.pixel(window, list.x, h / 2) == 0x000000 &&
               display.pixel(window, list.x + 2, h / 2) != 0x000000;
    }
    bool desk_comes() {
        return wait_until([&] { return desk_is_seen() && !faults_are_seen(); });
    }
    bool faults_come() {
        return wait_until([&] { return faults_are_seen(); });
    }
    void rest() {
        wait_until([] { return false; }, seconds(0.3));
    }
    /// Looks for a second, long enough for some twenty repeats of a key that is held.
    bool stays(const std::string& name, const std::string& value) {
        return !wait_until([&] { return live->told(name) != value; }, seconds(1));
    }

private:
    std::uint32_t plate_ = 0;
};

TEST_F(SmallWindow, TheKeyBringsTheFaultsAndTheDeskBackAndTheKeyboardGoesAlong) {
    start_small();
    EXPECT_TRUE(desk_comes());
    display.key(XK_f);
    EXPECT_TRUE(faults_come());
    display.key(XK_space);
    EXPECT_TRUE(told_becomes("pannes", "b1e=stuck0")) << "the list has the keyboard";
    display.key(XK_f);
    EXPECT_TRUE(desk_comes());
    display.key(XK_space);
    EXPECT_TRUE(faults_come()) << "the column's button has the keyboard";
    EXPECT_EQ(live->told("pannes"), "b1e=stuck0") << "no box that is not seen is ticked";
    display.key(XK_space);
    EXPECT_TRUE(told_becomes("pannes", "")) << "the list has the keyboard again";
    display.key(XK_Tab, XK_Shift_L);
    display.key(XK_space);
    EXPECT_TRUE(desk_comes()) << "before the list's first box is the button";
    end();
}

TEST_F(SmallWindow, TheButtonsDoTheSameByTheMouse) {
    start_small();
    click(in_column(layout::to_faults));
    EXPECT_TRUE(faults_come());
    click(first_box());
    EXPECT_TRUE(told_becomes("pannes", "b1e=stuck0"));
    click(with_faults(layout::to_desk));
    EXPECT_TRUE(desk_comes());
    click(in_column(layout::pause));
    EXPECT_TRUE(told_becomes("etat", "pause")) << "the desk's buttons work";
    EXPECT_EQ(live->told("pannes"), "b1e=stuck0");
    end();
}

TEST_F(SmallWindow, TheDesksKeysWorkWhileTheFaultsAreSeen) {
    start_small();
    display.key(XK_f);
    EXPECT_TRUE(faults_come());
    display.key(XK_Escape);
    EXPECT_TRUE(becomes("atu", "1"));
    display.key(XK_Escape, XK_Shift_L);
    EXPECT_TRUE(becomes("atu", "0"));
    display.hold_key(XK_d, true);
    EXPECT_TRUE(becomes("dc", "1"));
    display.hold_key(XK_d, false);
    EXPECT_TRUE(becomes("dc", "0"));
    EXPECT_TRUE(faults_are_seen());
    end();
}

TEST_F(SmallWindow, AButtonThatIsHeldIsLetGoWhenTheFaultsCome) {
    start_small();
    click(in_column(layout::start_cycle));
    display.hold_key(XK_space, true);
    EXPECT_TRUE(becomes("dc", "1"));
    display.key(XK_f);
    EXPECT_TRUE(faults_come());
    EXPECT_TRUE(becomes("dc", "0"));
    display.hold_key(XK_space, false);
    EXPECT_EQ(live->told("pannes"), "");
    end();
}

TEST_F(SmallWindow, ASpaceBarThatIsHeldPressesOnce) {
    start_small();
    display.key(XK_f);
    EXPECT_TRUE(faults_come());
    display.key(XK_f);
    EXPECT_TRUE(desk_comes());
    display.hold_key(XK_space, true);
    EXPECT_TRUE(faults_come());
    EXPECT_TRUE(stays("pannes", "")) << "the box that got the keyboard meanwhile is not ticked";
    display.hold_key(XK_space, false);
    display.hold_key(XK_space, true);
    EXPECT_TRUE(told_becomes("pannes", "b1e=stuck0"));
    EXPECT_TRUE(stays("pannes", "b1e=stuck0"));
    display.hold_key(XK_space, false);
    display.key(XK_f);
    EXPECT_TRUE(desk_comes());
    click(in_column(layout::pause));
    EXPECT_TRUE(told_becomes("etat", "pause"));
    display.hold_key(XK_space, true);
    EXPECT_TRUE(told_becomes("etat", "marche"));
    EXPECT_TRUE(stays("etat", "marche"));
    display.hold_key(XK_space, false);
    end();
}

TEST_F(SmallWindow, ASpaceBarThatIsHeldMakesStepAfterStep) {
    start_small({"--no-panel", "--paused"});
    click(in_column(layout::step));
    rest();
    const double before_s = live->simulated_s();
    display.hold_key(XK_space, true);
    EXPECT_TRUE(wait_until([&] { return live->simulated_s() > before_s + 0.1; }, seconds(5)));
    display.hold_key(XK_space, false);
    end();
}

TEST_F(SmallWindow, TheCountOfTheFaultsLeavesTheButtonBesideIt) {
    start_small();
    display.key(XK_f);
    EXPECT_TRUE(faults_come());
    rest();
    const auto button = pixels(with_faults(layout::to_desk), 1);
    for (const char* const faults : {"b1e=stuck0", "", "b1e=stuck0"}) {
        display.key(XK_space);
        EXPECT_TRUE(told_becomes("pannes", faults));
        rest();
        EXPECT_EQ(pixels(with_faults(layout::to_desk), 1), button) << faults;
    }
    end();
}

TEST_F(SmallWindow, TabGoesRoundBothWays) {
    start_small();
    const area& list = layout::arranged(w, h).incidents;
    for (int i = 1; i <= 4; ++i) {
        live->io({"set", "DEPOSE=1"});
        ASSERT_TRUE(told_becomes("incidents", std::to_string(i)));
        live->io({"set", "DEPOSE=0"});
        rest();
    }
    display.key(XK_p);
    EXPECT_TRUE(told_becomes("etat", "pause"));
    rest();
    // Where the mark of the keyboard is: around the list, which comes first, and anywhere.
    const auto marks = [&] { return pixels({list.x, list.y - 1, 200, 6}, 1); };
    const auto unmarked = marks();
    for (const x_key back : {x_key{0}, x_key{XK_Shift_L}}) {
        int came_by = 0;
        bool was_there = false;
        for (int tabs = 0; tabs < 40; ++tabs) {
            display.key(XK_Tab, back);
            rest();
            const bool is_there = marks() != unmarked;
            came_by += is_there && !was_there;
            was_there = is_there;
        }
        EXPECT_GE(came_by, 2) << back;
    }
    end();
}

TEST_F(SmallWindow, OneThatGrowsHasItsThreeColumnsAgain) {
    start({"--no-panel"});
    const auto columns = [this] {
        return std::pair(pixels(layout::emergency, 5), pixels(layout::journal, 2));
    };
    const auto large = columns();
    make_small();
    for (const bool faults : {false, true}) {
        if (faults) {
            display.key(XK_f);
            EXPECT_TRUE(faults_come());
        }
        resize(layout::width, layout::height);
        EXPECT_TRUE(wait_until([&] { return columns() == large; })) << faults;
        click(fault_box(0, 0));
        EXPECT_TRUE(told_becomes("pannes", "b1e=stuck0")) << faults;
        click(fault_box(0, 0));
        EXPECT_TRUE(told_becomes("pannes", "")) << faults;
        resize(w, h);
        EXPECT_TRUE(desk_comes()) << "the emergency stop comes first";
    }
    end();
}

TEST_F(SmallWindow, TheDrawingAloneGoesBackToWhatWasSeen) {
    start_small();
    for (const bool faults : {false, true}) {
        if (faults) display.key(XK_f);
        EXPECT_TRUE(faults ? faults_come() : desk_comes());
        display.key(XK_g);
        EXPECT_TRUE(wait_until([&] { return !faults_are_seen() && !desk_is_seen(); })) << faults;
        display.key(XK_g);
        EXPECT_TRUE(faults ? faults_come() : desk_comes());
    }
    display.key(XK_space);
    EXPECT_TRUE(desk_comes()) << "the desk's button has the keyboard, no box that ticks";
    EXPECT_EQ(live->told("pannes"), "");
    display.key(XK_g);
    EXPECT_TRUE(wait_until([&] { return !desk_is_seen(); }));
    display.key(XK_f);
    EXPECT_TRUE(faults_come()) << "whoever asks for the faults sees them";
    display.key(XK_space);
    EXPECT_TRUE(told_becomes("pannes", "b1e=stuck0"));
    end();
}

TEST_F(SmallWindow, AReplaysFaultsAreSeenAndStayAsTheyAre) {
    const temporary_folder files;
    const std::string recording = files / "a.csv";
    ASSERT_EQ(run_zk4sim({"--headless", "--no-panel", "--speed", "100", "--duration", "20", "--csv",
                          recording})
                  .status,
              0);
    start_small({"--no-panel", "--play", recording, "--paused"});
    const auto desk_goes = [this] { return wait_until([&] { return !desk_is_seen(); }); };
    display.key(XK_f);
    EXPECT_TRUE(desk_goes());
    click(first_box());
    wait_until([] { return false; }, seconds(0.3));
    EXPECT_EQ(live->told("pannes"), "");
    display.key(XK_space);
    EXPECT_TRUE(desk_comes()) << "the button has the keyboard, no box that ticks";
    EXPECT_EQ(live->told("pannes"), "");
    display.key(XK_f);
    EXPECT_TRUE(desk_goes());
    display.key(XK_f);
    EXPECT_TRUE(desk_comes());
    end();
}

}  // namespace
