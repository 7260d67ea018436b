// Whose word a session takes: its own user's, and root's.
#pragma once
#include <sys/types.h>

/// Whether that is this process's user, or root.
[[nodiscard]] bool is_trusted_user(uid_t user);

/// Whether the process at the other end of a connected Unix domain socket is such a user's.
[[nodiscard]] bool peer_is_trusted(int socket);

/// The process that listens at the other end of a connected Unix domain socket; 0 when the system
/// does not say, or has no number for it here.
[[nodiscard]] pid_t peer_process(int socket);
