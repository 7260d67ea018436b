#include "programs/quorin_lesson/mark.h"

#include <algorithm>

#include "lesson/verdict.h"
#include "programs/quorin_lesson/class_report.h"
#include "programs/quorin_lesson/output.h"
#include "recording/background_file.h"
#include "recording/recorded_text.h"
#include "session/failure.h"
#include "session/messages.h"

namespace {

std::string line_of(const marked_recording& marked) {
    std::string line;
    for (const std::string& each : fields_of(marked)) line += (line.empty() ? "" : "\t") + each;
    return line + '\n';
}

void check_outputs(const mark_request& asked) {
    const struct {
        const char* option;
        const std::string& file;
    } outputs[] = {{"--pdf", asked.pdf}, {"--csv", asked.csv}};
    for (const auto& [option, file] : outputs) {
        if (file == "-")
            throw misuse(option + std::string(": la sortie standard porte les résultats"));
        for (const std::string& each : asked.inputs)
            if (!file.empty() && same_file(file, each))
                throw refusal(recorded_name(file) + ": ce fichier est lu, " + option +
                              " ne l'écrase pas");
    }
    if (!asked.pdf.empty() && (asked.pdf == asked.csv || same_file(asked.pdf, asked.csv)))
        throw misuse("--pdf et --csv veulent le même fichier");
}

void tell(const exercise& task, const marked_recording& marked, bool verbose) {
    std::string text = line_of(marked);
    if (verbose && marked.standing)
        for (const verdict_sentence& each :
             verdict_sentences(task, *marked.standing, language::french))
            text += each.text + '\n';
    print(text);
    if (!marked.standing) print_at_once("quorin-lesson: " + marked.refusal + "\n", STDERR_FILENO);
}

}  // namespace

int run_mark(const exercise& task, const mark_request& asked) {
    check_outputs(asked);
    std::vector<marked_recording> all;
    for (const std::string& each : asked.recordings) {
        all.push_back(mark_recording(task, each));
        tell(task, all.back(), asked.verbose);
    }
    if (!asked.csv.empty()) write_whole_file(asked.csv, class_csv(all));
    if (!asked.pdf.empty()) write_whole_file(asked.pdf, pdf_of(class_lines(task, all)));
    const bool passed = std::ranges::all_of(all, &marked_recording::passed);
    return static_cast<int>(passed ? exit_status::done : exit_status::not_reached);
}
