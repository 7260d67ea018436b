// zk4sim: the bundled ZK4 station, served on a shared I/O segment.
#include "programs/zk4sim/options.h"
#include "recording/recorded_main.h"
#include "workcell/workcell_facts.h"
#include "workcell/workcell_model.h"

int main(int argc, char** argv) {
    zk4sim_options options;
    return recorded_station_main(
        argc, argv, zk4sim_command_line(options),
        {"zk4",
         [&] { return std::make_unique<workcell_model>(options.seed, options.supplies); },
         workcell_of,
         {"--seed", "--bases", "--parts"}});
}
