// quorin-io: the link from scripts. Reads and writes a simulator's inputs and outputs by name, and
// asks a session.
#include <cstdlib>

#include "ioshare/io_sessions.h"
#include "programs/quorin_io/control_client.h"
#include "programs/quorin_io/request.h"
#include "session/failure.h"
#include "session/messages.h"
#include "session/station_main.h"

namespace {

int ident_of(const io_request& asked) {
    if (!asked.last) return asked.ident;
    const std::optional<int> youngest = io_youngest_session();
    if (!youngest) throw refusal("--last: aucune session de cet utilisateur n'est en cours");
    return *youngest;
}

void carry_out(const io_request& asked) {
    if (asked.answer) return print_patiently(*asked.answer);
    const command_row& command = *asked.command;
    const int ident = ident_of(asked);
    if (command.on == works_on::session) {
        std::vector<std::string> words = asked.operands;
        words.insert(words.begin(), command.word);
        return ask_session(ident, words);
    }
    const bool writes = command.on == works_on::outputs_to_write;
    io_observer segment(ident, writes ? io_access::write : io_access::read);
    if (!segment.problem().empty()) throw refusal(segment.problem());
    if (writes) wake_session(ident);
    command.carry_out(segment, asked);
}

}  // namespace

int main(int argc, char** argv) {
    return program_main("quorin-io", closed_stream::takes_nothing, [&] {
        const char* const environment = std::getenv("QUORIN_IDENT");
        carry_out(read_request({argv + 1, argv + argc}, environment ? environment : ""));
        return static_cast<int>(exit_status::done);
    });
}
