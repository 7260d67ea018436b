// What becomes of a link: how old its last publication is, whether its maker lives, whether it has
// ended.
#pragma once
#include <chrono>
#include <cstdint>
#include <optional>

#include "ioshare/io_observer.h"

/// As the state's register says it.
enum class link_state : std::uint16_t {
    live = 0,
    /// The process that made the segment is gone, and announced no end.
    lost = 1,
    ended = 2,
};

class link_watch {
public:
    using clock = std::chrono::steady_clock;

    /// Watches segment `ident`, on which `link` is open and outlives this object. The age counts
    /// from here on.
    link_watch(int ident, const io_observer& link, clock::time_point now);
    ~link_watch();
    link_watch(const link_watch&) = delete;
    link_watch& operator=(const link_watch&) = delete;

    /// Takes what the observer's last look found, at the time of that look. A publication is dated
    /// by the first look that sees it.
    void look(clock::time_point now);

    /// As the last look found it. A link that has ended stays so.
    [[nodiscard]] link_state state() const { return state_; }
    /// Since when it is known to have ended; nothing before.
    [[nodiscard]] std::optional<clock::time_point> ended() const { return ended_; }
    /// Tenths of a second since the last publication, 65535 at most.
    [[nodiscard]] std::uint16_t age_tenths(clock::time_point now) const;

private:
    [[nodiscard]] bool maker_gone() const;

    const io_observer& link_;
    int maker_ = -1;  // The process that made the segment, as a descriptor; -1: none to look at.
    bool maker_known_gone_ = false;
    std::int64_t publication_;
    clock::time_point published_;
    link_state state_ = link_state::live;
    std::optional<clock::time_point> ended_;
};
