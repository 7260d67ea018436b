// Whether anybody commands a session.
#pragma once
#include <chrono>
#include <memory>
#include <optional>

#include "session/client_watch.h"

/// With a time limit: nobody does once there was no client for so long, until one comes back.
/// Without one somebody always does.
class commander {
public:
    /// Real time.
    using moment = std::chrono::steady_clock::time_point;

    /// Looks at segment `ident`. Make it before anybody else learns of the identifier.
    commander(int ident, std::optional<double> timeout_s);

    /// Looks, ten times a second at most. True the first time that it finds nobody.
    [[nodiscard]] bool found_missing(moment now);
    /// Whether somebody did at the last look.
    bool present() const { return present_; }

    /// How long it may go without a look; nothing when it does not look at all.
    [[nodiscard]] std::optional<std::chrono::milliseconds> rest() const;

private:
    std::unique_ptr<client_watch> clients_;
    double timeout_s_ = 0;
    moment last_look_;
    bool present_ = true, told_ = false;
};
