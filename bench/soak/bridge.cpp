// The Modbus server on segments that no simulator makes, each under a hand that goes on writing
// there, with a client that reads and writes all that it has.
//
//     build/asan/bin/soak_bridge 1000000
#include <sys/socket.h>
#include <unistd.h>

#include <csignal>
#include <thread>

#include "bench/soak/hostile_segment.h"
#include "bridges/modbus_map.h"
#include "bridges/modbus_server.h"
#include "tests/bridges/modbus_connection.h"

namespace {

/// One that says nothing, so that nobody takes a server's end for a wish of the test.
struct line {
    line() {
        if (pipe(ends) != 0) std::abort();
    }
    ~line() {
        for (const int each : ends) close(each);
    }
    int ends[2];
};

/// Hangs up at once: the system would else keep each of a million for a minute.
void leave(modbus_connection& client) {
    const linger at_once{1, 0};
    setsockopt(client.socket(), SOL_SOCKET, SO_LINGER, &at_once, sizeof at_once);
    client.hang_up();
}

void ask_all(attack& run, hostile_segment& segment, modbus_connection& client) {
    static const std::string requests[] = {
        "02 0000 0001",         "02 0000 0029", "01 0000 000d", "01 0000 07d0", "04 0000 0004",
        "0f 0000 000d 02 ff1f", "05 0000 ff00", "05 0028 ff00", "06 0000 0001", "03 0000 0001"};
    for (const std::string& each : requests) {
        if (client.ask(each, 5) == "nothing") run.find("no answer to " + each);
        segment.disturb(run);
    }
}

void serve(attack& run, const listening_socket& door, int port, long& served) {
    hostile_segment segment(run);
    io_observer link(segment.ident(), io_access::write);
    static_cast<void>(csv_of(modbus_map(link)));
    if (!link.problem().empty() || link.session_over()) return;
    ++served;
    const line stop;
    std::thread server([&] {
        modbus_server served_link(segment.ident(), link, door, {true, 2, 8},
                                  [](const std::string&) {});
        static_cast<void>(served_link.run(stop.ends[0], -1));
    });
    modbus_connection client(port);
    if (!client.connected()) run.find("no connection");
    ask_all(run, segment, client);
    leave(client);
    if (write(stop.ends[1], "x", 1) != 1) run.find("the server cannot be asked to end");
    server.join();
}

}  // namespace

int main(int argc, char** argv) {
    attack run("bridge", argc, argv, 1'000'000);
    signal(SIGPIPE, SIG_IGN);
    const int port = 20'000 + static_cast<int>(run.below(10'000));
    const listening_socket door("127.0.0.1", port);
    if (!door.problem().empty()) run.find(door.problem());
    long served = 0;
    for (; run.goes_on(); ++run.done) serve(run, door, port, served);
    return run.finish("segments", std::to_string(served) + " served over Modbus");
}
