// The pages for lessons, French and English: their commands as they are written, what they print,
// and their table of exercises.
#include <gtest/gtest.h>

#include <regex>

#include "tests/end_to_end/zk4sim_session.h"
#include "tests/support/pages.h"

namespace {

const std::string recordings = QUORIN_SOURCE "/tests/lesson/";

struct pages_row {
    std::string language, teacher, student;
};

class LessonPages : public testing::TestWithParam<pages_row> {
protected:
    // ./run without a display: a session that ends at once, or a replay.
    LessonPages() {
        write_script("run",
                     "case $1 in --play) exec zk4sim --headless \"$@\" ;; esac\n"
                     "exec zk4sim --headless --exec true \"$@\"\n");
        std::filesystem::create_directory("classe");
    }
    static void keep(const std::string& recording, const std::string& as) {
        write_bytes(as, bytes_of(recordings + recording + ".csv"));
    }
    static outcome shell(const std::string& script) {
        return run_program({"sh", "-c", script},
                           {"PATH=" QUORIN_PROGRAMS ":" + std::string(getenv("PATH"))});
    }
    static std::vector<std::string> blocks(const std::string& page_name, const std::string& of) {
        return code_blocks(page("docs/" + page_name), of);
    }

    const current_folder here_;
    const runtime_folder folder_;
    leaves_nothing nothing_;
};

TEST_P(LessonPages, EveryCommandOfTheTeachersPageDoesWhatItSays) {
    const std::vector<std::string> commands = blocks(GetParam().teacher, "sh"),
                                   printed = blocks(GetParam().teacher, "text");
    ASSERT_EQ(commands.size(), 6u);
    ASSERT_EQ(printed.size(), 2u);
    keep("05_un_bon_support/reference", "classe/poste01.csv");
    keep("05_un_bon_support/colle_jusqu_au_depart", "classe/poste02.csv");
    keep("06_trois_bons_supports/reference", "classe/poste03.csv");
    write_bytes("lundi.toml", blocks(GetParam().teacher, "toml").at(0));
    const struct {
        std::size_t block;
        int status;  ///< of the last line: a session that ends at once is not passed
    } rows[] = {{0, 0}, {1, 3}, {2, 3}, {3, 3}, {4, 0}, {5, 3}};
    for (const auto& [block, status] : rows) {
        outcome end;
        for (const std::string& line : lines_of(commands[block])) {
            end = shell(line);
            EXPECT_TRUE(end.status == 0 || end.status == 3) << line << "\n" << end.err;
        }
        EXPECT_EQ(end.status, status) << commands[block] << end.err;
    }
    EXPECT_NE(bytes_of("poste7.csv").find(",exercice,titre,La panne du lundi\n"),
              std::string::npos);
    EXPECT_EQ(bytes_of("lundi_eleves.toml").find("MONV"), std::string::npos);
    const outcome marked = shell("exec 2>&1\n" + lines_of(commands[3]).at(0));
    EXPECT_EQ(marked.out, printed[0] + printed[1]);
    EXPECT_NE(bytes_of("verdicts.txt").find("c'est arrivé à 10.560 s"), std::string::npos);
    EXPECT_TRUE(bytes_of("classe.pdf").starts_with("%PDF-"));
    EXPECT_EQ(lines_of(bytes_of("notes.csv")).size(), 4u);
}

TEST_P(LessonPages, EveryCommandOfTheStudentsPageDoesWhatItSays) {
    const std::vector<std::string> commands = blocks(GetParam().student, "sh"),
                                   printed = blocks(GetParam().student, "text");
    ASSERT_EQ(commands.size(), 4u);
    const outcome begun = shell(commands[0]);
    EXPECT_EQ(begun.status, 3) << begun.err;
    EXPECT_NE(bytes_of("moi.csv").find("\n0,session,titre,poste 7\n"), std::string::npos);
    {
        controlled_station running({"--exercise", "09_capteur_bloque", "--no-panel"});
        // The youngest session may be somebody else's.
        const std::string answer =
            std::regex_replace(commands[1], std::regex("--last"), running.ident);
        EXPECT_EQ(shell(answer).status, 0) << answer;
        const double answered_s = running.simulated_s();
        EXPECT_TRUE(wait_until([&] { return running.simulated_s() > answered_s + 0.05; }));
        EXPECT_EQ(running.end(), 3);
        EXPECT_NE(running.process->err().find("Diagnostic : vb=stuck1, faux, "), std::string::npos);
    }
    keep("05_un_bon_support/presse_trop_courte", "moi.csv");
    const outcome marked = shell("quorin-lesson mark --verbose 05_un_bon_support moi.csv");
    for (const std::string& line : lines_of(printed.at(0)))
        EXPECT_NE(marked.out.find("\n" + line + "\n"), std::string::npos) << line;
    for (const std::size_t block : {2, 3}) {
        const outcome end = shell(commands[block]);
        EXPECT_EQ(end.status, 0) << commands[block] << end.err;
    }
}

/// The exercises as the programs list them: name and points.
std::vector<std::string> listed_exercises() {
    std::vector<std::string> all;
    for (const std::string& line : lines_of(run_program({built("quorin-lesson"), "list"}).out))
        all.push_back(line.substr(0, line.find('\t')) + line.substr(line.rfind('\t')));
    return all;
}

/// How long one lasts at most, as its task tells it.
int most_seconds(const std::string& exercise) {
    const std::string task = run_program({built("quorin-lesson"), "show", exercise}).out;
    std::smatch found;
    return std::regex_search(task, found, std::regex("Durée : (\\d+) s")) ? std::stoi(found[1]) : 0;
}

TEST_P(LessonPages, TheTableHasEveryExerciseWithItsPointsAndTimeEnough) {
    static const std::regex row(R"(\| `(\w+)` \| (\d+) \| (\d+) \|[^|]+\|)");
    const std::string text = page("docs/" + GetParam().teacher);
    std::vector<std::string> told;
    for (std::sregex_iterator each(text.begin(), text.end(), row), end; each != end; ++each) {
        told.push_back((*each)[1].str() + '\t' + (*each)[2].str());
        EXPECT_LE(std::stoi((*each)[3]) * 60, most_seconds((*each)[1])) << (*each)[1];
    }
    EXPECT_EQ(told.size(), 10u);
    EXPECT_EQ(told, listed_exercises());
}

INSTANTIATE_TEST_SUITE_P(Both, LessonPages,
                         testing::Values(pages_row{"French", "lecon.md", "exercice_eleve.md"},
                                         pages_row{"English", "lecon_en.md",
                                                   "exercice_eleve_en.md"}),
                         [](const auto& row) { return row.param.language; });

}  // namespace
