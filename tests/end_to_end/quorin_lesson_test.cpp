// quorin-lesson: its commands, what it says, its statuses, and what it leaves on the disk.
#include <gtest/gtest.h>
#include <fcntl.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <csignal>

#include "lesson/exercise_file.h"
#include "programs/quorin_lesson/command_table.h"
#include "tests/support/pages.h"
#include "tests/support/programs.h"
#include "workcell/workcell_model.h"

namespace {

using words = std::vector<std::string>;

outcome lesson(words arguments, const words& environment = {}) {
    arguments.insert(arguments.begin(), built("quorin-lesson"));
    return run_program(arguments, environment);
}

/// The same with a shell's redirections.
outcome lesson_in_shell(const std::string& rest) {
    return run_program({"sh", "-c", built("quorin-lesson") + " " + rest});
}

/// The rights of a file.
mode_t mode_of(const char* file) {
    struct stat found {};
    return stat(file, &found) == 0 ? found.st_mode & 07777 : 0;
}

const std::string good =
    "format = 1\ntitre = \"T\"\nenonce = \"E\"\n"
    "[station]\npannes_cachees = [\"b2s=stuck1\"]\n"
    "[diagnostic]\npannes = [\"b2s=stuck1\"]\n";

class QuorinLesson : public testing::Test {
protected:
    void SetUp() override {
        write_bytes("good.toml", good);
        write_bytes("bad.toml", "format = 1\ntitre = \"\"\nenonce = \"E\"\n[[but]]\nqand = 3\n");
    }
    void expect_only(const words& names) const {
        words found;
        for (const auto& each : std::filesystem::directory_iterator(here_.path()))
            found.push_back(each.path().filename());
        std::ranges::sort(found);
        EXPECT_EQ(found, names);
    }
    current_folder here_;
};

TEST_F(QuorinLesson, RefusesWhatItDoesNotUnderstandWithOneLine) {
    const struct {
        words arguments;
        std::string err;
    } rows[] = {
        {{}, "ligne de commande incomplète (voir --help)"},
        {{""}, "ligne de commande incomprise: "},
        {{"lsit"}, "ligne de commande incomprise: lsit"},
        {{"a\nb"}, "ligne de commande incomprise: a\\x0Ab"},
        {{"--english"}, "ligne de commande incomprise: --english"},
        {{"list", "x"}, "ligne de commande incomprise: x"},
        {{"list", "-o", "x"}, "ligne de commande incomprise: -o"},
        {{"list", "--english=1"}, "ligne de commande incomprise: --english=1"},
        {{"show"}, "ligne de commande incomplète (voir --help)"},
        {{"show", ""}, "ligne de commande incomplète (voir --help)"},
        {{"show", "good.toml", "bad.toml"}, "ligne de commande incomprise: bad.toml"},
        {{"check"}, "ligne de commande incomplète (voir --help)"},
        {{"check", "good.toml", "--english"}, "ligne de commande incomprise: --english"},
        {{"hide", "good.toml"}, "hide: -o FICHIER est attendu"},
        {{"hide", "-o", "x"}, "ligne de commande incomplète (voir --help)"},
        {{"hide", "good.toml", "-o", ""}, "-o: une valeur est attendue"},
        {{"hide", "good.toml", "-o"}, "ligne de commande incomprise: -o"},
        {{"hide", "good.toml", "-o", "x", "-o", "y"}, "ligne de commande incomprise: -o"},
    };
    for (const auto& [arguments, err] : rows) {
        const outcome end = lesson(arguments);
        const std::string shown = testing::PrintToString(arguments);
        EXPECT_EQ(end.status, 2) << shown;
        EXPECT_EQ(end.out, "") << shown;
        EXPECT_EQ(end.err, "quorin-lesson: " + err + "\n") << shown;
    }
    expect_only({"bad.toml", "good.toml"});
}

TEST_F(QuorinLesson, HelpAndVersionWinWhereverTheyStand) {
    for (const words& arguments :
         {words{"--help"}, {"-h"}, {"show", "--help"}, {"--help", "x"}, {"hide", "x", "-h"}}) {
        const outcome end = lesson(arguments);
        EXPECT_EQ(end.status, 0);
        EXPECT_NE(end.out.find("Usage: quorin-lesson"), std::string::npos);
        EXPECT_EQ(end.err, "");
    }
    for (const words& arguments : {words{"--version"}, {"list", "--version"}, {"x", "--version"}})
        EXPECT_EQ(lesson(arguments).out, "quorin-lesson " QUORIN_VERSION "\n");
    EXPECT_EQ(lesson_in_shell("--help 2>&-").status, 0);
}

TEST_F(QuorinLesson, AStandardOutputThatTakesNothingIsStatus1) {
    for (const std::string command :
         {"list", "show good.toml", "hide good.toml -o -", "--help", "--version"})
        for (const std::string stream : {" >/dev/full", " >&-"}) {
            const outcome end = lesson_in_shell(command + stream);
            EXPECT_EQ(end.status, 1) << command << stream;
            EXPECT_EQ(end.err, "quorin-lesson: la sortie standard ne prend rien\n") << command;
        }
}

TEST_F(QuorinLesson, ListsTheBundledExercises) {
    const outcome end = lesson({"list"});
    EXPECT_EQ(end.status, 0) << end.err;
    EXPECT_EQ(lines_of(end.out).at(0), "01_premiere_commande\tUne première commande\t4");
    EXPECT_EQ(lines_of(lesson({"list", "--english"}).out).at(0),
              "01_premiere_commande\tA first command\t4");
    for (const std::string& line : lines_of(end.out))
        EXPECT_EQ(std::ranges::count(line, '\t'), 2) << line;
}

TEST_F(QuorinLesson, ListsWhatCanBeReadAndSaysWhatCannot) {
    const outcome end = lesson({"list"}, {"QUORIN_EXERCICES=" + here_.path().string()});
    EXPECT_EQ(end.status, 1);
    EXPECT_EQ(end.out, "good\tT\t1\n");
    const std::string bad = (here_.path() / "bad.toml").string();
    EXPECT_TRUE(end.err.starts_with(bad + ":2: titre: ")) << end.err;
    const outcome none = lesson({"list"}, {"QUORIN_EXERCICES=/none"});
    EXPECT_EQ(none.status, 1);
    EXPECT_EQ(none.err, "quorin-lesson: /none: fichier ou dossier introuvable\n");
}

TEST_F(QuorinLesson, ShowsTheTaskOfAFileOrOfABundledOne) {
    EXPECT_EQ(lesson({"show", "good.toml"}).out,
              "T\n\nE\n\nDiagnostic : trouver ce qui est en panne, et de quelle panne (1 point)\n"
              "Total : 1 point\n");
    EXPECT_TRUE(lesson({"show", "02_bloqueurs"}).out.starts_with("Les trois bloqueurs\n\n"));
    EXPECT_TRUE(lesson({"show", "02_bloqueurs", "--english"}).out.starts_with("The three "));
    EXPECT_EQ(lesson_in_shell("show - <good.toml").out, lesson({"show", "good.toml"}).out);
    const outcome none = lesson({"show", "11_rien"});
    EXPECT_EQ(none.status, 1);
    EXPECT_EQ(none.err,
              "quorin-lesson: 11_rien: ni un fichier ni un exercice fourni (voir quorin-lesson "
              "list)\n");
}

TEST_F(QuorinLesson, ChecksInSilenceOrTellsEveryLine) {
    const outcome fine = lesson({"check", "good.toml"});
    EXPECT_EQ(fine.status, 0);
    EXPECT_EQ(fine.out + fine.err, "");
    const outcome wrong = lesson({"check", "bad.toml"});
    EXPECT_EQ(wrong.status, 1);
    EXPECT_EQ(wrong.out, "");
    EXPECT_EQ(wrong.err,
              "bad.toml:2: titre: ce texte est vide\n"
              "bad.toml:4: il manque texte\n"
              "bad.toml:4: il manque quand\n"
              "bad.toml:5: qand: inconnu ici; il y a texte, texte_en, quand, tenir_s, avant_s, "
              "points\n");
    EXPECT_EQ(lesson({"check", "."}).err, "quorin-lesson: .: c'est un dossier\n");
    EXPECT_EQ(lesson({"check", "--", "-x"}).err,
              "quorin-lesson: -x: fichier ou dossier introuvable\n");
}

TEST_F(QuorinLesson, TellsAsManyLinesAsThereAre) {
    std::string text = good;
    for (int i = 0; i < 20'000; ++i) text += "k" + std::to_string(i) + " = 1\n";
    write_bytes("bad.toml", text);
    const outcome end = lesson_in_shell("check bad.toml 2>&1 | (sleep 0.3; cat)");
    EXPECT_EQ(lines_of(end.out).size(), 20'000u);
}

TEST_F(QuorinLesson, HidesInAFileThatReadsTheSame) {
    EXPECT_EQ(lesson({"hide", "good.toml", "-o", "out.toml"}).status, 0);
    expect_only({"bad.toml", "good.toml", "out.toml"});
    EXPECT_EQ(bytes_of("out.toml").find("b2s"), std::string::npos);
    EXPECT_EQ(lesson({"check", "out.toml"}).status, 0);
    EXPECT_EQ(lesson({"show", "out.toml"}).out, lesson({"show", "good.toml"}).out);
    exercise copy = read_exercise_file("out.toml", workcell_model(0));
    const exercise first = read_exercise_file("good.toml", workcell_model(0));
    copy.digest = first.digest;
    EXPECT_EQ(copy, first);
    EXPECT_EQ(lesson({"hide", "good.toml", "-o", "-"}).out, bytes_of("out.toml"));
    EXPECT_EQ(lesson_in_shell("hide - -o - <good.toml").out, bytes_of("out.toml"));
}

TEST_F(QuorinLesson, ReplacesAFileWholeOrNotAtAll) {
    write_bytes("out.toml", "old");
    std::filesystem::create_symlink("out.toml", "link.toml");
    chmod("out.toml", 0640);
    EXPECT_EQ(lesson({"hide", "bad.toml", "-o", "out.toml"}).status, 1);
    EXPECT_EQ(bytes_of("out.toml"), "old");
    EXPECT_EQ(lesson_in_shell("hide good.toml -o /dev/full").status, 1);
    EXPECT_EQ(run_program({"sh", "-c", "ulimit -f 0; exec \"$0\" hide good.toml -o out.toml",
                           built("quorin-lesson")})
                  .status,
              1);
    EXPECT_EQ(bytes_of("out.toml"), "old");
    EXPECT_EQ(lesson({"hide", "good.toml", "-o", "link.toml"}).status, 0);
    EXPECT_TRUE(std::filesystem::is_symlink("link.toml"));
    EXPECT_TRUE(bytes_of("out.toml").starts_with("format = 1\n"));
    EXPECT_EQ(mode_of("out.toml"), 0640u) << "who may read it stays as it was";
    expect_only({"bad.toml", "good.toml", "link.toml", "out.toml"});
}

TEST_F(QuorinLesson, ANewFileHasTheRightsThatItsUserGives) {
    for (const auto& [mask, mode] : {std::pair{"022", 0644u}, {"027", 0640u}, {"077", 0600u}}) {
        std::filesystem::remove("new.toml");
        const std::string hide = built("quorin-lesson") + " hide good.toml -o new.toml";
        EXPECT_EQ(run_program({"sh", "-c", std::string("umask ") + mask + "; " + hide}).status, 0);
        EXPECT_EQ(mode_of("new.toml"), mode) << mask;
    }
}

// Killed once all is written, and before it has a name.
TEST_F(QuorinLesson, LeavesNothingWhenItIsKilledWhileItWrites) {
    const int nameless = open(".", O_WRONLY | O_TMPFILE, 0600);
    if (nameless < 0) GTEST_SKIP() << "a kill while a file is written: a disk with nameless files";
    close(nameless);
    write_bytes("old.toml", "mine");
    for (const char* const goal : {"old.toml", "new.toml"}) {
        const outcome end = run_program({built("with_refused_call"), "fsync",
                                         built("quorin-lesson"), "hide", "good.toml", "-o", goal});
        if (end.status == 77)
            GTEST_SKIP() << "a kill while a file is written: filters of system calls";
        EXPECT_EQ(end.status, 128 + SIGSYS) << end.err;
    }
    expect_only({"bad.toml", "good.toml", "old.toml"});
    EXPECT_EQ(bytes_of("old.toml"), "mine");
}

TEST_F(QuorinLesson, RefusesAnOutputThatItCannotReplace) {
    std::filesystem::create_directory("folder");
    std::filesystem::create_hard_link("good.toml", "same.toml");
    ASSERT_EQ(mkfifo("pipe", 0600), 0);
    const struct {
        std::string out, why;
    } rows[] = {{"good.toml", "c'est l'exercice qui est lu"},
                {"./good.toml", "c'est l'exercice qui est lu"},
                {"same.toml", "c'est l'exercice qui est lu"},
                {"folder", "c'est un dossier"},
                {"pipe", "ce n'est pas un fichier ordinaire"},
                {"/dev/null", "ce n'est pas un fichier ordinaire"},
                {"none/out.toml", "fichier ou dossier introuvable"}};
    for (const auto& [out, why] : rows) {
        const outcome end = lesson({"hide", "good.toml", "-o", out});
        EXPECT_EQ(end.status, 1) << out;
        EXPECT_EQ(end.err, "quorin-lesson: " + out + ": " + why + "\n");
    }
    EXPECT_EQ(bytes_of("good.toml"), good);
    expect_only({"bad.toml", "folder", "good.toml", "pipe", "same.toml"});
}

TEST(QuorinLessonWords, StandInTheHelpTheManPageAndTheDocs) {
    const std::string help = lesson({"--help"}).out, man = page("docs/man/quorin-lesson.1"),
                      docs = page("docs/exercises.md");
    for (const command_row& each : command_table()) {
        EXPECT_NE(help.find(std::string("\n  ") + each.word), std::string::npos) << each.word;
        EXPECT_NE(man.find(std::string("quorin-lesson ") + each.word), std::string::npos);
        EXPECT_NE(docs.find(std::string("quorin-lesson ") + each.word), std::string::npos);
        EXPECT_EQ(std::string(each.operands).empty(), each.most == 0) << each.word;
    }
    for (const lesson_option_row& each : option_table()) {
        std::string printed = each.word;
        for (std::size_t at = 0; (at = printed.find('-', at)) != std::string::npos; at += 2)
            printed.insert(at, "\\");
        EXPECT_NE(help.find(std::string("  ") + each.word), std::string::npos) << each.word;
        EXPECT_NE(man.find(printed), std::string::npos) << each.word;
        EXPECT_NE(docs.find(each.word), std::string::npos) << each.word;
    }
}

}  // namespace
