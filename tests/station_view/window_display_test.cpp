// zk4sim and its display: none, one that goes away in mid-session; command lines of the window.
#include <gtest/gtest.h>

#include "tests/end_to_end/zk4sim_session.h"

#include "tests/support/mortal_display.h"

namespace {

outcome run_without_display(const std::string& options) {
    return run_program({"sh", "-c", "unset DISPLAY; exec " + built("zk4sim") + " " + options});
}

TEST_F(Zk4sim, WithoutADisplaySaysSoBeforeAnySegmentExists) {
    for (const char* const options : {"", "--no-panel", "--exec 'echo started'", "--manual"}) {
        const outcome end = run_without_display(options);
        EXPECT_EQ(end.status, 1) << options;
        EXPECT_EQ(end.out, "") << options;
        EXPECT_EQ(end.err, "zk4sim: pas d'écran (DISPLAY est vide): --headless s'en passe\n");
    }
    const outcome wrong = run_program({built("zk4sim"), "--no-panel"}, {"DISPLAY=:nowhere\x1B[2J"});
    EXPECT_EQ(wrong.status, 1);
    EXPECT_EQ(wrong.out, "");
    EXPECT_EQ(wrong.err, "zk4sim: l'écran :nowhere\\x1B[2J ne répond pas: --headless s'en passe\n");
}

TEST_F(Zk4sim, WithoutAWindowNeedsNoDisplay) {
    EXPECT_EQ(run_without_display("--headless --no-panel --duration 0.1").status, 0);
    EXPECT_EQ(run_without_display("--headless --manual --no-panel --duration 0.1").status, 0);
}

TEST_F(Zk4sim, RefusesWhatByHandMakesNoSenseWith) {
    const temporary_folder folder;
    const std::string names = (folder / "names").string();
    write_bytes(names, "a\n\nX\n");
    const struct {
        std::string options, line;
    } cases[] = {
        {"--manual --seed 0", "--manual et --seed s'excluent"},
        {"--manual --bases 5", "--manual et --bases s'excluent"},
        {"--parts 1000 --manual", "--manual et --parts s'excluent"},
        {"--manual --fault te=stuck0", "--manual et --fault s'excluent"},
        {"--names " + names, "--names demande --manual"},
    };
    for (const auto& [options, line] : cases) {
        const outcome end = run_without_display("--headless " + options);
        EXPECT_EQ(end.status, 2) << options;
        EXPECT_EQ(end.err, "zk4sim: " + line + "\n");
    }
}

TEST_F(Zk4sim, SaysInOneLineWhatIsWrongWithNames) {
    const temporary_folder folder;
    const std::string names = (folder / "names").string();
    std::string many = "\n", long_name(50, 'x');
    for (int i = 0; i < 42; ++i) many += "s" + std::to_string(i) + "\n";
    const struct {
        std::string bytes, line;
    } cases[] = {
        {many, names + ":43: 42 noms: la liaison en porte 41"},
        {long_name + "\n\n", names + ":1: nom trop long pour la liaison (49 octets): " + long_name},
        {"a\n", names + ":1: une ligne vide manque avant les sorties"},
    };
    for (const auto& [bytes, line] : cases) {
        write_bytes(names, bytes);
        const outcome end = run_without_display("--manual --names " + names);
        EXPECT_EQ(end.status, 1);
        EXPECT_EQ(end.err, "zk4sim: " + line + "\n");
    }
    const outcome missing = run_without_display("--manual --names /nowhere");
    EXPECT_EQ(missing.status, 1);
    EXPECT_EQ(missing.err, "zk4sim: /nowhere: fichier ou dossier introuvable\n");
}

/// zk4sim on a display of its own, which the test can take away.
class DisplayThatDies : public Zk4sim {
protected:
    std::unique_ptr<program> start(std::vector<std::string> options) const {
        options.insert(options.begin(), built("zk4sim"));
        return std::make_unique<program>(options, std::vector{"DISPLAY=" + display.name});
    }

    mortal_display display;
};

TEST_F(DisplayThatDies, EndsTheSessionInOrder) {
    const controlled_station running(start({"--no-panel"}));
    ASSERT_NE(running.ident, "");
    ASSERT_EQ(running.io({"set", "MT=1", "MTA=1", "DESV=1"}).status, 0);
    const attached_segment segment(running.ident);
    display.die();
    EXPECT_EQ(running.process->wait(seconds(10)), 1);
    EXPECT_EQ(running.process->err(), "zk4sim: l'écran a disparu\n" + nothing_made);
    EXPECT_TRUE(segment.session_over()) << "its clients are told";
}

TEST_F(DisplayThatDies, InAPauseAndWithThePanelToo) {
    const controlled_station running(start({"--paused"}));
    ASSERT_NE(running.ident, "");
    wait_until([] { return false; }, seconds(1));
    const attached_segment segment(running.ident);
    display.die();
    EXPECT_EQ(running.process->wait(seconds(10)), 1);
    const std::string err = running.process->err();
    EXPECT_TRUE(err.ends_with("\n" + nothing_made)) << err;
    EXPECT_TRUE(err.find("zk4sim: l'écran a disparu\n") != std::string::npos ||
                err.find("zk4sim: panneau terminé (") != std::string::npos)
        << err;
    EXPECT_TRUE(segment.session_over());
}

}  // namespace
