// Where a session's control socket is.
#pragma once
#include <string>

/// The user's folder of control sockets: "quorin" in $XDG_RUNTIME_DIR, else "/tmp/quorin-" and the
/// user's id.
std::string control_folder();

/// The control socket of the session on segment `ident`.
std::string control_path(int ident);
