#include "programs/quorin_lesson/mark.h"

#include <algorithm>
#include <filesystem>
#include <iostream>
#include <span>

#include "lesson/bundled_exercises.h"
#include "lesson/exercise_file.h"
#include "lesson/verdict.h"
#include "programs/quorin_lesson/class_report.h"
#include "programs/quorin_lesson/output.h"
#include "recording/background_file.h"
#include "recording/recorded_text.h"
#include "session/failure.h"
#include "session/messages.h"
#include "workcell/workcell_model.h"

namespace {

std::string line_of(const marked_recording& marked) {
    std::string line;
    for (const std::string& each : fields_of(marked)) line += (line.empty() ? "" : "\t") + each;
    return line + '\n';
}

std::string file_of(const lesson_request& asked, option_key option) {
    return asked.given(option) ? asked.of(option).front() : std::string();
}

/// Whether both name one file, there or yet to be made.
bool same_place(const std::string& one, const std::string& other) {
    const auto place = [](const std::string& path) {
        std::error_code error;
        return std::filesystem::weakly_canonical(std::filesystem::absolute(path, error), error);
    };
    return same_file(one, other) || place(one) == place(other);
}

/// No output may take the place of what is read: the exercise, the recordings.
void check_outputs(const std::vector<std::string>& inputs, const std::string& pdf,
                   const std::string& csv) {
    for (const std::string& file : {pdf, csv}) {
        if (file.empty()) continue;
        if (is_standard_output(file)) throw misuse("la sortie standard porte les résultats");
        for (const std::string& each : inputs)
            if (same_file(file, each))
                throw refusal(recorded_name(file) + ": ce fichier est lu, il reste comme il est");
    }
    if (!pdf.empty() && !csv.empty() && same_place(pdf, csv))
        throw misuse("--pdf et --csv veulent le même fichier");
}

// An error stream that takes nothing costs the reasons, and no marks.
void tell(const exercise& task, const marked_recording& marked, bool verbose) {
    std::string text = line_of(marked);
    if (verbose && marked.standing)
        for (const verdict_sentence& each :
             verdict_sentences(task, *marked.standing, language::french))
            text += each.text + '\n';
    print_patiently(text);
    if (!marked.standing) std::cerr << "quorin-lesson: " + marked.refusal + "\n";
}

}  // namespace

int mark_recordings(const lesson_request& asked) {
    const std::string pdf = file_of(asked, option_key::pdf), csv = file_of(asked, option_key::csv);
    std::vector<std::string> inputs = asked.operands;
    inputs.front() = exercise_file_called(asked.operands.front());
    check_outputs(inputs, pdf, csv);
    const exercise task = read_exercise_file(inputs.front(), workcell_model(0));
    std::vector<marked_recording> all;
    for (const std::string& each : std::span(inputs).subspan(1)) {
        all.push_back(mark_recording(task, each));
        tell(task, all.back(), asked.given(option_key::verbose));
    }
    if (!csv.empty()) write_whole_file(csv, class_csv(all));
    if (!pdf.empty()) write_whole_file(pdf, pdf_of(class_lines(task, all)));
    const bool passed = std::ranges::all_of(all, &marked_recording::passed);
    return static_cast<int>(passed ? exit_status::done : exit_status::not_reached);
}
