#include "session/messages.h"

#include <poll.h>
#include <unistd.h>

#include <algorithm>
#include <climits>

#include "session/failure.h"

namespace {

/// Whether the stream takes `bytes` now, or within a time; written in one piece, which a pipe that
/// is ready takes whole up to PIPE_BUF.
bool write_when_ready(int stream, const std::string& bytes, int limit_ms) {
    pollfd wanted{stream, POLLOUT, 0};
    if (poll(&wanted, 1, limit_ms) != 1 || !(wanted.revents & POLLOUT)) return false;
    return write(stream, bytes.data(), bytes.size()) == static_cast<ssize_t>(bytes.size());
}

}  // namespace

void message_stream::line(const std::string& text) {
    std::string bytes = text.substr(0, PIPE_BUF - 100) + "\n";
    if (lost_ > 0) {
        bytes.insert(0, program_ + ": messages perdus: " + std::to_string(lost_) + "\n");
        bytes.resize(std::min<std::size_t>(bytes.size(), PIPE_BUF));
    }
    if (write_when_ready(STDERR_FILENO, bytes, 0))
        lost_ = 0;
    else
        ++lost_;
}

void print_at_once(const std::string& text, int stream) {
    constexpr int limit_ms = 1000;
    if (!write_when_ready(stream, text, limit_ms)) throw output_refusal();
}
