// What is set on the left appears on the right, after a journey through the link.
//
// One window holds both simulator panels. This process is the simulator: it publishes the inputs of
// the left panel and lights the lamps of the right one from the outputs. A child process stands in
// for the control panel: it writes every input that it receives to the output of the same name.
//
//     left panel -> server -> segment -> client (child) -> segment -> server -> right panel
//
// Neither the segment nor the child outlives this process, however it ends.
#include <signal.h>
#include <sys/prctl.h>
#include <sys/shm.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <list>
#include <string>
#include <vector>

#include <FL/Fl.H>
#include <FL/Fl_Button.H>
#include <FL/Fl_Window.H>

#include "ioshare/io_client.h"
#include "ioshare/io_server.h"
#include "simulator/input_panel.h"
#include "simulator/output_panel.h"

namespace {

const std::list<std::string> names = {"tiroir", "presse", "ventouse", "tapis",  "colle",
                                      "zone 1", "zone 2", "zone 3",   "voyant", "alarme"};

constexpr int panel_height = 240;
constexpr double refresh_period_s = 0.05;

/// A server whose segment disappears with the last process attached to it: it is marked for removal
/// at once. The child can still attach to it by its identifier.
IOsharemem_server serve_until_exit() {
    IOsharemem_server server(names, names);
    shmctl(server.memory_ident(), IPC_RMID, nullptr);
    return server;
}

/// The child's whole life: echoes every publication, until the session or the parent ends.
void echo(int ident) {
    IOsharemem_client client(ident);
    while (true) {
        const int news = client.receive();
        if (news < 0) return;
        if (news == 0) continue;
        for (const std::string& name : names) {
            client.setreset_output(name, client.input_is_set(name));
        }
        client.outputs_refresh();
    }
}

/// Starts the child. Must be called before the display
/// is opened, as two processes cannot share one.
pid_t start_echo(int ident) {
    const pid_t parent = getpid();
    const pid_t child = fork();
    if (child == 0) {
        prctl(PR_SET_PDEATHSIG, SIGKILL);
        if (getppid() == parent) echo(ident);
        _exit(0);
    }
    return child;
}

/// What the refresh of the lamps needs.
struct echo_lamps {
    IOsharemem_server& server;
    OFD_simulator_output& panel;
};

/// Runs while the left panel waits for its buttons, and schedules itself again.
void refresh(void* data) {
    auto* lamps = static_cast<echo_lamps*>(data);
    std::vector<int> values;
    for (int i = 0; i < lamps->panel.count; ++i) values.push_back(lamps->server.output_value(i));
    lamps->panel.eval(values.data());
    Fl::repeat_timeout(refresh_period_s, refresh, data);
}

void publish(IOsharemem_server& server, const std::vector<int>& values) {
    for (int i = 0; i < static_cast<int>(values.size()); ++i) server.setreset_input(i, values[i]);
    server.inputs_go();
}

/// Publishes what the user sets, until "QUIT".
void serve(IOsharemem_server& server, OFD_simulator_input& inputs) {
    std::vector<int> values(names.size(), 0);
    while (true) {
        int init = 0, quit = 0;
        inputs.check(&init, &quit, values.data());
        if (quit) return;
        if (init) std::ranges::fill(values, 0);
        publish(server, values);
    }
}

void press(Fl_Widget*, void* button) { static_cast<Fl_Widget*>(button)->do_callback(); }

void show_panels(IOsharemem_server& server) {
    Fl_Window desk(640, panel_height, "echo_panels");
    OFD_simulator_input inputs(&desk, 0, panel_height);
    OFD_simulator_output outputs(&desk, 400, panel_height, "Echo");
    desk.end();
    for (const std::string& name : names) {
        inputs.add(name);
        outputs.add(name);
    }
    while (outputs.page > 0) outputs.previous_page();  // adding went along to the last page
    desk.callback(press, inputs.quit_button);
    desk.show();

    echo_lamps lamps{server, outputs};
    Fl::add_timeout(0, refresh, &lamps);
    serve(server, inputs);
    Fl::remove_timeout(refresh, &lamps);
}

}  // namespace

int main() {
    IOsharemem_server server = serve_until_exit();
    // Clients refuse the identifier 0, a machine's very first; the next one is another.
    if (server.memory_ident() == 0) server = serve_until_exit();

    const pid_t child = start_echo(server.memory_ident());
    if (child < 0) {
        std::perror("echo_panels: fork");
        return 1;
    }
    show_panels(server);
    server.sharing_terminate();
    waitpid(child, nullptr, 0);
}
