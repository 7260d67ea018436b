// Files that may not grow, as `ulimit -f` makes them: an error of the file, not the program's end.
// And a process that may open only so many.
#include "tests/end_to_end/zk4sim_session.h"
#include "tests/support/sanitizers.h"

namespace {

/// Runs a shell's command where no file may grow, with its output and its error stream on pipes
/// unless it sends them elsewhere; "status=" and its status come last.
outcome run_limited(const std::string& command) {
    return run_program({"sh", "-c",
                        "{ { (ulimit -f 0; exec " + command +
                            "); echo status=$?; } 2>&1 >&3 | cat >&2; } 3>&1 | cat"});
}

class FileLimit : public Zk4sim {
protected:
    const temporary_folder files;
    const std::string file = files / "full";
};

TEST_F(FileLimit, AFirstLineThatDoesNotFitIsStatusOne) {
    const outcome end = run_limited(built("zk4sim") + " --headless --no-panel >" + file);
    EXPECT_EQ(end.out, "status=1\n");
    EXPECT_EQ(end.err, "zk4sim: la sortie standard ne prend rien\n");
}

TEST_F(FileLimit, AnErrorStreamThatIsFullDoesNotEndTheStation) {
    const outcome end =
        run_limited(built("zk4sim") + " --headless --no-panel --duration 0.2 2>" + file);
    EXPECT_EQ(end.out.rfind("ident_mem=", 0), 0u) << end.out;
    EXPECT_TRUE(end.out.ends_with("\nstatus=0\n")) << end.out;
}

TEST_F(FileLimit, WhatASessionStartsIsEndedByItAsEver) {
    const outcome end = run_zk4sim({"--exec", "kill -XFSZ $$; exit 5"});
    EXPECT_EQ(end.status, 128 + SIGXFSZ) << end.err;
}

TEST_F(FileLimit, QuorinIoSaysThatItsOutputTakesNothing) {
    const station running({"--no-panel"});
    for (const std::string& words : {running.ident + " list", std::string("--help")}) {
        const outcome end = run_limited(built("quorin-io") + " " + words + " >" + file);
        EXPECT_EQ(end.out, "status=1\n") << words;
        EXPECT_EQ(end.err, "quorin-io: la sortie standard ne prend rien\n") << words;
    }
}

TEST_F(FileLimit, WithFewDescriptorsASessionIsServedOrRefusedInOneLine) {
    if (address_sanitizer) GTEST_SKIP() << "it needs descriptors of its own";
    int refused = 0, without_control = 0, whole = 0;
    for (int most = 5; most <= 14; ++most) {
        const outcome end =
            run_program({"sh", "-c",
                         "ulimit -n " + std::to_string(most) + "; exec " + built("zk4sim") +
                             " --headless --no-panel --duration 0"});
        const std::string served = "zk4sim: durée écoulée\n" + nothing_made;
        if (end.status == 1) {
            EXPECT_EQ(lines_in(end.err), 1) << end.err;
            EXPECT_TRUE(end.err.ends_with(": trop de fichiers ouverts\n")) << end.err;
        } else {
            EXPECT_EQ(end.status, 0) << most;
            EXPECT_TRUE(end.err.ends_with(served)) << end.err;
        }
        refused += end.status == 1;
        without_control += end.err.ends_with(": trop de fichiers ouverts\n" + served);
        whole += end.err == served;
    }
    EXPECT_GT(refused, 0);
    EXPECT_GT(without_control, 0);
    EXPECT_GT(whole, 0);
}

}  // namespace
