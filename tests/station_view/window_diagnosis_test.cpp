// The diagnosis of an exercise in the station's window, by the mouse and by keys; and that nothing
// hidden is to be found before the verdict.
#include <gtest/gtest.h>

#include "station_view/diagnosis_window.h"
#include "tests/station_view/exercise_on_display.h"

namespace {

namespace dialog = diagnosis_layout;

class DiagnosisOnDisplay : public ExerciseOnDisplay {
protected:
    static constexpr char two_faults[] = R"(
[station]
pannes_cachees = ["b2s=stuck1", "MONP=slow"]
[[but]]
texte = "le bloqueur 1 est sorti"
quand = ["b1s=1"]
[diagnostic]
pannes = ["b2s=stuck1"]
points = 5
)";

    void open_dialog(bool by_key) {
        take_keyboard();
        if (by_key)
            display.key(XK_r);
        else
            click(button);
        answer = display.wait_for_window("Diagnostic");
        ASSERT_NE(answer, 0u);
        display.give_focus(answer);
        wait_until([] { return false; }, seconds(0.3));
    }
    void click_in(const area& at) { display.click(answer, at.x + at.w / 2, at.y + at.h / 2); }
    /// A line of a list before it is scrolled, from 0.
    void choose(const area& list, int line) {
        display.click(answer, list.x + 20, list.y + 2 + line * 18 + 9);
    }
    void keys(x_key key, int times) {
        for (int i = 0; i < times; ++i) display.key(key);
    }
    bool dialog_closes() {
        return wait_until([&] { return !display.manages(answer); }, seconds(5));
    }
    /// All that a user can read of the session without being told.
    std::string all_that_can_be_found();

    x_window answer = 0;
};

TEST_F(DiagnosisOnDisplay, IsAnsweredByTheMouseAndMayBeChanged) {
    start_exercise(two_faults);
    open_dialog(false);
    choose(dialog::names, 6);
    click_in(dialog::add);
    choose(dialog::names, 3);
    choose(dialog::kinds, 1);
    click_in(dialog::add);
    click_in(dialog::send);
    EXPECT_TRUE(dialog_closes());
    EXPECT_TRUE(recorded("exercice,diagnostic,te=stuck0 b2s=stuck1\n")) << bytes_of(csv);

    open_dialog(false);
    choose(dialog::answer, 0);
    click_in(dialog::remove);
    click_in(dialog::send);
    EXPECT_TRUE(dialog_closes());
    EXPECT_TRUE(recorded("exercice,diagnostic,b2s=stuck1\n"))
        << "it is opened with the last answer";

    extend_blocker();
    ASSERT_NE(wait_for_verdict(), 0u);
    EXPECT_EQ(close_and_wait(), 0);
    EXPECT_TRUE(told_on_error_stream("Diagnostic : b2s=stuck1, juste"));
}

TEST_F(DiagnosisOnDisplay, IsAnsweredByKeysAlone) {
    start_exercise(two_faults);
    open_dialog(true);
    keys(XK_Down, 3);
    display.key(XK_Tab);
    keys(XK_Down, 2);
    display.key(XK_Return);
    keys(XK_Up, 1);
    display.key(XK_Return);
    display.key(XK_Return, XK_Control_L);
    EXPECT_TRUE(dialog_closes());
    EXPECT_TRUE(recorded("exercice,diagnostic,b2s=stuck1\n"))
        << "one fault a name" << bytes_of(csv);

    open_dialog(true);
    display.key(XK_Delete);
    keys(XK_Down, 1);
    display.key(XK_Return);
    display.key(XK_Return, XK_Control_L);
    EXPECT_TRUE(dialog_closes());
    EXPECT_TRUE(recorded("exercice,diagnostic,b3e=stuck0\n"));
    extend_blocker();
    ASSERT_NE(wait_for_verdict(), 0u);
    EXPECT_EQ(close_and_wait(), 3);
    EXPECT_TRUE(told_on_error_stream("Diagnostic : b3e=stuck0, faux"));
}

TEST_F(DiagnosisOnDisplay, TheStationGoesOnAndItsKeysStayInIt) {
    start_exercise(two_faults);
    open_dialog(true);
    const double then = live->simulated_s();
    EXPECT_TRUE(wait_until([&] { return live->simulated_s() > then + 0.2; }, seconds(5)));
    // The mouse is over the station's window, which knows these keys.
    display.click(window, 600, 330);
    display.give_focus(answer);
    for (const x_key key : {XK_p, XK_a, XK_d}) display.key(key);
    display.key(XK_Escape);
    EXPECT_TRUE(dialog_closes()) << "without an answer";
    EXPECT_EQ(live->told("etat"), "marche");
    EXPECT_EQ(live->value("atu"), "0");
    take_keyboard();
    display.key(XK_Escape);
    EXPECT_TRUE(becomes("atu", "1")) << "in the station's window it is the emergency stop";
    EXPECT_EQ(bytes_of(csv).find("diagnostic"), std::string::npos);
    EXPECT_EQ(close_and_wait(), 3);
    EXPECT_TRUE(told_on_error_stream("Diagnostic : pas de réponse"));
}

TEST_F(DiagnosisOnDisplay, ClosesWithTheExercise) {
    start_exercise(two_faults);
    open_dialog(true);
    live->ask("diagnose te=late");
    extend_blocker();
    ASSERT_NE(wait_for_verdict(), 0u);
    EXPECT_TRUE(dialog_closes());
    take_keyboard();
    display.key(XK_r);
    wait_until([] { return false; }, seconds(0.5));
    EXPECT_EQ(display.windows().size(), 2u) << "station and verdict";
    EXPECT_EQ(close_and_wait(), 3);
}

std::string DiagnosisOnDisplay::all_that_can_be_found() {
    std::string all = live->ask("status") + live->process->err() + live->process->out();
    for (const pid_t each : leftovers::processes()) {
        const std::string process = "/proc/" + std::to_string(each);
        all += bytes_of(process + "/cmdline") + bytes_of(process + "/environ") +
               bytes_of(process + "/comm");
    }
    for (const auto& each : std::filesystem::recursive_directory_iterator(folder_.path()))
        if (each.is_regular_file() && each.path() != file) all += bytes_of(each.path());
    for (const x_window each : display.windows()) all += display.title(each);
    return all;
}

TEST_F(DiagnosisOnDisplay, NothingHiddenIsFoundBeforeTheVerdict) {
    start_exercise(two_faults, {"--no-panel", "--vcd", (folder_.path() / "seance.vcd").string()});
    extend_blocker();
    take_keyboard();
    display.key(XK_j);
    const x_window journal =
        display.wait_for_window("Journal de la session : " + folder_.path().string());
    ASSERT_NE(journal, 0u);
    const std::size_t windows = display.windows().size();
    display.click(journal, 800, 655);
    dismiss_message(windows);
    ASSERT_NE(bytes_of(folder_.path() / "tmp.txt").find("#exercice#but#1"), std::string::npos);
    const std::string all = all_that_can_be_found();
    ASSERT_NE(all.find("--journal"), std::string::npos) << "the journal's process is among them";
    for (const char* const hidden : {"stuck1", "slow", "reste à 1", "quatre fois"})
        EXPECT_EQ(all.find(hidden), std::string::npos) << hidden << " in " << all;
    display.close(journal);
    live->ask("diagnose b2s=stuck1");
    ASSERT_NE(wait_for_verdict(), 0u);
    EXPECT_EQ(close_and_wait(), 0);
    EXPECT_TRUE(told_on_error_stream("Pannes cachées : b2s=stuck1 MONP=slow."));
}

}  // namespace
