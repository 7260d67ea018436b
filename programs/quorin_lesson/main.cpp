// quorin-lesson: exercises, listed, shown, checked, and made ready for a class.
#include <iostream>

#include "lesson/exercise_file.h"
#include "programs/quorin_lesson/request.h"
#include "session/messages.h"
#include "session/station_main.h"

namespace {

int carry_out(const lesson_request& asked) {
    if (!asked.answer) return asked.command->carry_out(asked);
    print_patiently(*asked.answer);
    return static_cast<int>(exit_status::done);
}

}  // namespace

int main(int argc, char** argv) {
    return program_main("quorin-lesson", closed_stream::takes_nothing, [&] {
        try {
            return carry_out(read_request({argv + 1, argv + argc}));
        } catch (const exercise_refusal& why) {
            // As compilers write it, so that editors find the lines.
            std::cerr << why.why << "\n";
            return static_cast<int>(why.status);
        }
    });
}
