#include "session/messages.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <climits>
#include <csignal>
#include <iostream>
#include <string_view>

#include "session/failure.h"

namespace {

/// The stream once more, so that a write to it never waits: a terminal that is ready may take less
/// than a line, and another process may fill a pipe first. It is opened anew, since its flags are
/// shared with those other processes. -1 for other streams, and where that may not be.
int open_without_waiting(int stream) {
    struct stat status;
    if (fstat(stream, &status) != 0 || (!S_ISFIFO(status.st_mode) && !isatty(stream))) return -1;
    return open(("/proc/self/fd/" + std::to_string(stream)).c_str(),
                O_WRONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC);
}

/// How many of the `bytes` the stream takes now, or once within a time. A pipe takes PIPE_BUF of
/// them in one piece, or none.
std::size_t write_when_ready(int stream, std::string_view bytes, int limit_ms) {
    pollfd wanted{stream, POLLOUT, 0};
    if (poll(&wanted, 1, limit_ms) != 1 || !(wanted.revents & POLLOUT)) return 0;
    const int own = open_without_waiting(stream);
    const ssize_t written = write(own >= 0 ? own : stream, bytes.data(), bytes.size());
    if (own >= 0) close(own);
    return static_cast<std::size_t>(std::max<ssize_t>(written, 0));
}

}  // namespace

void message_stream::line(const std::string& text) {
    if (!unfinished_.empty()) unfinished_.erase(0, write_when_ready(STDERR_FILENO, unfinished_, 0));
    if (!unfinished_.empty()) {
        ++lost_;
        return;
    }
    std::string bytes = text.substr(0, PIPE_BUF - 100) + "\n";
    if (lost_ > 0) {
        bytes.insert(0, program_ + ": messages perdus: " + std::to_string(lost_) + "\n");
        bytes.resize(std::min<std::size_t>(bytes.size(), PIPE_BUF));
    }
    const std::size_t written = write_when_ready(STDERR_FILENO, bytes, 0);
    lost_ = written > 0 ? 0 : lost_ + 1;
    if (written > 0) unfinished_ = bytes.substr(written);
}

void print_at_once(const std::string& text, int stream) {
    using clock = std::chrono::steady_clock;
    const auto limit = clock::now() + std::chrono::seconds(1);
    for (std::string_view rest = text; !rest.empty();) {
        const auto left = std::chrono::ceil<std::chrono::milliseconds>(limit - clock::now());
        const std::size_t written =
            write_when_ready(stream, rest, static_cast<int>(std::max<long>(left.count(), 0)));
        if (written == 0) throw output_refusal();
        rest.remove_prefix(written);
    }
}

void print_patiently(const std::string& text) {
    std::signal(SIGPIPE, SIG_IGN);
    if (!(std::cout << text).flush()) throw output_refusal();
}
