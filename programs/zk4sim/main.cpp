// zk4sim: the bundled ZK4 station, or one whose inputs are set by hand, served on a shared I/O
// segment; with its window, or without.
#include "programs/zk4sim/options.h"
#include "programs/zk4sim/task.h"
#include "recording/recorded_main.h"
#include "station_view/journal_process.h"
#include "station_view/manual_station.h"
#include "station_view/window_session.h"
#include "workcell/workcell_facts.h"
#include "workcell/workcell_model.h"

namespace {

std::unique_ptr<station_model> make_station(const zk4sim_options& options, session_task& task) {
    check_together(options);
    if (!options.exercise.empty()) return task.begin();
    if (!options.manual) return std::make_unique<workcell_model>(options.seed, options.supplies);
    return std::make_unique<manual_station>(options.names.empty() ? zk4_names()
                                                                  : read_names(options.names));
}

}  // namespace

int main(int argc, char** argv) {
    if (is_journal_command(argc, argv)) return run_journal_command(argv);
    zk4sim_options options;
    session_task task(options);
    return recorded_station_main(
        argc, argv, zk4sim_command_line(options),
        {"zk4",
         [&] { return make_station(options, task); },
         workcell_of,
         {"--seed", "--bases", "--parts", "--manual", "--names"},
         {{"--exercise", "--seed", "--bases", "--parts", "--duration", "--fault", "--manual"}},
         [&] { return task.hidden_faults(); },
         [&] { return files_read(options); }},
        [&](station_model& model, const session_options& session) {
            check_together(options, session);
            return task.given_to(session.headless ? run_headless
                                                  : run_in_window(model, {options.in, session.title,
                                                                          task.examiner()}));
        });
}
