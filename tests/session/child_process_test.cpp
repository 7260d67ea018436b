// Programs that a session starts: the panel, or a command.
#include <gtest/gtest.h>

#include <cerrno>
#include <signal.h>
#include <unistd.h>

#include "session/child_process.h"
#include "session/failure.h"
#include "tests/support/programs.h"

namespace {

void wait_for(child_process& child) {
    EXPECT_TRUE(wait_until([&] { return child.ended(); }));
}

TEST(ChildProcess, TellsHowItEnded) {
    const struct {
        const char* command;
        int status;
        bool by_itself;
        std::string bad_end;
    } rows[] = {{"exit 0", 0, true, ""},
                {"exit 1", 1, true, "statut 1"},
                {"exit 255", 255, true, "statut 255"},
                {"kill -KILL $$", 128 + SIGKILL, false, "signal 9"},
                {"kill -TERM $$", 128 + SIGTERM, false, "signal 15"}};
    for (const auto& [command, status, by_itself, bad_end] : rows) {
        child_process child("commande", shell_command(command, 7));
        wait_for(child);
        EXPECT_TRUE(child.ended()) << "and stays so";
        EXPECT_EQ(child.status(), status) << command;
        EXPECT_EQ(child.ended_by_itself(), by_itself) << command;
        EXPECT_EQ(child.bad_end(), bad_end) << command;
    }
}

TEST(ChildProcess, HasNotEndedWhileItRuns) {
    child_process child("commande", {{"sleep", "1000"}});
    EXPECT_FALSE(child.ended());
    kill(child.id(), SIGKILL);
    wait_for(child);
}

TEST(ChildProcess, OneThatCannotBeStartedIsRefusedInOneLineThatSaysWhy) {
    const struct {
        std::string program;
        std::string why;
    } rows[] = {{"/nowhere/panel", "fichier ou dossier introuvable"}, {"/tmp", "accès refusé"}};
    for (const auto& [program, why] : rows) {
        try {
            child_process child("panneau", {{program}});
            ADD_FAILURE() << program << " was started";
        } catch (const failure& refused) {
            EXPECT_EQ(refused.status, exit_status::refused);
            EXPECT_EQ(refused.why, "panneau " + program + ": " + why);
        }
    }
}

TEST(ChildProcess, WhatItPrintsGoesToTheErrorStream) {
    const outcome said = run_in_child([] {
        child_process child("commande", {{"sh", "-c", "echo one; echo two >&2"}});
        while (!child.ended()) usleep(1000);
    });
    EXPECT_EQ(said.out, "");
    EXPECT_EQ(said.err, "one\ntwo\n");
}

TEST(ChildProcess, ACommandFindsTheIdentifierAndHasAGroupOfItsOwn) {
    const current_folder folder;
    const outcome said = run_in_child([] {
        child_process child("commande",
                            shell_command("echo $QUORIN_IDENT; touch said; sleep 1000", 1234));
        const bool own = getpgid(child.id()) == child.id();
        wait_until([] { return std::filesystem::exists("said"); });
        killpg(child.id(), SIGTERM);
        while (!child.ended()) usleep(1000);
        _exit(own ? 0 : 1);
    });
    EXPECT_EQ(said.status, 0);
    EXPECT_EQ(said.err, "1234\n");
}

TEST(ChildProcess, ThePanelIsGivenTheIdentifierAndStaysInTheGroup) {
    const child_command panel = panel_command("panel", 1234);
    EXPECT_EQ(panel.words, (std::vector<std::string>{"panel", "-automemlink", "1234"}));
    EXPECT_FALSE(panel.own_group);
    child_process child("panneau", {{"sleep", "1000"}});
    EXPECT_EQ(getpgid(child.id()), getpgid(0));
    kill(child.id(), SIGKILL);
    wait_for(child);
}

TEST(ChildProcess, WithoutAProgramThePanelIsTheOneBesideElseOnThePath) {
    const std::string program = panel_command("", 1).words.at(0);
    EXPECT_TRUE(program == built("quorin") || program == "quorin") << program;
    EXPECT_EQ(panel_command("", 1).words.size(), 3u);
}

TEST(ChildProcess, ItGetsSignalsAsAProgramDoesThatNobodyPrepared) {
    const outcome said = run_in_child([] {
        signal(SIGPIPE, SIG_IGN);  // as a session has it
        child_process child("commande", shell_command("yes | true; kill -PIPE $$", 1));
        while (!child.ended()) usleep(1000);
        _exit(child.status() == 128 + SIGPIPE ? 0 : 1);
    });
    EXPECT_EQ(said.status, 0);
    EXPECT_EQ(said.err, "");
}

}  // namespace
