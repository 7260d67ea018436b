// A full disk under what the windows' buttons write, as rows: what is said within a second, and
// what is left of the files that were there. The session, or the viewer, goes on.
#include <filesystem>
#include <set>

#include "tests/end_to_end/zk4sim_session.h"
#include "tests/support/elapsed.h"
#include "tests/support/screen.h"

namespace {

/// The buttons of the paged viewer, by their places from its left.
enum class button { text = 800, pdf = 550 };

struct window_row {
    const char* command;
    /// The title of the viewer's window, and the key that brings it up: none where it comes by
    /// itself.
    const char* viewer;
    x_key key;
    button pressed;
    /// The line that it adds to the error stream, or nothing.
    const char* said;
    /// The files afterwards, with how many bytes each has: the first three were there before.
    const char* left;
};

// That a text file is written is said whatever happens, and what could be written stays.
constexpr char untouched[] = "full 16384, journal.pdf 5, verdict.pdf 5",
               empty_text[] = "full 16384, journal.pdf 5, tmp.txt 0, verdict.pdf 5";
constexpr char session[] = "zk4sim --no-panel",
               exercise[] = "zk4sim --no-panel --exercise $exercise",
               reading[] = "lecteur $text --viewer true";

// clang-format off
const window_row rows[] = {
    {session,  "Journal de la session : $disk", XK_j, button::pdf,  "zk4sim: journal.pdf: n'a pas pu être écrit\n", untouched},
    {session,  "Journal de la session : $disk", XK_j, button::text, "", empty_text},
    {exercise, "Verdict de l'exercice : $disk", 0,    button::pdf,  "zk4sim: verdict.pdf: n'a pas pu être écrit\n", untouched},
    {exercise, "Verdict de l'exercice : $disk", 0,    button::text, "", empty_text},
    {reading,  "",                              0,    button::pdf,  "", untouched},
    {reading,  "",                              0,    button::text, "", empty_text},
};
// clang-format on

class FailureWindows : public Zk4sim {
protected:
    static constexpr int buttons_y = 655;

    void SetUp() override {
        write_bytes(exercise_,
                    "format = 1\ntitre = \"T\"\nenonce = \"E\"\n[station]\nduree_s = 1\n"
                    "[[but]]\ntexte = \"B\"\nquand = [\"te=1\"]\n");
        write_bytes(text_, "une ligne\n");
    }

    std::string filled(std::string text) const {
        const std::pair<std::string, std::string> words[] = {
            {"$disk", disk_.path()}, {"$exercise", exercise_}, {"$text", text_}};
        for (const auto& [name, value] : words)
            for (std::size_t at; (at = text.find(name)) != std::string::npos;)
                text.replace(at, name.size(), value);
        return text;
    }

    /// The row's program in a folder whose disk is full; the disk is gone with it.
    std::unique_ptr<program> start(const window_row& row) const {
        return std::make_unique<program>(std::vector<std::string>{
            "unshare", "--user", "--map-root-user", "--mount", "sh", "-c",
            filled("PATH=" QUORIN_PROGRAMS
                   ":$PATH\nmount -t tmpfs -o size=24k none $disk && cd $disk || exit 77\n"
                   "for file in journal.pdf verdict.pdf; do echo mine >$file; done\n"
                   "head -c 16384 /dev/zero >full; exec " +
                   std::string(row.command))});
    }

    /// "name bytes, ..." of the folder in which a program runs.
    static std::string files_of(const program& running) {
        std::string all;
        std::set<std::filesystem::path> files;
        std::error_code gone;
        for (const auto& each : std::filesystem::directory_iterator(
                 "/proc/" + std::to_string(running.id()) + "/cwd/", gone))
            files.insert(each.path());
        for (const auto& each : files)
            all += (all.empty() ? "" : ", ") + each.filename().string() + " " +
                   std::to_string(std::filesystem::file_size(each, gone));
        return all;
    }

    x_window viewer_of(const window_row& row, program& running) {
        if (row.key == 0) return display_.wait_for_window(filled(row.viewer));
        const x_window station = display_.wait_for_window("Station ZK4");
        if (station == 0 || !running.running()) return 0;
        display_.give_focus(station);
        wait_until([] { return false; }, seconds(0.3));
        display_.key(row.key);
        return display_.wait_for_window(filled(row.viewer));
    }

    /// Presses the button, and Return on the message that says that the file is made.
    void press(x_window viewer, button which) {
        const std::size_t before = display_.windows().size();
        display_.give_focus(viewer);
        ASSERT_TRUE(wait_until([&] {
            display_.click(viewer, static_cast<int>(which), buttons_y);
            return display_.wait_for_windows(before + 1, seconds(2));
        }));
        display_.give_focus(display_.windows().back());
        ASSERT_TRUE(wait_until([&] {
            display_.key(XK_Return);
            return display_.windows().size() == before;
        }));
    }

    const temporary_folder disk_, files_;
    const std::string exercise_ = files_ / "e.toml", text_ = files_ / "t.txt";
    screen display_;
};

TEST_F(FailureWindows, AFullDiskIsToldOnceAndTheProgramGoesOn) {
    if (run_program({"unshare", "--user", "--map-root-user", "--mount", "true"}).status != 0)
        GTEST_SKIP() << "a full disk: user and mount namespaces of one's own";
    for (const window_row& row : rows) {
        SCOPED_TRACE(std::string(row.command) + ", " + row.viewer + ", " + row.left);
        const auto running = start(row);
        const x_window viewer = viewer_of(row, *running);
        ASSERT_NE(viewer, 0u) << running->err();
        const std::string before = running->err();
        press(viewer, row.pressed);
        const auto from = std::chrono::steady_clock::now();
        EXPECT_TRUE(wait_until(
            [&] { return running->err() == before + row.said && files_of(*running) == row.left; },
            seconds(5)))
            << running->err() << files_of(*running);
        EXPECT_LE(seconds_since(from), 1);
        EXPECT_TRUE(running->running());
        running->signal(SIGTERM);
        running->wait();
    }
}

}  // namespace
