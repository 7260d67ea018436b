// zk4sim: the bundled ZK4 station, served on a shared I/O segment.
#include <fcntl.h>
#include <unistd.h>

#include <iostream>

#include "ioshare/link_capacity.h"
#include "programs/zk4sim/options.h"
#include "programs/zk4sim/session.h"
#include "workcell/station_names.h"

namespace {

/// A standard stream that the caller closed leads nowhere, rather than to the next thing opened.
void open_closed_streams() {
    int opened;
    while ((opened = open("/dev/null", O_RDWR)) >= 0 && opened <= STDERR_FILENO) {
    }
    if (opened >= 0) close(opened);
}

}  // namespace

int main(int argc, char** argv) {
    open_closed_streams();
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
