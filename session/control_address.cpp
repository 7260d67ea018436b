#include "session/control_address.h"

#include <sys/socket.h>
#include <unistd.h>

#include <cstdlib>
#include <cstring>

std::string control_folder(std::string_view runtime_folder, unsigned user) {
    if (runtime_folder.starts_with('/')) return std::string(runtime_folder) + "/quorin";
    return "/tmp/quorin-" + std::to_string(user);
}

std::string control_folder() {
    const char* const runtime_folder = std::getenv("XDG_RUNTIME_DIR");
    return control_folder(runtime_folder ? runtime_folder : "", geteuid());
}

std::string control_path(const std::string& folder, int ident) {
    return folder + "/" + std::to_string(ident);
}

std::optional<sockaddr_un> socket_address(const std::string& path) {
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    if (path.size() >= sizeof address.sun_path) return std::nullopt;
    std::memcpy(address.sun_path, path.data(), path.size());
    return address;
}
