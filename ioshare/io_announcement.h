// How whoever looks at a segment says so to the session that serves it.
//
// The system tells how many processes hold a segment, not which of them command. So an observer
// announces itself before it attaches, with one datagram to the abstract Unix socket
// "\0quorin-observers-<ident>"; the system adds who sent it. Nobody need listen there.
// docs/segment.md describes it for other simulators.
#pragma once
#include <sys/socket.h>
#include <sys/un.h>

/// What an observer is opened for; the only byte of its announcement.
enum class io_access : char { read = 'r', write = 'w' };

/// Where announcements to the session on segment `ident` go. `size` becomes the length that bind()
/// and sendto() take.
[[nodiscard]] sockaddr_un io_announcement_address(int ident, socklen_t& size);

/// Announces this process. Returns at once when nobody listens, and within a second in any case: a
/// listener whose queue is full takes from it ten times a second.
void io_announce(int ident, io_access access);
