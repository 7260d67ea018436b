// The report on a class: its table, and each verdict whole on a page.
#include "programs/quorin_lesson/class_report.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "lesson/bundled_exercises.h"
#include "lesson/exercise_file.h"
#include "tests/support/files.h"
#include "viewer/line_markup.h"
#include "workcell/workcell_model.h"

namespace {

const std::string task_name = "05_un_bon_support";

exercise task() { return read_exercise_file(bundled_exercise_file(task_name), workcell_model(0)); }

/// One recording that is passed, one that is not, one that is refused.
std::vector<marked_recording> three_kinds(const exercise& task) {
    const temporary_folder files;
    write_bytes(files / "text.csv", "x\n");
    const std::string folder = QUORIN_SOURCE "/tests/lesson/" + task_name;
    return {mark_recording(task, folder + "/reference.csv"),
            mark_recording(task, folder + "/sans_colle.csv"),
            mark_recording(task, files / "text.csv")};
}

/// So many recordings, each with a name of its own; every fifth is refused.
std::vector<marked_recording> marked_class(const std::vector<marked_recording>& kinds, int size) {
    std::vector<marked_recording> all;
    for (int i = 0; i < size; ++i) {
        all.push_back(kinds.at(i % 5 == 4 ? 2 : i % 2));
        std::string& refusal = all.back().refusal;
        const std::string name = "poste" + std::to_string(i) + ".csv";
        if (!refusal.empty()) refusal.replace(0, all.back().file.size(), name);
        all.back().file = name;
    }
    return all;
}

bool is_end(const std::string& line) {
    return line.starts_with(" Exercice réussi à ") ||
           line.starts_with(" Exercice non réussi, terminé à ") || line.starts_with(" Refusé : ");
}

TEST(ClassReport, SumsUpAndHasATableInWords) {
    const exercise what = task();
    const std::vector<marked_recording> all = marked_class(three_kinds(what), 7);
    const std::vector<std::string> lines = class_lines(what, all);
    const auto has = [&](const std::string& line) { return std::ranges::count(lines, line) == 1; };
    EXPECT_EQ(lines.at(2), " Exercice : Un bon support");
    EXPECT_TRUE(has(" Enregistrements : 7, réussis : 3, non réussis : 3, refusés : 1"));
    EXPECT_TRUE(has(" fichier# résultat# points# total# secondes"));
    EXPECT_TRUE(std::ranges::any_of(lines, [](const auto& line) {
        return line.starts_with(" poste0.csv# réussi# 15# 15# 57.660");
    }));
    EXPECT_TRUE(std::ranges::any_of(lines, [](const auto& line) {
        return line.starts_with(" poste1.csv# non réussi# 0# 15# 54.600");
    }));
    EXPECT_TRUE(std::ranges::any_of(
        lines, [](const auto& line) { return line.starts_with(" poste4.csv# refusé# # # "); }));
    EXPECT_TRUE(has(" Refusé : ligne 1: moins de quatre champs"));
}

TEST(ClassReport, EveryVerdictStandsWholeOnItsPage) {
    const exercise what = task();
    const std::vector<marked_recording> kinds = three_kinds(what);
    for (int size = 1; size < 40; ++size) {
        const std::vector<marked_recording> all = marked_class(kinds, size);
        const std::vector<std::string> lines = class_lines(what, all);
        const int count = static_cast<int>(lines.size());
        int ends = 0;
        for (int from = 0; from < count;) {
            const int to = line_markup::page_end(lines.data(), count, from);
            int open = 0;
            for (int i = from; i < to; ++i) {
                if (lines[i].ends_with(".csv")) ++open;
                if (is_end(lines[i])) --open, ++ends;
                EXPECT_GE(open, 0) << size << ": a page begins within a verdict";
            }
            EXPECT_EQ(open, 0) << size << ": a page ends within a verdict";
            from = to;
        }
        EXPECT_EQ(ends, size);
    }
}

}  // namespace
