// For how long a session has been without anybody who commands it.
#pragma once
#include <sys/types.h>

#include <chrono>
#include <map>
#include <optional>

#include "ioshare/io_holders.h"

/// Tells whether a segment has clients, by who holds it besides its own holders. Observers for
/// reading are none: they announce themselves (`ioshare/io_announcement.h`), and their mappings are
/// told from a client's by being for reading only. Look about ten times a second while it lives,
/// and make none where nobody looks: observers wait up to a second for a place in its queue.
class client_watch {
public:
    /// Begins to watch segment `ident`, which `holders` processes hold without being clients. Make
    /// it before anybody else learns of the identifier. When the place of its announcements is
    /// taken, it goes on without: observers then count as clients.
    client_watch(int ident, unsigned long holders);
    ~client_watch();
    client_watch(const client_watch&) = delete;
    client_watch& operator=(const client_watch&) = delete;

    /// Looks. Seconds since a client was last there, or since the watch began; 0 exactly when one
    /// is there, or was since the look before. One that came and went between two looks is known by
    /// being the last to let go of the segment: it is missed only if it announced nothing and
    /// somebody else attached after it.
    [[nodiscard]] double seconds_alone();

    /// Readable when an announcement waits, for whoever likes to look at once; -1 when it goes on
    /// without announcements.
    [[nodiscard]] int descriptor() const { return line_; }

private:
    using clock = std::chrono::steady_clock;

    /// When a process announced itself, and when it was last known to live.
    struct observer {
        clock::time_point announced, lived;
    };

    bool client_seen();
    unsigned long observing() const;
    std::optional<bool> take_announcement();
    bool take_announcements();
    void forget_the_gone();

    int ident_;
    unsigned long holders_;
    int line_ = -1;
    io_holding last_{};
    bool there_ = false, commander_came_ = false;
    std::map<pid_t, observer> observers_;
    clock::time_point last_seen_;
};
