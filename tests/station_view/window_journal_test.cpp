// The journal in the paged viewer, with its exports, while the session goes on.
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <unistd.h>

#include <filesystem>

#include "tests/station_view/window_on_display.h"
#include "tests/support/sanitizers.h"

namespace {

class JournalOnDisplay : public WindowOnDisplay {
protected:
    std::string title() const { return "Journal de la session : " + folder_.path().string(); }
    x_window open_journal() {
        display.key(XK_j);
        return display.wait_for_window(title());
    }
    static constexpr int text_x = 800, pdf_x = 550;
    /// Clicks on a button of the viewer, and presses Return on the message that it brings up. A
    /// click is not heard while the message before it still goes away.
    void export_by(x_window viewer, int button_x) {
        const std::size_t windows_before = display.windows().size();
        ASSERT_TRUE(wait_until([&] {
            display.click(viewer, button_x, 655);
            return display.wait_for_windows(windows_before + 1, seconds(2));
        }));
        display.give_focus(display.windows().back());
        EXPECT_TRUE(wait_until([&] {
            display.key(XK_Return);
            return display.windows().size() == windows_before;
        }));
    }
    current_folder folder_;
};

TEST_F(JournalOnDisplay, ExportsChangesAndIncidents) {
    start({"--no-panel", "--title", "poste 7"}, "poste 7");
    live->io({"set", "DEPOSE=1"});
    ASSERT_TRUE(told_becomes("incidents", "1"));
    const x_window viewer = open_journal();
    ASSERT_NE(viewer, 0u);
    export_by(viewer, text_x);
    const std::string text = bytes_of(folder_.path() / "tmp.txt");
    for (const char* const part : {"Journal de la session : poste 7", "#sortie#DEPOSE#1",
                                   "#incident#1#colle répandue : pas de support en zone 1"})
        EXPECT_NE(text.find(part), std::string::npos) << part << " in " << text;
    export_by(viewer, pdf_x);
    ASSERT_TRUE(
        wait_until([&] { return std::filesystem::exists(folder_.path() / "journal.pdf"); }));
    const outcome pdf = run_program({"pdftotext", "-layout", "journal.pdf", "-"});
    for (const char* const part : {"poste 7", "DEPOSE", "colle répandue"})
        EXPECT_NE(pdf.out.find(part), std::string::npos) << part << " in " << pdf.out;
    end();
}

TEST_F(JournalOnDisplay, ADocumentThatCannotBeKeptIsOneLineAndLeavesNothing) {
    std::filesystem::create_directory(folder_.path() / "journal.pdf");
    start({"--no-panel"});
    const x_window viewer = open_journal();
    ASSERT_NE(viewer, 0u);
    export_by(viewer, pdf_x);
    EXPECT_TRUE(wait_until([&] {
        return live->process->err() == "zk4sim: journal.pdf: n'a pas pu être écrit\n";
    })) << live->process->err();
    EXPECT_TRUE(wait_until([&] { return !std::filesystem::exists(folder_.path() / "tmp.pdf"); }));
    EXPECT_TRUE(std::filesystem::is_empty(folder_.path() / "journal.pdf"));
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder_.path()), {}), 1);
    end();
}

TEST_F(JournalOnDisplay, TheSessionGoesOnWhileItIsOpenAndTakesItAlongAtItsEnd) {
    start({"--no-panel"});
    const x_window viewer = open_journal();
    ASSERT_NE(viewer, 0u);
    const double then = live->simulated_s();
    EXPECT_TRUE(wait_until([&] { return live->simulated_s() > then + 0.2; }, seconds(5)));
    display.give_focus(window);
    click(window_layout::emergency);
    EXPECT_TRUE(becomes("atu", "1")) << "the emergency stop is there";
    end();
    EXPECT_TRUE(wait_until([&] { return !display.manages(viewer); }));
}

TEST_F(JournalOnDisplay, OpensAgainAfterItWasClosed) {
    start({"--no-panel"});
    for (int i = 0; i < 2; ++i) {
        const x_window viewer = open_journal();
        ASSERT_NE(viewer, 0u);
        display.close(viewer);
        ASSERT_TRUE(wait_until([&] { return !display.manages(viewer); }));
        take_keyboard();
    }
    end();
}

TEST_F(JournalOnDisplay, WhyItCannotBeOpenedIsToldAmongTheIncidentsAndTheTitleStays) {
    if (address_sanitizer) GTEST_SKIP() << "it needs descriptors of its own";
    start({"--no-panel"});
    const auto told = [this] { return pixels(window_layout::incidents, 2); };
    const auto nothing = told();
    rlimit files{};
    ASSERT_EQ(prlimit(live->process->id(), RLIMIT_NOFILE, nullptr, &files), 0);
    const rlimit none = {3, files.rlim_max};
    ASSERT_EQ(prlimit(live->process->id(), RLIMIT_NOFILE, &none, nullptr), 0);
    display.key(XK_j);
    EXPECT_TRUE(wait_until([&] { return told() != nothing; }, seconds(10)));
    EXPECT_EQ(display.title(window), "Station ZK4");
    ASSERT_EQ(prlimit(live->process->id(), RLIMIT_NOFILE, &files, nullptr), 0);
    EXPECT_NE(open_journal(), 0u);
    end();
}

TEST_F(JournalOnDisplay, GoesWithASessionThatIsKilled) {
    start({"--no-panel"});
    ASSERT_NE(open_journal(), 0u);
    live->process->signal(SIGKILL);
    live->process->wait();
    EXPECT_TRUE(wait_until([] { return leftovers::processes().empty(); }));
}

TEST_F(JournalOnDisplay, DoesNotOpenForASessionThatIsGoneAlready) {
    write_bytes(folder_.path() / "lines", "une ligne\n");
    const std::string gone = std::to_string(getppid());
    EXPECT_EQ(run_program({built("zk4sim"), "--journal", "lines", "fr", gone}).status, 1);
}

}  // namespace
