// An exercise in the station's window, from its start until the window with the verdict is closed.
#include <gtest/gtest.h>

#include "tests/station_view/exercise_on_display.h"

namespace {

void wait_a_moment(double s = 0.5) {
    wait_until([] { return false; }, seconds(s));
}

TEST_F(ExerciseOnDisplay, APassedOneStandsStillWithItsVerdictUntilItIsClosed) {
    start_exercise(blocker, {"--no-panel", "--title", "Station ZK4"});
    const auto before = pixels(board);
    extend_blocker();
    EXPECT_TRUE(told_becomes("but", "2"));
    EXPECT_TRUE(wait_until([&] { return pixels(board) != before; }))
        << "the first goal is seen to be reached";
    retract_blocker();
    const x_window verdict = wait_for_verdict();
    ASSERT_NE(verdict, 0u);
    EXPECT_TRUE(attached_segment(live->ident).session_over());
    EXPECT_EQ(live->told("etat"), "fin");
    EXPECT_EQ(live->told("points"), "3/3");
    EXPECT_TRUE(recorded("session,fin,exercice terminé\n")) << "the recording is whole meanwhile";
    wait_a_moment();
    EXPECT_TRUE(live->process->running());
    EXPECT_TRUE(display.manages(window));
    EXPECT_TRUE(band_becomes(0x1E7B45)) << "that of one that is passed";

    const std::size_t windows = display.windows().size();
    display.give_focus(verdict);
    display.click(verdict, 550, 655);
    dismiss_message(windows);
    ASSERT_TRUE(
        wait_until([&] { return std::filesystem::exists(folder_.path() / "verdict.pdf"); }));
    const outcome pdf = run_program({"pdftotext", "-layout", "verdict.pdf", "-"});
    for (const char* const part :
         {"Station ZK4", "Exercice : Un essai", "But 1, le bloqueur 1 est sorti",
          "Points : 3 sur 3.", "Exercice réussi"})
        EXPECT_NE(pdf.out.find(part), std::string::npos) << part << " in " << pdf.out;

    EXPECT_EQ(close_and_wait(), 0);
    EXPECT_TRUE(told_on_error_stream("zk4sim: exercice terminé\n"));
    EXPECT_TRUE(told_on_error_stream("Exercice réussi"));
    EXPECT_TRUE(wait_until([&] { return !display.manages(verdict); })) << "it goes with the window";
}

TEST_F(ExerciseOnDisplay, AFailedOneEndsWithStatus3) {
    start_exercise("[station]\nduree_s = 2\n" + std::string(blocker));
    ASSERT_NE(wait_for_verdict(), 0u);
    EXPECT_TRUE(band_becomes(0xB3261E)) << "that of one that is not passed";
    EXPECT_EQ(close_and_wait(), 3);
    EXPECT_TRUE(told_on_error_stream("Exercice non réussi, terminé à 2.000 s."));
}

TEST_F(ExerciseOnDisplay, ClosingTheWindowBeforeItsEndJudgesItAsItStands) {
    start_exercise(blocker);
    extend_blocker();
    EXPECT_TRUE(told_becomes("but", "2"));
    EXPECT_EQ(close_and_wait(), 3);
    EXPECT_TRUE(told_on_error_stream("zk4sim: fenêtre fermée\n"));
    EXPECT_TRUE(told_on_error_stream("But 1, le bloqueur 1 est sorti : atteint"));
    EXPECT_TRUE(told_on_error_stream("But 2, le bloqueur 1 est rentré : pas atteint"));
    EXPECT_TRUE(display.wait_for_windows(0)) << "no verdict stays";
}

TEST_F(ExerciseOnDisplay, ThePanelLearnsOfTheEndAndMayGoBeforeTheWindow) {
    start_exercise(blocker, {});
    const std::size_t windows = display.windows().size();
    click_panel("BZ1");
    ASSERT_TRUE(becomes("b1s", "1"));
    click_panel("BZ1");
    ASSERT_NE(wait_for_verdict(), 0u);
    ASSERT_TRUE(display.wait_for_windows(windows + 2)) << "verdict, and the panel's message";
    display.give_focus(panel);
    EXPECT_TRUE(wait_until([&] {
        display.key(XK_Return);
        return !display.manages(panel);
    }));
    wait_a_moment();
    EXPECT_TRUE(live->process->running());
    EXPECT_TRUE(display.manages(window));
    EXPECT_EQ(close_and_wait(), 0);
}

TEST_F(ExerciseOnDisplay, ASignalEndsTheOneThatStandsStill) {
    start_exercise(blocker);
    extend_blocker();
    retract_blocker();
    ASSERT_NE(wait_for_verdict(), 0u);
    live->process->signal(SIGTERM);
    EXPECT_EQ(live->process->wait(), 0);
}

TEST_F(ExerciseOnDisplay, ItsCommandEndsWithTheExerciseWhileTheWindowStays) {
    const std::string ended = (folder_.path() / "ended").string();
    start_exercise(blocker, {"--exec", "trap 'echo >" + ended + "; exit 5' TERM; " +
                                           built("quorin-io") + " set BZ1=1 --until b1s=1; " +
                                           built("quorin-io") + " set BZ1=0; sleep 100 & wait"});
    ASSERT_NE(wait_for_verdict(), 0u);
    EXPECT_TRUE(wait_until([&] { return std::filesystem::exists(ended); }, seconds(2)));
    EXPECT_TRUE(display.manages(window));
    EXPECT_EQ(close_and_wait(), 0);
}

TEST_F(ExerciseOnDisplay, ACommandThatDoesNotListenIsEndedByForceMeanwhile) {
    start_exercise(blocker,
                   {"--exec", "trap '' TERM; " + built("quorin-io") + " set BZ1=1 --until b1s=1; " +
                                  built("quorin-io") + " set BZ1=0; while :; do sleep 0.1; done"});
    const auto command = [&] { return child_named(live->process->id(), "sh"); };
    ASSERT_TRUE(wait_until([&] { return command() != 0; }));
    ASSERT_NE(wait_for_verdict(), 0u);
    EXPECT_TRUE(wait_until([&] { return command() == 0; }, seconds(8)));
    EXPECT_TRUE(display.manages(window));
    EXPECT_EQ(close_and_wait(), 0);
}

TEST_F(ExerciseOnDisplay, NothingIsDrawnAndNoTimeUsedWhileNothingChanges) {
    start_exercise(blocker, {"--no-panel", "--paused"});
    EXPECT_LT(processor_seconds_at_rest(), 0.05) << "paused";
    live->ask("resume");
    extend_blocker();
    retract_blocker();
    ASSERT_NE(wait_for_verdict(), 0u);
    EXPECT_LT(processor_seconds_at_rest(), 0.05) << "over";
    EXPECT_EQ(close_and_wait(), 0);
}

TEST_F(ExerciseOnDisplay, CountsDownInSimulatedTime) {
    start_exercise("[station]\nduree_s = 3000\n" + std::string(blocker),
                   {"--no-panel", "--paused"});
    wait_a_moment();
    const auto at_first = pixels(board);
    live->ask("step 0.5");
    wait_a_moment();
    EXPECT_EQ(pixels(board), at_first) << "the seconds that are left are the same";
    live->ask("step 1");
    EXPECT_TRUE(wait_until([&] { return pixels(board) != at_first; }));
    EXPECT_EQ(close_and_wait(), 3);
}

TEST_F(ExerciseOnDisplay, KeysForFaultsDoNothingAndVerdictsWaitForTheEnd) {
    start_exercise(blocker);
    const std::size_t windows = display.windows().size();
    for (const x_key key : {XK_f, XK_r, XK_v, XK_space}) display.key(key);
    wait_a_moment();
    EXPECT_EQ(display.windows().size(), windows);
    EXPECT_EQ(live->told("pannes"), "");
    extend_blocker();
    retract_blocker();
    const x_window verdict = wait_for_verdict();
    ASSERT_NE(verdict, 0u);
    display.close(verdict);
    ASSERT_TRUE(wait_until([&] { return !display.manages(verdict); }));
    take_keyboard();
    display.key(XK_v);
    const x_window again = wait_for_verdict();
    ASSERT_NE(again, 0u) << "by its key";
    display.close(again);
    ASSERT_TRUE(wait_until([&] { return !display.manages(again); }));
    click(button);
    EXPECT_NE(wait_for_verdict(), 0u) << "by its button";
    EXPECT_EQ(close_and_wait(), 0);
}

TEST_F(ExerciseOnDisplay, IsEnglishOnDemand) {
    start_exercise(blocker, {"--no-panel", "--english"});
    extend_blocker();
    retract_blocker();
    EXPECT_NE(display.wait_for_window("Verdict of the exercise: " + folder_.path().string()), 0u);
    EXPECT_EQ(close_and_wait(), 0);
    EXPECT_TRUE(told_on_error_stream("Goal 1, blocker 1 is extended: reached"));
}

TEST_F(ExerciseOnDisplay, AReplayShowsNoExerciseAndStaysAtItsEnd) {
    start_exercise("[station]\npannes_cachees = [\"b2s=stuck1\"]\n" + std::string(blocker));
    extend_blocker();
    retract_blocker();
    ASSERT_NE(wait_for_verdict(), 0u);
    EXPECT_EQ(close_and_wait(), 0);
    start({"--no-panel", "--play", csv, "--speed", "100"});
    EXPECT_TRUE(told_becomes("etat", "pause")) << "its end";
    EXPECT_EQ(live->told("pannes"), "");
    EXPECT_EQ(live->told("exercice"), "");
    EXPECT_EQ(close_and_wait(), 0);
}

}  // namespace
