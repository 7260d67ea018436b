#include "session/trusted_user.h"

#include <sys/socket.h>
#include <unistd.h>

bool is_trusted_user(uid_t user) { return user == geteuid() || user == 0; }

bool peer_is_trusted(int socket) {
    ucred peer{};
    socklen_t size = sizeof peer;
    return getsockopt(socket, SOL_SOCKET, SO_PEERCRED, &peer, &size) == 0 &&
           is_trusted_user(peer.uid);
}
