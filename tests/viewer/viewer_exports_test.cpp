// The files that the viewer's buttons write, and the programs that open them.
#include "tests/viewer/viewer_on_display.h"

#include <cstdlib>
#include <fstream>

using namespace viewer_tests;

namespace {

TEST_F(ViewerOnDisplay, TheTextFileIsWrittenAndSaid) {
    for (const int english : {0, 1}) {
        SCOPED_TRACE(english);
        speak(english);
        write_bytes("tmp.txt", std::string(10000, 'x'));
        strings lines = {"#C 10 ", "a#b", "#T", "(c)"};
        robot user;
        user.click(english ? "text file" : "fichier texte");
        user.until_label(english ? "generation of tmp.txt file" : "generation du fichier tmp.txt");
        user.press(XK_Return).click(english ? "CANCEL" : "ANNULER");
        show(lines);
        const std::string dashes = std::string(55, '-') + "\n";
        EXPECT_EQ(bytes_of("tmp.txt"), dashes + "a#b\n" + dashes + "(c)\n");
    }
}

TEST_F(ViewerOnDisplay, ThePdfFileIsWrittenSaidOpenedAndRemoved) {
    for (const int english : {0, 1}) {
        SCOPED_TRACE(english);
        speak(english);
        files::remove("said");
        strings lines = numbered(78);
        const std::string command = recording_command("note it");
        robot user;
        user.click(english ? "pdf file" : "fichier pdf");
        user.until_label(english ? "generation of tmp.pdf file" : "generation du fichier tmp.pdf");
        user.until("not opened before the message is closed",
                   [&](Fl_Window&) { return files::exists("tmp.pdf") && !files::exists("said"); });
        user.press(XK_Return);
        user.until("opened", [](Fl_Window&) { return bytes_of("said") == "1|tmp.pdf|"; });
        user.until("removed", [](Fl_Window&) { return !files::exists("tmp.pdf"); });
        user.click(english ? "CANCEL" : "ANNULER");
        show(lines, command);
        std::fstream again("again.pdf", std::ios::out);
        OFD_afficheur_filtre_impression(lines.data(), 79).imprime_pdf(again);
        again.close();
        EXPECT_GT(files::file_size("seen.pdf"), 1000u);
        EXPECT_EQ(bytes_of("seen.pdf"), bytes_of("again.pdf"));
    }
}

TEST_F(ViewerOnDisplay, FilesThatCannotBeOpenedAndCommandsThatFailAreNotReported) {
    files::create_directory("tmp.txt");
    files::create_directory("tmp.pdf");
    strings lines = numbered(3);
    robot user;
    user.click("fichier texte").until_label("generation du fichier tmp.txt").press(XK_Return);
    user.click("fichier pdf").until_label("generation du fichier tmp.pdf").press(XK_Return);
    after_a_while(user, "still the same page", [&] { return shown(*viewer) == page_of(1, 3); });
    user.click("ANNULER");
    show(lines, "false");
    EXPECT_TRUE(files::is_empty("tmp.txt"));
    EXPECT_TRUE(files::is_empty("tmp.pdf"));
}

TEST_F(ViewerOnDisplay, TheCommandStandsBetweenDoubleQuotesAsItIs) {
    recording_command("note it");
    const struct {
        const char *command, *said;
    } cases[] = {{"./note it", "1|tmp.pdf|"},
                 {"$PWD/note it", "1|tmp.pdf|"},
                 {"./note it\" \"tmp.pdf", "2|tmp.pdf|tmp.pdf|"}};
    for (const auto& [command, said] : cases) {
        SCOPED_TRACE(command);
        write_bytes("tmp.pdf", "%PDF");
        files::remove("said");
        files::remove("seen.pdf");
        viewer->viewer_command = command;
        viewer->imprime_tmp_pdf();
        EXPECT_EQ(bytes_of("said"), said);
        EXPECT_EQ(bytes_of("seen.pdf"), "%PDF");
        EXPECT_FALSE(files::exists("tmp.pdf"));
    }
}

TEST_F(ViewerOnDisplay, ThePostscriptRouteConvertsShowsAndRemovesInThatOrder) {
    files::create_directory("bin");
    for (const char* const tool : {"ps2pdf", "acroread"}) {
        const std::string path = std::string("bin/") + tool;
        write_script(path, "echo \"${0##*/} $*\" $(ls tmp.*) >>said\ncp tmp.ps tmp.pdf\n");
    }
    const std::string path = std::getenv("PATH");
    setenv("PATH", ((folder.path() / "bin:").string() + path).c_str(), 1);
    write_bytes("tmp.ps", "%!");
    viewer->imprime_tmp_ps();
    setenv("PATH", path.c_str(), 1);
    EXPECT_EQ(bytes_of("said"), "ps2pdf tmp.ps tmp.ps\nacroread tmp.pdf tmp.pdf tmp.ps\n");
    EXPECT_FALSE(files::exists("tmp.ps"));
    EXPECT_FALSE(files::exists("tmp.pdf"));
}

}  // namespace
