// quorin-modbus: a simulator's inputs and outputs as a Modbus TCP server.
#include <signal.h>
#include <sys/signalfd.h>

#include <memory>
#include <new>

#include "bridges/coil_guard.h"
#include "bridges/modbus_map.h"
#include "bridges/modbus_server.h"
#include "programs/quorin_modbus/options.h"
#include "session/failure.h"
#include "session/messages.h"
#include "session/station_main.h"
#include "session/system_errors.h"

namespace {

/// From now on SIGINT, SIGTERM and SIGHUP (unless it is ignored, as under nohup) end nothing by
/// themselves: the descriptor can be read once one has come.
int caught_signals() {
    sigset_t ending;
    sigemptyset(&ending);
    for (const int number : {SIGINT, SIGTERM, SIGHUP}) {
        struct sigaction before {};
        sigaction(number, nullptr, &before);
        if (number == SIGHUP && before.sa_handler == SIG_IGN) continue;
        signal(number, SIG_DFL);
        sigaddset(&ending, number);
    }
    signal(SIGPIPE, SIG_IGN);
    sigprocmask(SIG_BLOCK, &ending, nullptr);
    const int descriptor = signalfd(-1, &ending, SFD_CLOEXEC | SFD_NONBLOCK);
    or_refuse(descriptor, "signaux");
    return descriptor;
}

std::unique_ptr<coil_guard> guard_of(io_observer& link, bool control) {
    if (!control) return nullptr;
    auto guard = std::make_unique<coil_guard>(
        link, "modbus-garde", "quorin-modbus: le serveur a disparu: les bobines valent 0");
    if (!guard->there()) throw refusal("le processus de garde n'a pas pu commencer");
    return guard;
}

void say_where(const modbus_options& options, message_stream& messages) {
    if (!is_loopback(options.listen))
        messages.say("attention: " + options.listen +
                     " n'est pas l'adresse locale: d'autres machines peuvent se connecter");
    print_at_once("modbus=" + endpoint(options.listen, options.port) + "\n");
}

/// Serves until the end, and says why where it was not asked for.
modbus_end serve(const modbus_options& options, io_observer& link, message_stream& messages) try {
    const int stop = caught_signals();
    const auto guard = guard_of(link, options.service.control);
    const listening_socket door(options.listen, options.port);
    if (!door.problem().empty()) throw refusal(door.problem());
    modbus_server server(options.ident, link, door, options.service,
                         [&](const std::string& words) { messages.say(words); });
    say_where(options, messages);
    return server.run(stop, guard ? guard->line() : -1);
} catch (const std::bad_alloc&) {
    throw refusal("plus de mémoire ou de descripteurs");
}

int carry_out(const modbus_options& options) {
    const bool writes = options.service.control;
    io_observer link(options.ident, writes ? io_access::write : io_access::read);
    if (!link.problem().empty()) throw refusal(link.problem());
    if (options.map) {
        print_at_once(csv_of(modbus_map(link)));
        return static_cast<int>(exit_status::done);
    }
    if (link.session_over()) throw failure{exit_status::session_over, "la session est terminée"};
    message_stream messages("quorin-modbus");
    const modbus_end end = serve(options, link, messages);
    if (end == modbus_end::session_over) messages.say("la session est terminée");
    if (writes) messages.say("les bobines valent 0");
    if (end == modbus_end::guard_gone) throw refusal("le processus de garde a disparu");
    return static_cast<int>(exit_status::done);
}

}  // namespace

int main(int argc, char** argv) {
    return program_main("quorin-modbus", closed_stream::takes_nothing, [&] {
        const modbus_options options = read_options({argv + 1, argv + argc});
        if (!options.answer) return carry_out(options);
        print_at_once(*options.answer);
        return static_cast<int>(exit_status::done);
    });
}
