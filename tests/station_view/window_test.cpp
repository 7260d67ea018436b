// The window's desk, its time and its end, by real clicks and keys on a running session.
#include <gtest/gtest.h>

#include "tests/station_view/window_on_display.h"

namespace {

namespace layout = window_layout;

TEST_F(WindowOnDisplay, StandsBesideThePanelAndCoversNothingOfIt) {
    start();
    const screen::place mine = display.area(window), its = display.area(panel);
    constexpr int title_bar = 20;
    EXPECT_GE(mine.x, 0);
    EXPECT_GE(mine.y, title_bar);
    EXPECT_LE(mine.x + mine.w, 1920);
    EXPECT_EQ(mine.h, layout::height);
    EXPECT_LE(mine.y + mine.h, its.y - title_bar) << "the panel is below";
    EXPECT_EQ(its.w, 1120);
    EXPECT_LE(its.y + its.h, 1080);
    end();
}

TEST_F(WindowOnDisplay, StartAndStopCountWhileTheyAreHeld) {
    const struct {
        area at;
        x_key key;
        const char* name;
    } cases[] = {{layout::start_cycle, XK_d, "dc"}, {layout::stop_cycle, XK_a, "ac"}};
    start();
    for (const auto& [at, key, name] : cases) {
        hold(at, true);
        EXPECT_TRUE(becomes(name, "1")) << name;
        EXPECT_TRUE(panel_shows(name, red)) << name;
        hold(at, false);
        EXPECT_TRUE(becomes(name, "0")) << name;
        EXPECT_TRUE(panel_shows(name, blue)) << name;
        take_keyboard();
        display.hold_key(key, true);
        EXPECT_TRUE(becomes(name, "1")) << name << " by its key";
        display.hold_key(key, false);
        EXPECT_TRUE(becomes(name, "0")) << name << " by its key";
    }
    end();
}

TEST_F(WindowOnDisplay, AButtonHeldByTheSpaceBarCountsToo) {
    start({"--no-panel"});
    click(layout::start_cycle);
    display.hold_key(XK_space, true);
    EXPECT_TRUE(becomes("dc", "1"));
    display.hold_key(XK_space, false);
    EXPECT_TRUE(becomes("dc", "0"));
    end();
}

TEST_F(WindowOnDisplay, OneStepTakesAPushHoweverShortItIs) {
    start({"--no-panel", "--paused"});
    const auto up = pixels(layout::start_cycle);
    click(layout::start_cycle);
    // The window manager looks at a click before the window does; a key goes straight to it.
    EXPECT_TRUE(wait_until([&] { return pixels(layout::start_cycle) != up; }));
    EXPECT_EQ(live->value("dc"), "0") << "no step was made";
    display.key(XK_s);
    EXPECT_TRUE(becomes("dc", "1"));
    display.key(XK_s);
    EXPECT_TRUE(becomes("dc", "0"));
    EXPECT_EQ(live->told("secondes"), "0.020");
    end();
}

TEST_F(WindowOnDisplay, AKeyThatIsHeldIsLetGoWithTheKeyboard) {
    start();
    display.hold_key(XK_d, true);
    EXPECT_TRUE(becomes("dc", "1"));
    display.give_focus(panel);
    EXPECT_TRUE(becomes("dc", "0"));
    display.hold_key(XK_d, false);
    end();
}

TEST_F(WindowOnDisplay, TheEmergencyStopStaysDownUntilItIsUnlocked) {
    start();
    for (const bool by_keys : {false, true}) {
        const auto press = [&] { by_keys ? display.key(XK_Escape) : click(layout::emergency); };
        const auto unlock = [&] {
            by_keys ? display.key(XK_Escape, XK_Shift_L) : click(layout::unlock);
        };
        press();
        EXPECT_TRUE(becomes("atu", "1")) << by_keys;
        EXPECT_TRUE(panel_shows("atu", red)) << by_keys;
        press();
        wait_until([] { return false; }, seconds(0.3));
        EXPECT_EQ(live->value("atu"), "1") << "another press lets nothing go";
        unlock();
        EXPECT_TRUE(becomes("atu", "0")) << by_keys;
    }
    EXPECT_TRUE(live->process->running()) << "Escape does not close the window";
    end();
}

TEST_F(WindowOnDisplay, AnEmergencyStopHoldsAMotionInItsMiddle) {
    start({"--speed", "0.1"});
    click_panel("DESV");
    ASSERT_TRUE(becomes("vh", "0")) << "it moves";
    click(layout::emergency);
    ASSERT_TRUE(becomes("atu", "1"));
    take_keyboard();
    for (int i = 0; i < 7; ++i) display.key(XK_plus, XK_Shift_L);
    EXPECT_TRUE(told_becomes("vitesse", "20"));
    wait_until([] { return false; }, seconds(0.5));
    EXPECT_EQ(live->value("vb"), "0") << "it stands between its ends";
    EXPECT_EQ(live->value("vh"), "0");
    click(layout::unlock);
    EXPECT_TRUE(becomes("vb", "1")) << "it goes on";
    end();
}

TEST_F(WindowOnDisplay, PausesAndGoesOnByButtonAndKey) {
    start({"--no-panel"});
    for (const bool by_key : {false, true}) {
        const auto press = [&] { by_key ? display.key(XK_p) : click(layout::pause); };
        press();
        EXPECT_TRUE(told_becomes("etat", "pause"));
        const std::string paused_at = live->told("secondes");
        wait_until([] { return false; }, seconds(0.2));
        EXPECT_EQ(live->told("secondes"), paused_at);
        press();
        EXPECT_TRUE(told_becomes("etat", "marche"));
    }
    end();
}

TEST_F(WindowOnDisplay, AHeldKeyPausesOnceAndStepsAgainAndAgain) {
    start({"--no-panel"});
    display.hold_key(XK_p, true);
    EXPECT_TRUE(told_becomes("etat", "pause"));
    EXPECT_FALSE(wait_until([&] { return live->told("etat") != "pause"; }, seconds(1.5)));
    display.hold_key(XK_p, false);
    display.key(XK_p);
    EXPECT_TRUE(told_becomes("etat", "marche")) << "pressed again";
    display.key(XK_p);
    EXPECT_TRUE(told_becomes("etat", "pause"));
    const double then_s = live->simulated_s();
    display.hold_key(XK_s, true);
    EXPECT_TRUE(wait_until([&] { return live->simulated_s() > then_s + 0.025; }));
    display.hold_key(XK_s, false);
    end();
}

TEST_F(WindowOnDisplay, MakesSingleSteps) {
    start({"--no-panel", "--paused"});
    click(layout::step);
    EXPECT_TRUE(told_becomes("secondes", "0.010"));
    display.key(XK_s);
    EXPECT_TRUE(told_becomes("secondes", "0.020"));
    EXPECT_EQ(live->told("etat"), "pause");
    end();
}

TEST_F(WindowOnDisplay, GoesOnToTheNextChange) {
    start({"--no-panel", "--paused", "--parts", "0"});
    live->io({"set", "BZ1=1"});
    click(layout::next_change);
    EXPECT_TRUE(told_becomes("secondes", "0.010")) << "the command is taken";
    display.key(XK_c);
    // A stroke of 0.3 s; its sensor is 1 within 2 % of its end.
    EXPECT_TRUE(told_becomes("secondes", "0.300"));
    EXPECT_EQ(live->value("b1s"), "1");
    display.key(XK_c);
    EXPECT_TRUE(told_becomes("secondes", "60.300"))
        << live->told("secondes") << ": nothing changes any more";
    end();
}

TEST_F(WindowOnDisplay, ChangesItsSpeedFromATenthToAHundred) {
    start({"--no-panel"});
    for (const char* const speed : {"2", "5", "10", "20", "50", "100", "100"}) {
        display.key(XK_plus, XK_Shift_L);
        EXPECT_TRUE(told_becomes("vitesse", speed)) << live->told("vitesse");
    }
    for (const char* const speed : {"50", "20", "10", "5", "2", "1", "0.5", "0.2", "0.1", "0.1"}) {
        click(layout::slower);
        EXPECT_TRUE(told_becomes("vitesse", speed)) << live->told("vitesse");
    }
    click(layout::faster);
    EXPECT_TRUE(told_becomes("vitesse", "0.2"));
    display.click(window, layout::speed.x + layout::speed.w - 2,
                  layout::speed.y + layout::speed.h / 2);
    EXPECT_TRUE(wait_until([&] { return std::stod(live->told("vitesse")) > 80; }))
        << live->told("vitesse");
    end();
}

TEST_F(WindowOnDisplay, FollowsWhatOthersDoToItsTimeAndDesk) {
    start({"--no-panel"});
    const auto running = pixels(layout::state), up = pixels(layout::emergency);
    live->ask("pause");
    EXPECT_TRUE(wait_until([&] { return pixels(layout::state) != running; }));
    live->ask("desk atu=1");
    EXPECT_TRUE(wait_until([&] { return pixels(layout::emergency) != up; }));
    end();
}

TEST_F(WindowOnDisplay, RunningPauseEmergencyAndALinkWithoutCommanderLookDifferent) {
    start({"--no-panel", "--commander-timeout", "1"});
    ASSERT_TRUE(
        wait_until([&] { return live->process->err().find("aucun client") != std::string::npos; }));
    const area state = layout::state, picture = layout::picture;
    // While nothing moves the window is drawn twice a second.
    const auto look = [&] {
        wait_until([] { return false; }, seconds(0.8));
        return std::pair(pixels(state), pixels(picture, 9));
    };
    std::vector<decltype(look())> looks = {look()};
    const auto expect_another = [&](const char* what) {
        wait_until([&] { return pixels(state) != looks.back().first; });
        const auto now = look();
        for (const auto& before : looks) {
            EXPECT_NE(now.first, before.first) << what;
            EXPECT_NE(now.second, before.second) << what;
        }
        looks.push_back(now);
    };
    program commander({built("quorin-io"), live->ident, "set", "BZ1=0", "--until", "b1s=1"});
    expect_another("running");
    display.key(XK_p);
    expect_another("paused");
    display.key(XK_p);
    display.key(XK_Escape);
    expect_another("emergency");
    end();
    commander.wait();
}

TEST_F(WindowOnDisplay, ClosingItEndsTheSession) {
    start();
    display.close(window);
    EXPECT_TRUE(wait_until([&] { return !display.manages(window); }, seconds(2)));
    expect_end("fenêtre fermée");
    display.give_focus(panel);
    wait_until([&] {
        display.key(XK_Return);
        return leftovers::processes().empty();
    });
}

TEST_F(WindowOnDisplay, ClosingThePanelClosesIt) {
    start();
    display.close(panel);
    expect_end("panneau fermé");
    EXPECT_FALSE(display.manages(window));
}

TEST_F(WindowOnDisplay, HasItsTitleAndIsEnglishOnDemand) {
    start({"--no-panel", "--title", "poste 7 @1"}, "poste 7 @1");
    const auto french = pixels(layout::pause);
    end();
    start({"--no-panel", "--english"}, "ZK4 station");
    EXPECT_EQ(pixels(layout::pause), french) << "Pause is one word in both";
    end();
}

TEST_F(WindowOnDisplay, HasTheSameEventsAsASessionWithoutAWindow) {
    const temporary_folder folder;
    const std::string script =
        "set -e; Q=" + built("quorin-io") +
        "; $Q set BZ1=1 MT=1 MTA=1 DEPOSE=1; $Q step 4; $Q desk atu=1; $Q step 1;"
        "$Q desk atu=0; $Q fault te=flicker; $Q set SORT=1; $Q step 20";
    const auto events = [&](const std::string& name, std::vector<std::string> options) {
        const std::string file = (folder / name).string();
        options.insert(options.begin(), built("zk4sim"));
        options.insert(options.end(), {"--paused", "--csv", file, "--exec", script});
        const outcome end = run_program(options);
        EXPECT_EQ(end.status, 0) << end.err;
        return bytes_of(file);
    };
    const std::string without = events("without", {"--headless"});
    EXPECT_GT(lines_in(without), 60);
    EXPECT_EQ(events("with", {}), without);
}

TEST_F(WindowOnDisplay, UsesNoProcessorTimeInAPause) {
    start({"--no-panel", "--paused"});
    EXPECT_LT(processor_seconds_at_rest(), 0.05);
    end();
}

TEST_F(WindowOnDisplay, AHundredSessionsInARowLeaveNothing) {
    for (int i = 0; i < 100; ++i) {
        const outcome end =
            run_program({built("zk4sim"), "--no-panel", "--speed", "100", "--duration", "0.5"});
        ASSERT_EQ(end.status, 0) << end.err;
        // What names a sanitizer's addresses may outlive the program by a moment.
        ASSERT_TRUE(wait_until([] { return leftovers::processes().empty(); })) << i;
        ASSERT_EQ(leftovers::segments(), std::set<int>()) << i;
    }
}

}  // namespace
