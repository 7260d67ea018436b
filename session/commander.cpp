#include "session/commander.h"

#include <utility>

#include "session/served_segment.h"

namespace {

constexpr auto look = std::chrono::milliseconds(100);

}  // namespace

commander::commander(int ident, std::optional<double> timeout_s) {
    if (!timeout_s) return;
    clients_ = std::make_unique<client_watch>(ident, station_holders);
    timeout_s_ = *timeout_s;
}

bool commander::found_missing(moment now) {
    if (!clients_ || now - last_look_ < look) return false;
    last_look_ = now;
    present_ = clients_->seconds_alone() <= timeout_s_;
    return !present_ && !std::exchange(told_, true);
}

std::optional<std::chrono::milliseconds> commander::rest() const {
    if (!clients_) return std::nullopt;
    return look;
}
