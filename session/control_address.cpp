#include "session/control_address.h"

#include <unistd.h>

#include <cstdlib>

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
