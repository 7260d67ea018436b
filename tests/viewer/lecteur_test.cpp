// The example program, from outside: its documents without a display, and its window.
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
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

// 77 counted lines a page, its columns as on the screen.
TEST_F(Lecteur, ExportsThePagesAsTheWindowShowsThem) {
    std::string text = "#C T6 5 T\n#T\n", expected = "\n" + std::string(11, '-') + "\n";
    for (int i = 1; i <= 80; ++i) {
        const std::string number = std::to_string(i);
        text += "a" + number + "#longer\n";
        expected += "a" + number + std::string(5 - number.size(), ' ') + "longe\n";
        if (i == 76) expected += "\f";
    }
    write_bytes("table", text);
    EXPECT_EQ(run({"table", "--pages", "t.txt"}).status, 0);
    EXPECT_EQ(bytes_of("t.txt"), expected);

    write_bytes("plain", "@f@S14 un\n\tdeux");
    EXPECT_EQ(run({"plain", "--pages", "p.txt"}).status, 0);
    EXPECT_EQ(bytes_of("p.txt"), "\n@f@S14 un\n        deux\n");
}

TEST_F(Lecteur, AnEmptyFileIsAnEmptyDocument) {
    write_bytes("empty", "");
    EXPECT_EQ(run({"empty", "--pdf", "e.pdf", "--txt", "e.txt", "--pages", "p.txt"}).status, 0);
    EXPECT_TRUE(bytes_of("e.pdf").starts_with("%PDF-1.4\n"));
    EXPECT_EQ(bytes_of("e.txt"), "");
}

TEST_F(Lecteur, SaysThatADocumentDoesNotFitWhereNoFileMayGrowSoFar) {
    write_bytes("long", std::string(100'000, 'w'));
    for (const std::string option : {"--pdf", "--ps", "--txt", "--pages"}) {
        const outcome done = run_program({"sh", "-c",
                                          "{ (ulimit -f 1; exec " + built("lecteur") + " long " +
                                              option + " out 2>&1); echo $?; } | cat"});
        EXPECT_EQ(done.out, "lecteur: ne peut pas écrire out: File too large\n1\n") << option;
        EXPECT_EQ(std::distance(std::filesystem::directory_iterator("."), {}), 1) << option;
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
                 "cran; --pdf, --ps, --txt et --pages s'en passent\n"},
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

// What each reader shows of "a.pdf" and "a.ps". Readers indent as they like.
const std::string readers[] = {
    "pdftotext -layout -enc UTF-8 a.pdf - 2>/dev/null", "mutool draw -q -F txt a.pdf 2>/dev/null",
    "gs -q -sDEVICE=txtwrite -o - a.pdf 2>/dev/null", "gs -q -sDEVICE=txtwrite -o - a.ps"};

TEST_F(Lecteur, ExportsUtf8AndWhatIsNotUtf8AsLatin1) {
    const std::string utf8 = "caf\xC3\xA9 \xC3\x80 \xC2\xAB x \xC2\xBB (l'heure) \xE2\x82\xAC #1\n";
    for (const std::string& text : {utf8, "\xEF\xBB\xBF" + utf8, "#C 80 \n" + utf8,
                                    std::string("caf\xE9 \xC0 \xAB x \xBB (l'heure) ? #1\n")}) {
        write_bytes("a", text);
        EXPECT_EQ(run({"a", "--pdf", "a.pdf", "--ps", "a.ps", "--txt", "a.txt"}).status, 0);
        const bool markup = text.starts_with("#C");
        for (const std::string& reader : readers) {
            const std::string read = run_program({"sh", "-c", reader}).out;
            const bool pdf = reader.find(".pdf") != std::string::npos;
            const std::string letters = pdf ? "caf\xC3\xA9 \xC3\x80" : "cafe A";
            const std::string heure = markup ? "l'heure ?" : "(l'heure) ? #1";
            EXPECT_NE(read.find(letters + " \xC2\xAB x \xC2\xBB " + heure), std::string::npos)
                << reader << "\n"
                << read;
        }
        const std::string dashes = std::string(55, '-') + "\n";
        EXPECT_EQ(bytes_of("a.txt"), markup ? dashes + utf8 : text);
    }
}

// A reader rebuilds a document by the words in it.
TEST_F(Lecteur, ATextCannotBecomeAPartOfItsDocument) {
    const std::string objects =
        "1 0 obj << /Type /Catalog /Pages 99 0 R >> endobj\n"
        "99 0 obj << /Type /Pages /Kids [98 0 R] /Count 7 >> endobj\n"
        "98 0 obj << /Type /Page /Parent 99 0 R /MediaBox [0 0 10 10] >> endobj\n";
    std::string in_a_line = objects;
    std::ranges::replace(in_a_line, '\n', '\r');
    const std::string hostile = "avant\nendstream endobj\n" + objects + "back\\\nendst(ream " +
                                in_a_line + "\ntrailer << /Root 1 0 R >>\nfinale\n";
    const std::vector<std::string> all = {"avant", "endstream endobj", "back\\", "/Parent 99 0 R",
                                          "finale"};
    const struct {
        std::string definition;
        std::vector<std::string> shown;
    } cases[] = {{"", all}, {"#C 200 \n", all}, {"#C 5 \n", {"avant", "98 0", "back", "final"}}};
    for (const auto& [definition, shown] : cases) {
        write_bytes("a", definition + hostile);
        EXPECT_EQ(run({"a", "--pdf", "a.pdf", "--ps", "a.ps"}).status, 0);
        const std::string about = run_program({"sh", "-c", "pdfinfo a.pdf 2>/dev/null"}).out;
        EXPECT_NE(about.find("\nPages:           1\n"), std::string::npos) << about;
        for (const std::string& reader : readers) {
            const std::string read = run_program({"sh", "-c", reader}).out;
            for (const std::string& part : shown)
                EXPECT_NE(read.find(part), std::string::npos) << reader << part << "\n" << read;
        }
    }
}

TEST_F(Lecteur, ItsWindowExportsTheSameDocuments) {
    write_bytes("notes", "caf\xC3\xA9 # endstream\n");
    write_script("keep", "cp \"$1\" seen.pdf\n");
    EXPECT_EQ(run({"notes", "--pdf", "a.pdf"}).status, 0);
    screen display;
    program reader({built("lecteur"), "notes", "--viewer", "./keep"});
    ASSERT_TRUE(display.wait_for_windows(1));
    const x_window window = display.windows().back();
    ASSERT_TRUE(wait_until([&] {
        if (display.windows().size() == 1) display.click(window, 550, 655);
        return display.windows().size() == 2;
    }));
    // A click too many has written it again, and told so again.
    ASSERT_TRUE(wait_until([&] {
        if (display.windows().size() == 2)
            display.key(XK_Return);
        else
            display.click(window, 85, 655);
        return !reader.running();
    }));
    EXPECT_EQ(bytes_of("seen.pdf"), bytes_of("a.pdf"));
}

}  // namespace
