#include "session/control_address.h"

#include <unistd.h>

#include <cstdlib>

std::string control_folder() {
    const char* const runtime = std::getenv("XDG_RUNTIME_DIR");
    if (runtime && *runtime) return std::string(runtime) + "/quorin";
    return "/tmp/quorin-" + std::to_string(geteuid());
}

std::string control_path(int ident) { return control_folder() + '/' + std::to_string(ident); }
