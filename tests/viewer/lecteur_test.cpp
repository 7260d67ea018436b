// The example program, from outside: its documents without a display, and its window.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/support/programs.h"
#include "tests/support/screen.h"

namespace {

std::size_t count(const std::string& text, const std::string& part) {
    std::size_t found = 0;
    for (auto at = text.find(part); at != std::string::npos; at = text.find(part, at + 1)) ++found;
    return found;
}

class Lecteur : public testing::Test {
    leaves_nothing nothing_;
    current_folder folder_;

protected:
    /// As a user without a display runs it.
    outcome run(std::vector<std::string> words) {
        words.insert(words.begin(), {"env", "-u", "DISPLAY", built("lecteur")});
        return run_program(words);
    }
};

TEST_F(Lecteur, ExportsPlainTextWithEveryCharacterThatReadersKnow) {
    write_bytes("a.c", "#include <x>\r\n\tf(\"\\n\"); // #1\n\n" + std::string(250, 'w') + "end");
    const outcome done = run({"a.c", "--pdf", "a.pdf", "--ps", "a.ps", "--txt", "a.txt"});
    EXPECT_EQ(done.status, 0);
    EXPECT_EQ(done.out + done.err, "");
    EXPECT_EQ(bytes_of("a.txt"),
              "#include <x>\n\tf(\"\\n\"); // #1\n\n" + std::string(250, 'w') + "end\n");
    EXPECT_EQ(count(bytes_of("a.pdf"), ") Tj"), 6u);
    for (const std::string reader :
         {"pdftotext -layout a.pdf - 2>/dev/null", "gs -q -sDEVICE=txtwrite -o - a.ps"}) {
        // Readers indent as they like.
        const std::string read = run_program({"sh", "-c", reader}).out;
        for (const std::string part : {"#include <x>", "f(\"\\n\"); // #1", "wend"})
            EXPECT_NE(read.find(part), std::string::npos) << reader << "\n" << read;
        EXPECT_EQ(count(read, "w"), 250u) << reader;
    }
}

TEST_F(Lecteur, ExportsADocumentOfTheViewersMarkupAsItStands) {
    std::string text = "#C T10 T5 T\n#T\n";
    for (int i = 0; i < 80; ++i) text += "a" + std::to_string(i) + "#b\n";
    write_bytes("table", text);
    EXPECT_EQ(run({"table", "--ps", "t.ps", "--txt", "t.txt"}).status, 0);
    EXPECT_EQ(count(bytes_of("t.ps"), "showpage\n"), 2u);
    EXPECT_NE(bytes_of("t.ps").find("95 780 moveto (b) show\n"), std::string::npos);
    const std::string dashes = std::string(55, '-') + "\n";
    EXPECT_TRUE(bytes_of("t.txt").starts_with(dashes + dashes + "a0#b\n"));
}

TEST_F(Lecteur, AnEmptyFileIsAnEmptyDocument) {
    write_bytes("empty", "");
    EXPECT_EQ(run({"empty", "--pdf", "e.pdf", "--txt", "e.txt"}).status, 0);
    EXPECT_TRUE(bytes_of("e.pdf").starts_with("%PDF-1.4\n"));
    EXPECT_EQ(bytes_of("e.txt"), "");
}

TEST_F(Lecteur, SaysThatADocumentDoesNotFitWhereNoFileMayGrowSoFar) {
    write_bytes("long", std::string(100'000, 'w'));
    for (const std::string option : {"--pdf", "--ps", "--txt"}) {
        const outcome done = run_program({"sh", "-c",
                                          "{ (ulimit -f 1; exec " + built("lecteur") + " long " +
                                              option + " out 2>&1); echo $?; } | cat"});
        EXPECT_EQ(done.out, "lecteur: ne peut pas écrire out: File too large\n1\n") << option;
    }
}

// What it is asked, and the status and the line that answer; "" for any line.
const struct {
    std::vector<std::string> words;
    int status;
    std::string why;
} refusals[] = {{{"nowhere", "--pdf", "o"},
                 1,
                 "lecteur: ne peut pas lire nowhere: No such file or directory\n"},
                {{".", "--txt", "o"}, 1, "lecteur: ne peut pas lire .: Is a directory\n"},
                {{"a", "--pdf", "no/where"},
                 1,
                 "lecteur: ne peut pas \xC3\xA9"
                 "crire no/where: No such file or directory\n"},
                {{"a", "--ps", "/dev/full"},
                 1,
                 "lecteur: ne peut pas \xC3\xA9"
                 "crire /dev/full: No space left on device\n"},
                {{"a"},
                 1,
                 "lecteur: pas d'\xC3\xA9"
                 "cran; --pdf, --ps et --txt s'en passent\n"},
                {{}, 2, "lecteur: FICHIER is required\n"},
                {{"a", "b"}, 2, ""},
                {{"a", "--pdf"}, 2, ""},
                {{"a", "--pdf", ""}, 2, "lecteur: --pdf: le nom est vide\n"},
                {{"a", "--ps="}, 2, ""},
                {{"a", "--txt", ""}, 2, "lecteur: --txt: le nom est vide\n"},
                {{"a", "--txt", "o", "--pdf", ""}, 2, "lecteur: --pdf: le nom est vide\n"},
                {{"a", "--viewer", ""}, 2, "lecteur: --viewer: le nom est vide\n"},
                {{""}, 2, "lecteur: FICHIER: le nom est vide\n"},
                {{"a", "--what"}, 2, ""}};

TEST_F(Lecteur, RefusesInOneLine) {
    write_bytes("a", "x");
    for (const auto& [words, status, why] : refusals) {
        const outcome refused = run(words);
        SCOPED_TRACE(refused.err);
        EXPECT_EQ(refused.status, status);
        EXPECT_EQ(refused.out, "");
        if (!why.empty()) {
            EXPECT_EQ(refused.err, why);
        }
        EXPECT_TRUE(refused.err.starts_with("lecteur: "));
        EXPECT_EQ(count(refused.err, "\n"), 1u);
    }
    EXPECT_EQ(run({"--help"}).status, 0);
}

TEST_F(Lecteur, ItsWindowShowsTheFileUntilCancelled) {
    std::string text;
    for (int i = 0; i < 200; ++i) text += "ligne " + std::to_string(i) + " # fin\n";
    write_bytes("notes", text);
    screen display;
    program reader({built("lecteur"), "notes", "--english"});
    ASSERT_TRUE(display.wait_for_windows(1));
    const x_window window = display.windows().back();
    ASSERT_TRUE(wait_until([&] { return display.area(window).w == 920; }));
    EXPECT_EQ(display.area(window).h, 700);
    ASSERT_TRUE(wait_until([&] {
        display.click(window, 85, 655);
        return !reader.running();
    }));
    EXPECT_EQ(reader.wait(), 0);
    EXPECT_EQ(reader.out() + reader.err(), "");
}

}  // namespace
