#include "programs/quorin_io/control_client.h"

#include <sys/ipc.h>
#include <sys/shm.h>
#include <sys/socket.h>
#include <unistd.h>

#include <optional>

#include "ioshare/io_observer.h"
#include "ioshare/io_printable.h"
#include "programs/quorin_io/link_commands.h"
#include "programs/quorin_io/waiting.h"
#include "session/control_address.h"
#include "session/failure.h"
#include "session/messages.h"
#include "session/trusted_user.h"
#include "session/whole_number.h"

namespace {

/// Who made a segment; 0 when the system does not say.
pid_t maker_of(int ident) {
    shmid_ds status{};
    return shmctl(ident, IPC_STAT, &status) == 0 ? status.shm_cpid : 0;
}

/// Sessions of two IPC namespaces may bear the same identifier: the one that answers must be the
/// one whose segment is seen here.
bool is_or_unknown(pid_t process, pid_t wanted) {
    return process == 0 || wanted == 0 || process == wanted;
}

/// A connection to the session whose segment `maker` has made; none when there is no socket, or
/// when its session is not this user's.
class connection {
public:
    /// `flags` of socket(2), to go with its type.
    connection(const std::string& path, pid_t maker, int flags = 0);
    ~connection() {
        if (line_ >= 0) close(line_);
    }
    connection(const connection&) = delete;
    connection& operator=(const connection&) = delete;

    explicit operator bool() const { return line_ >= 0; }
    void send_all(const std::string& text) const;
    /// All that comes until the session closes the connection.
    std::string receive_all() const;

private:
    int line_ = -1;
};

connection::connection(const std::string& path, pid_t maker, int flags) {
    const std::optional<sockaddr_un> address = socket_address(path);
    if (!address) return;
    line_ = socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | flags, 0);
    // Another user may have been there first with a folder of that name.
    if (connect(line_, reinterpret_cast<const sockaddr*>(&*address), sizeof *address) == 0 &&
        peer_is_trusted(line_) && is_or_unknown(peer_process(line_), maker))
        return;
    close(line_);
    line_ = -1;
}

void connection::send_all(const std::string& text) const {
    for (std::size_t sent = 0; sent < text.size();) {
        const ssize_t more = send(line_, text.data() + sent, text.size() - sent, MSG_NOSIGNAL);
        if (more <= 0) return;  // The session may have answered without reading to the end.
        sent += static_cast<std::size_t>(more);
    }
}

std::string connection::receive_all() const {
    constexpr std::size_t most = 1 << 20;
    std::string all;
    char part[4096];
    for (ssize_t got; all.size() < most && (got = recv(line_, part, sizeof part, 0)) > 0;)
        all.append(part, static_cast<std::size_t>(got));
    return all;
}

std::string request_line(const std::vector<std::string>& words) {
    std::string line;
    for (const std::string& each : words) {
        if (each.find_first_of(" \n") != std::string::npos)
            throw misuse(io_printable(each) + ": un blanc ou une fin de ligne dans un mot");
        line += (line.empty() ? "" : " ") + each;
    }
    line += '\n';
    if (line.size() > control_request_limit)
        throw misuse("demande de plus de " + std::to_string(control_request_limit) + " octets");
    return line;
}

/// The segment of the session that is asked. It is held meanwhile, so that the session's end can
/// still be read from it after a kill.
class asked_segment {
public:
    explicit asked_segment(int ident)
        : name_("segment " + std::to_string(ident)), segment_(ident, io_access::read) {}

    /// Waits for the end that a supervisor announces, at once on a machine at rest, when its
    /// session is killed.
    void await_the_end() const {
        constexpr double most_s = 2;
        for (const stopwatch since; !segment_.session_over() && since.seconds() < most_s;)
            pause_between_looks();
    }
    /// Ends the command where no session answers: with the segment's own problem, or with `why`.
    [[noreturn]] void refuse(const std::string& why) const {
        if (!segment_.problem().empty()) throw refusal(segment_.problem());
        refuse_after_the_end(segment_);
        throw refusal(name_ + ": " + why);
    }

private:
    std::string name_;
    io_observer segment_;
};

struct answer {
    exit_status status;
    std::string text;
};

/// The status on the first line, and the lines after it; nothing when that is no status.
std::optional<answer> read_answer(const std::string& bytes) {
    const std::size_t end = bytes.find('\n');
    if (end == std::string::npos) return std::nullopt;
    const std::optional<int> status = whole_number<int>(std::string_view(bytes).substr(0, end));
    if (!status || *status < 0 || *status > 255) return std::nullopt;
    return answer{static_cast<exit_status>(*status), bytes.substr(end + 1)};
}

/// The lines of an answer, fit to be shown, each with its end.
std::string shown(const std::string& text) {
    std::string all;
    for (std::size_t start = 0; start < text.size();) {
        const std::size_t end = std::min(text.find('\n', start), text.size());
        all += io_printable(text.substr(start, end - start)) + '\n';
        start = end + 1;
    }
    return all;
}

}  // namespace

void ask_session(int ident, const std::vector<std::string>& words) {
    const std::string line = request_line(words);
    const asked_segment segment(ident);
    const connection session(control_path(control_folder(), ident), maker_of(ident));
    if (!session) segment.refuse("cette session n'a pas de socket de contrôle");
    session.send_all(line);
    const std::string bytes = session.receive_all();
    if (bytes.empty()) segment.await_the_end();
    const std::optional<answer> got = read_answer(bytes);
    if (!got) segment.refuse("la session n'a pas répondu");
    std::string text = shown(got->text);
    if (got->status == exit_status::done) return print_patiently(text);
    if (text.empty()) text = "la session a refusé\n";
    text.pop_back();
    throw failure{got->status, text};
}

void wake_session(int ident) {
    const connection looked_at(control_path(control_folder(), ident), maker_of(ident),
                               SOCK_NONBLOCK);
}
