#include "session/control_folder.h"

#include <signal.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <filesystem>

#include "ioshare/io_printable.h"
#include "session/failure.h"
#include "session/system_errors.h"
#include "session/whole_number.h"

namespace {

namespace files = std::filesystem;

/// A socket that is being made has this before its maker's process id.
constexpr char unfinished[] = ".";

failure refused(const std::string& where, const std::string& why) {
    return refusal("prise de contrôle " + io_printable(where) + ": " + why);
}

bool is_socket(const std::string& path) {
    struct stat status;
    return lstat(path.c_str(), &status) == 0 && S_ISSOCK(status.st_mode);
}

/// Whether nobody would take a connection at `path`.
bool nobody_listens(const std::string& path) {
    const std::optional<sockaddr_un> address = socket_address(path);
    if (!address) return false;
    const int probe = socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0);
    if (probe < 0) return false;
    const int status =
        connect(probe, reinterpret_cast<const sockaddr*>(&*address), sizeof *address);
    const bool dead = status != 0 && errno == ECONNREFUSED;
    close(probe);
    return dead;
}

bool maker_is_gone(const std::string& name) {
    const auto maker = whole_number<pid_t>(std::string_view(name).substr(1));
    return maker && kill(*maker, 0) != 0 && errno == ESRCH;
}

/// Also those that a start left unfinished which is no more.
void remove_dead_sockets(const std::string& folder) {
    std::error_code error;
    for (files::directory_iterator entry(folder, error), end; !error && entry != end;
         entry.increment(error)) {
        const std::string name = entry->path().filename();
        if (!name.starts_with(unfinished) || maker_is_gone(name)) remove_dead_socket(entry->path());
    }
}

/// Gives the socket at `from` its name, unless somebody answers under that name: another session
/// may have the same identifier, in an IPC namespace of its own.
bool take_name(const std::string& from, const std::string& to) {
    if (link(from.c_str(), to.c_str()) == 0) {
        unlink(from.c_str());
        return true;
    }
    if (errno != EEXIST) return false;
    if (!is_socket(to) || nobody_listens(to)) return rename(from.c_str(), to.c_str()) == 0;
    errno = EADDRINUSE;
    return false;
}

}  // namespace

void remove_dead_socket(const std::string& path) {
    if (is_socket(path) && nobody_listens(path)) unlink(path.c_str());
}

// A process that dies lets go of its descriptors one after another: whoever hears of its death by
// one may still find its socket listening.
void remove_socket_of(pid_t maker, int ident) {
    constexpr int tries = 100, pause_us = 10'000;
    const std::string folder = control_folder();
    for (const std::string& path :
         {control_path(folder, ident), folder + "/" + unfinished + std::to_string(maker)}) {
        for (int i = 0; i < tries && is_socket(path); ++i) {
            remove_dead_socket(path);
            if (is_socket(path)) usleep(pause_us);
        }
    }
}

void prepare_control_folder() {
    const std::string folder = control_folder();
    if (mkdir(folder.c_str(), 0700) != 0 && errno != EEXIST)
        throw refused(folder, system_error_words(errno));
    struct stat status;
    if (lstat(folder.c_str(), &status) != 0 || !S_ISDIR(status.st_mode))
        throw refused(folder, "ce n'est pas un dossier");
    if (status.st_uid != geteuid()) throw refused(folder, "le dossier est à un autre");
    if ((status.st_mode & 077) != 0)
        throw refused(folder, "d'autres peuvent entrer dans le dossier");
    remove_dead_sockets(folder);
}

int listen_at(const std::string& path) {
    const files::path final_path(path);
    const std::string first_path =
        final_path.parent_path() / (unfinished + std::to_string(getpid()));
    const std::optional<sockaddr_un> address = socket_address(first_path);
    if (!address || !socket_address(path)) throw refused(path, "le nom est trop long");
    unlink(first_path.c_str());
    const int listener = socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0);
    if (listener < 0 ||
        bind(listener, reinterpret_cast<const sockaddr*>(&*address), sizeof *address) != 0 ||
        chmod(first_path.c_str(), 0600) != 0 || listen(listener, SOMAXCONN) != 0 ||
        !take_name(first_path, path)) {
        const int error = errno;
        if (listener >= 0) close(listener);
        unlink(first_path.c_str());
        throw refused(
            path, error == EADDRINUSE ? "une autre session y répond" : system_error_words(error));
    }
    return listener;
}
