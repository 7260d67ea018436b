// Where a session's control socket is: a Unix domain socket in a folder of its user's own.
#pragma once
#include <sys/un.h>

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

/// The folder of the control sockets of user `user`, whose environment has `runtime_folder` as
/// XDG_RUNTIME_DIR (empty when it has none). A folder that does not begin with "/" is none.
///
///     control_folder("/run/user/1000", 1000)  // "/run/user/1000/quorin"
///     control_folder("", 1000)  // "/tmp/quorin-1000"
[[nodiscard]] std::string control_folder(std::string_view runtime_folder, unsigned user);

/// The folder of this process's user and environment.
[[nodiscard]] std::string control_folder();

/// The control socket, in such a folder, of the session on segment `ident`.
///
///     control_path("/run/user/1000/quorin", 32769)  // "/run/user/1000/quorin/32769"
[[nodiscard]] std::string control_path(const std::string& folder, int ident);

/// The address of a Unix domain socket at `path`; nothing when the path is too long for one.
[[nodiscard]] std::optional<sockaddr_un> socket_address(const std::string& path);

/// The longest request, its newline included.
inline constexpr std::size_t control_request_limit = 4096;
