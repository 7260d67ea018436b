// zk4sim: the bundled ZK4 station, served on a shared I/O segment.
#include <iostream>

#include "workcell/link_capacity.h"
#include "workcell/options.h"
#include "workcell/session.h"
#include "workcell/station_names.h"

int main(int argc, char** argv) {
    const zk4sim_request request = zk4sim_read_command_line({argv + 1, argv + argc});
    if (!request.run) {
        (request.status == 0 ? std::cout : std::cerr) << request.words;
        return request.status;
    }
    const std::string problem =
        link_capacity_problem({station_inputs.begin(), station_inputs.end()},
                              {station_outputs.begin(), station_outputs.end()});
    if (!problem.empty()) {
        std::cerr << "zk4sim: " << problem << "\n";
        return 1;
    }
    return serve_station(*request.run);
}
