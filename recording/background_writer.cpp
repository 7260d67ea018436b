#include "recording/background_writer.h"

#include <poll.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <climits>
#include <utility>

#include "recording/trouble_words.h"
#include "session/system_errors.h"

namespace {

using namespace std::chrono_literals;

constexpr std::size_t most_waiting = 16U << 20U;
// What is appended meanwhile is written in one piece.
constexpr auto gathering = 50ms;
constexpr auto slow_after = 2s;
constexpr int look_ms = 100;

}  // namespace

background_writer::~background_writer() { close(descriptor_); }

void background_writer::empty() { (void)!ftruncate(descriptor_, 0); }

void background_writer::append(std::string_view bytes) {
    std::unique_lock hold(lock_);
    if (patient_) changed_.wait(hold, [&] { return waiting_.size() < most_waiting || failed_; });
    if (failed_) return;
    if (waiting_.size() >= most_waiting) {
        failed_ = true;
        return;
    }
    const bool wake = waiting_.empty();
    waiting_ += bytes;
    if (wake) changed_.notify_all();
}

void background_writer::finish(std::chrono::milliseconds limit) {
    std::unique_lock hold(lock_);
    if (std::exchange(closing_, true)) return;
    changed_.notify_all();
    if (patient_) changed_.wait(hold, [&] { return done_; });
    if (changed_.wait_for(hold, limit, [&] { return done_; })) return;
    failed_ = true;
    trouble_ = trouble_words::end_not_written;
    troubled_ = true;
}

std::string background_writer::trouble() {
    if (!troubled_.exchange(false)) return {};
    const std::scoped_lock hold(lock_);
    return std::exchange(trouble_, {});
}

bool background_writer::failed() {
    const std::scoped_lock hold(lock_);
    return failed_;
}

void background_writer::run() {
    while (take_bytes() && write_all()) {
    }
    const std::scoped_lock hold(lock_);
    done_ = true;
    changed_.notify_all();
}

// Whether there are any: none is the end.
bool background_writer::take_bytes() {
    std::unique_lock hold(lock_);
    changed_.wait(hold, [&] { return closing_ || !waiting_.empty(); });
    changed_.wait_for(hold, gathering, [&] { return closing_; });
    taken_.clear();
    taken_.swap(waiting_);
    written_ = 0;
    changed_.notify_all();
    return !taken_.empty();
}

bool background_writer::write_all() {
    last_progress_ = std::chrono::steady_clock::now();
    while (written_ < taken_.size())
        if (!write_some()) return false;
    return true;
}

// False once nothing more can be written.
bool background_writer::write_some() {
    if (!ready()) return true;
    const std::size_t left = taken_.size() - written_;
    // A pipe that is ready takes so much without a wait.
    const std::size_t most = regular_ ? left : std::min<std::size_t>(left, PIPE_BUF);
    const ssize_t took = write(descriptor_, taken_.data() + written_, most);
    if (took < 0 && (errno == EINTR || errno == EAGAIN)) return true;
    if (took < 0) {
        fail(system_error_words(errno));
        return false;
    }
    written_ += static_cast<std::size_t>(took);
    last_progress_ = std::chrono::steady_clock::now();
    return true;
}

bool background_writer::ready() {
    pollfd wanted{descriptor_, POLLOUT, 0};
    if (poll(&wanted, 1, look_ms) == 1) return true;
    if (!patient_ && !told_slow_ &&
        std::chrono::steady_clock::now() - last_progress_ > slow_after) {
        told_slow_ = true;
        tell(std::string(trouble_words::nobody_reads));
    }
    return false;
}

void background_writer::fail(const std::string& why) {
    tell(why + std::string(trouble_words::not_recorded));
    const std::scoped_lock hold(lock_);
    failed_ = true;
    waiting_.clear();
    changed_.notify_all();
}

void background_writer::tell(const std::string& why) {
    const std::scoped_lock hold(lock_);
    trouble_ = why;
    troubled_ = true;
}
