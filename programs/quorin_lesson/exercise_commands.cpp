#include "programs/quorin_lesson/exercise_commands.h"

#include <iostream>

#include "lesson/bundled_exercises.h"
#include "lesson/exercise_file.h"
#include "lesson/exercise_task.h"
#include "lesson/exercise_text.h"
#include "programs/quorin_lesson/output.h"
#include "recording/background_file.h"
#include "recording/recorded_text.h"
#include "session/messages.h"
#include "workcell/workcell_model.h"

namespace {

static_assert(most_exercise_supplies == most_workcell_supplies);

constexpr int done = static_cast<int>(exit_status::done);

exercise read_file(const std::string& path) { return read_exercise_file(path, workcell_model(0)); }

std::string row_of(const std::string& name, language in) {
    const exercise read = read_file(bundled_exercise_file(name));
    return recorded_name(name) + "\t" + read.title.in(in) + "\t" +
           std::to_string(total_points(read)) + "\n";
}

}  // namespace

int list_exercises(const lesson_request& asked) {
    std::string rows, refused;
    for (const std::string& name : bundled_exercise_names()) {
        try {
            rows += row_of(name, asked.in());
        } catch (const failure& why) {
            refused += why.why + "\n";
        }
    }
    print_patiently(rows);
    std::cerr << refused;
    return refused.empty() ? done : static_cast<int>(exit_status::refused);
}

int show_exercise(const lesson_request& asked) {
    const exercise read = read_file(exercise_file_called(asked.operands[0]));
    std::string text;
    for (const std::string& line : task_lines(read, asked.in())) text += line + "\n";
    print_patiently(text);
    return done;
}

int check_exercise(const lesson_request& asked) {
    (void)read_file(asked.operands[0]);
    return done;
}

int hide_exercise(const lesson_request& asked) {
    const std::string& from = asked.operands[0];
    const std::string& to = asked.of(option_key::output).front();
    if (same_file(from == "-" ? "/dev/stdin" : from, to))
        throw refusal(recorded_name(to) + ": c'est l'exercice qui est lu");
    write_whole_file(to, hidden_exercise_text(read_file(from)));
    return done;
}
