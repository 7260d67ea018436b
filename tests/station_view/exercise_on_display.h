// An exercise in the station's window, as a student has it.
#pragma once
#include <dirent.h>

#include <filesystem>

#include "tests/station_view/window_on_display.h"

class ExerciseOnDisplay : public WindowOnDisplay {
protected:
    /// Out and in again: two goals.
    static constexpr char blocker[] = R"(
[[but]]
texte = "le bloqueur 1 est sorti"
texte_en = "blocker 1 is extended"
quand = ["b1s=1"]
avant_s = 3000
[[but]]
texte = "le bloqueur 1 est rentré"
quand = ["b1e=1"]
points = 2
)";

    /// Starts zk4sim on an exercise of these tables, recorded in `csv`.
    void start_exercise(const std::string& tables,
                        std::vector<std::string> options = {"--no-panel"}) {
        write_bytes(file,
                    "format = 1\ntitre = \"Un essai\"\ntitre_en = \"A trial\"\n"
                    "enonce = \"\"\"\nEssayez.\n\"\"\"\n" +
                        tables);
        options.insert(options.end(), {"--exercise", file, "--csv", csv});
        const bool english = std::ranges::find(options, "--english") != options.end();
        start(options, english ? "ZK4 station" : "Station ZK4");
    }

    void extend_blocker() { live->io({"set", "BZ1=1", "--until", "b1s=1"}); }
    void retract_blocker() { live->io({"set", "BZ1=0"}); }

    x_window wait_for_verdict() {
        return display.wait_for_window("Verdict de l'exercice : " + folder_.path().string());
    }
    /// Whether the band over the exercise gets that colour.
    bool band_becomes(std::uint32_t colour) {
        return wait_until([&] { return display.pixel(window, 1590, 35) == colour; }, seconds(5));
    }
    /// Closes the window that stands still: the program's status.
    int close_and_wait() {
        display.close(window);
        return live->process->wait().value_or(-1);
    }
    bool recorded(const std::string& row) {
        return wait_until([&] { return bytes_of(csv).find(row) != std::string::npos; }, seconds(5));
    }
    bool told_on_error_stream(const std::string& what) const {
        return live->process->err().find(what) != std::string::npos;
    }
    /// Presses Return on the message that a program brings up.
    void dismiss_message(std::size_t windows_before) {
        ASSERT_TRUE(display.wait_for_windows(windows_before + 1));
        display.give_focus(display.windows().back());
        EXPECT_TRUE(wait_until([&] {
            display.key(XK_Return);
            return display.windows().size() <= windows_before;
        }));
    }

    /// The exercise's panel at the size in which the window opens, and its button.
    static constexpr area board = {1378, 0, 340, 340}, button = {1384, 348, 328, 26};

    current_folder folder_;
    const std::string file = (folder_.path() / "essai.toml").string(),
                      csv = (folder_.path() / "seance.csv").string();
};
