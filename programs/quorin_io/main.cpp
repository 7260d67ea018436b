// quorin-io: the link from scripts. Reads and writes a simulator's inputs and outputs by name, and
// asks a session.
#include <fcntl.h>
#include <unistd.h>

#include <cstdlib>
#include <iostream>
#include <sstream>

#include "ioshare/io_sessions.h"
#include "programs/quorin_io/control_client.h"
#include "programs/quorin_io/output.h"
#include "programs/quorin_io/request.h"
#include "session/failure.h"

namespace {

/// A standard stream that the caller closed takes and gives nothing; nothing that is opened later
/// takes its place.
void hold_closed_streams() {
    int opened;
    while ((opened = open("/dev/null", O_RDONLY | O_CLOEXEC)) >= 0 && opened <= STDERR_FILENO) {
    }
    if (opened >= 0) close(opened);
}

int ident_of(const io_request& asked) {
    if (!asked.last) return asked.ident;
    const std::optional<int> youngest = io_youngest_session();
    if (!youngest) throw refusal("--last: aucune session de cet utilisateur n'est en cours");
    return *youngest;
}

void carry_out(const io_request& asked) {
    if (asked.answer) return print(*asked.answer);
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
    command.carry_out(segment, asked);
}

/// Each line of a failure on the standard error stream, under the program's name.
int tell(const failure& error) {
    std::istringstream lines(error.why);
    for (std::string line; std::getline(lines, line);) std::cerr << "quorin-io: " << line << "\n";
    return static_cast<int>(error.status);
}

}  // namespace

int main(int argc, char** argv) {
    hold_closed_streams();
    const char* const environment = std::getenv("QUORIN_IDENT");
    try {
        carry_out(read_request({argv + 1, argv + argc}, environment ? environment : ""));
    } catch (const failure& error) {
        return tell(error);
    }
    return static_cast<int>(exit_status::done);
}
