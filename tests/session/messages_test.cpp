// What a program says on streams that may take nothing: in child processes, on pipes of the test.
#include <fcntl.h>
#include <gtest/gtest.h>
#include <poll.h>
#include <signal.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <sstream>
#include <thread>

#include "ioshare/io_streams.h"
#include "session/failure.h"
#include "session/messages.h"
#include "tests/support/programs.h"

namespace {

/// A pipe that nobody reads until the end.
struct test_pipe {
    test_pipe() { EXPECT_EQ(pipe(ends), 0); }
    ~test_pipe() {
        for (const int each : ends) close(each);
    }
    test_pipe(const test_pipe&) = delete;
    test_pipe& operator=(const test_pipe&) = delete;

    void fill() const {
        fcntl(ends[1], F_SETFL, O_NONBLOCK);
        const char bytes[4096] = {};
        while (write(ends[1], bytes, sizeof bytes) > 0) {
        }
        fcntl(ends[1], F_SETFL, 0);  // A writer that does not look first would wait for ever.
    }
    std::string empty() const {
        fcntl(ends[0], F_SETFL, O_NONBLOCK);
        std::string all;
        char bytes[4096];
        for (ssize_t count; (count = read(ends[0], bytes, sizeof bytes)) > 0;)
            all.append(bytes, static_cast<std::size_t>(count));
        return all.substr(std::min(all.find_first_not_of('\0'), all.size()));
    }
    int ends[2];
};

TEST(Messages, ALineIsWrittenWholeWithItsEnd) {
    const outcome said = run_in_child([] {
        message_stream messages("essai");
        messages.line("bilan: rien");
        messages.say("fin demandée");
    });
    EXPECT_EQ(said.status, 0);
    EXPECT_EQ(said.out, "");
    EXPECT_EQ(said.err, "bilan: rien\nessai: fin demandée\n");
}

TEST(Messages, AFullPipeLosesLinesAndTheNextThatGetsThroughSaysHowMany) {
    const test_pipe pipe, go;
    const outcome said = run_in_child([&] {
        dup2(pipe.ends[1], STDERR_FILENO);
        message_stream messages("essai");
        messages.say("un");
        for (int times = 0; times < 2; ++times) {
            std::printf("[%s]", pipe.empty().c_str());
            pipe.fill();
            alarm(20);
            for (int i = 0; i < 12; ++i) messages.say("perdu");
            std::printf("[%s]", pipe.empty().c_str());
            messages.say("deux");
            messages.say("trois");
        }
        std::printf("[%s]", pipe.empty().c_str());
        std::fflush(stdout);
    });
    EXPECT_EQ(said.status, 0) << "it waited for a reader";
    const std::string after = "[essai: messages perdus: 12\nessai: deux\nessai: trois\n]";
    EXPECT_EQ(said.out, "[essai: un\n][]" + after + "[]" + after);
}

/// A terminal that nobody reads until the end.
struct test_terminal {
    test_terminal() {
        EXPECT_EQ(grantpt(master), 0);
        EXPECT_EQ(unlockpt(master), 0);
        slave = open(ptsname(master), O_RDWR | O_NOCTTY | O_CLOEXEC);
        EXPECT_GE(slave, 0);
    }
    ~test_terminal() {
        for (const int each : {master, slave}) close(each);
    }
    test_terminal(const test_terminal&) = delete;
    test_terminal& operator=(const test_terminal&) = delete;

    std::string empty() const {
        fcntl(master, F_SETFL, O_NONBLOCK);
        std::string all;
        char bytes[4096];
        for (ssize_t count; (count = read(master, bytes, sizeof bytes)) > 0;)
            all.append(bytes, static_cast<std::size_t>(count));
        std::erase(all, '\r');
        return all;
    }
    int master = posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC), slave = -1;
};

TEST(Messages, ATerminalThatStandsStillLosesLinesAndCutsNone) {
    const test_terminal terminal;
    constexpr int lines = 2000;
    const std::string text(70, 'x');
    const outcome said = run_in_child([&] {
        dup2(terminal.slave, STDERR_FILENO);
        message_stream messages("essai");
        std::string seen;
        alarm(20);
        for (int times = 0; times < 2; ++times) {
            for (int i = 0; i < lines; ++i) messages.say(text);
            for (int i = 0; i < 3; ++i) {
                seen += terminal.empty();
                messages.say("fin");
            }
        }
        std::printf("%s", (seen + terminal.empty()).c_str());
        std::fflush(stdout);
    });
    EXPECT_EQ(said.status, 0) << "it waited for a reader";
    std::istringstream shown(said.out);
    const std::string lost = "essai: messages perdus: ";
    int told = 0, ends = 0;
    for (std::string line; std::getline(shown, line); ++told) {
        if (line.starts_with(lost)) told += std::stoi(line.substr(lost.size())) - 1;
        ends += line == "essai: fin";
        EXPECT_TRUE(line.starts_with(lost) || line == "essai: " + text || line == "essai: fin")
            << line;
    }
    EXPECT_EQ(told, 2 * (lines + 3)) << "told, or counted as lost";
    EXPECT_GE(ends, 4);
    EXPECT_NE(said.out.find(lost), std::string::npos);
}

TEST(Messages, AStreamWithoutAReaderIsNoReasonToEnd) {
    const outcome said = run_in_child([] {
        signal(SIGPIPE, SIG_IGN);  // as a session has it
        {
            const test_pipe pipe;
            dup2(pipe.ends[1], STDERR_FILENO);
        }
        message_stream messages("essai");
        for (int i = 0; i < 1000; ++i) messages.say("personne");
    });
    EXPECT_EQ(said.status, 0);
}

TEST(Messages, ALongLineIsCutToOnePiece) {
    const outcome said = run_in_child([] {
        message_stream messages("essai");
        messages.line(std::string(100'000, 'x'));
        messages.line("fin");
    });
    EXPECT_LE(said.err.size(), 4096u + 4);
    EXPECT_GT(said.err.size(), 3000u);
    EXPECT_TRUE(said.err.ends_with("x\nfin\n"));
}

/// What printing ends with: nothing, or the status and whether there is one line that says why.
std::string printing_on(const std::function<void()>& redirect,
                        const std::string& text = "ident_mem=7\n") {
    return run_in_child([&] {
               const int shown = dup(STDOUT_FILENO);
               redirect();
               std::string result = "printed";
               try {
                   print_at_once(text);
               } catch (const failure& why) {
                   const bool one_line =
                       !why.why.empty() && why.why.find('\n') == std::string::npos;
                   result = std::to_string(static_cast<int>(why.status)) +
                            (one_line ? " in one line" : " unclear");
               }
               dup2(shown, STDOUT_FILENO);
               std::printf("%s", result.c_str());
               std::fflush(stdout);
           })
        .out;
}

TEST(Messages, AStandardOutputThatTakesNothingIsAFailure) {
    signal(SIGPIPE, SIG_IGN);
    EXPECT_EQ(printing_on([] { dup2(open("/dev/null", O_WRONLY), STDOUT_FILENO); }), "printed");
    EXPECT_EQ(printing_on([] { dup2(open("/dev/full", O_WRONLY), STDOUT_FILENO); }),
              "1 in one line");
    EXPECT_EQ(printing_on([] {
                  const test_pipe pipe;
                  dup2(pipe.ends[1], STDOUT_FILENO);
              }),
              "1 in one line")
        << "without a reader";
    const test_pipe full;
    full.fill();
    EXPECT_EQ(printing_on([&] { dup2(full.ends[1], STDOUT_FILENO); }), "1 in one line");
    const test_pipe pipe;
    EXPECT_EQ(printing_on([&] { dup2(pipe.ends[1], STDOUT_FILENO); }), "printed");
    EXPECT_EQ(pipe.empty(), "ident_mem=7\n");
    signal(SIGPIPE, SIG_DFL);
}

// Longer than what a terminal takes at a time.
TEST(Messages, ASlowTerminalGetsAllOfIt) {
    const test_terminal terminal;
    const std::string text(100'000, 'x');
    std::string seen;
    std::thread reading([&] {
        while (seen.size() < text.size()) {
            char bytes[999];
            pollfd wanted{terminal.master, POLLIN, 0};
            if (poll(&wanted, 1, 10'000) != 1) return;
            const ssize_t count = read(terminal.master, bytes, sizeof bytes);
            if (count <= 0) return;
            seen.append(bytes, static_cast<std::size_t>(count));
        }
    });
    EXPECT_EQ(printing_on([&] { dup2(terminal.slave, STDOUT_FILENO); }, text + "\n"), "printed");
    reading.join();
    EXPECT_EQ(seen.substr(0, text.size()), text);
}

TEST(Messages, StreamsThatTheCallerClosedGoNowhereAndNoFileGetsTheirNumber) {
    const outcome end = run_in_child([] {
        for (const int stream : {0, 1, 2}) close(stream);
        open_closed_streams(closed_stream::swallows);
        const int next = open("/dev/null", O_RDONLY);
        message_stream("essai").say("personne");
        print_at_once("personne");
        char byte;
        _exit(next > 2 && read(0, &byte, 1) == 0 ? 0 : 1);
    });
    EXPECT_EQ(end.status, 0);
    EXPECT_EQ(end.err, "");
}

TEST(Messages, AClosedOutputThatShouldTakeNothingFailsWhoWritesOnIt) {
    const outcome end = run_in_child([] {
        close(1);
        open_closed_streams(closed_stream::takes_nothing);
        try {
            print_at_once("personne");
        } catch (const failure& why) {
            _exit(why.status == exit_status::refused ? 7 : 8);
        }
    });
    EXPECT_EQ(end.status, 7);
}

TEST(Messages, StreamsThatAreOpenStayAsTheyAre) {
    const outcome end = run_in_child([] {
        close(0);
        open_closed_streams(closed_stream::swallows);
        message_stream("essai").say("là");
        print_at_once("là\n");
    });
    EXPECT_EQ(end.out, "là\n");
    EXPECT_EQ(end.err, "essai: là\n");
}

}  // namespace
