// The user's folder of control sockets: made, found safe, and cleared of what dead sessions left.
#pragma once
#include <sys/types.h>

#include <string>

#include "session/control_address.h"

/// Makes the folder where it is missing. Throws `refusal` when it is not this user's alone. Removes
/// the sockets in it on which nobody listens any more.
void prepare_control_folder();

/// A non-blocking listener at `path`, which whoever looks finds only once it takes connections; it
/// takes the place of one that nobody listens on any more. Throws `refusal` when that cannot be.
[[nodiscard]] int listen_at(const std::string& path);

/// Removes the socket at `path` if nobody listens on it any more.
void remove_dead_socket(const std::string& path);

/// Removes the control socket of a session whose process `maker` has just died, finished or not;
/// within two seconds.
void remove_socket_of(pid_t maker, int ident);
