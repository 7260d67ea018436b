// zk4sim: the bundled ZK4 station, served on a shared I/O segment.
#include "programs/zk4sim/options.h"
#include "session/station_main.h"
#include "workcell/workcell_model.h"

int main(int argc, char** argv) {
    zk4sim_options options;
    return station_main(argc, argv, zk4sim_command_line(options), [&options] {
        return std::make_unique<workcell_model>(options.seed, options.supplies);
    });
}
