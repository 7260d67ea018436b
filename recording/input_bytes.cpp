#include "recording/input_bytes.h"

#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

#include <cerrno>

#include "recording/recorded_text.h"
#include "session/end_signals.h"
#include "session/failure.h"
#include "session/system_errors.h"

input_bytes::input_bytes(const std::string& path)
    : path_(path),
      descriptor_(path == "-" ? fcntl(STDIN_FILENO, F_DUPFD_CLOEXEC, 0)
                              : open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NOCTTY)) {
    if (descriptor_ < 0) refuse();
}

input_bytes::~input_bytes() { close(descriptor_); }

void input_bytes::refuse() const {
    throw refusal(recorded_name(path_) + ": " + system_error_words(errno));
}

// A pipe may stand still for ever. False when the session is to end first.
bool input_bytes::ready() const {
    constexpr int look_ms = 100;
    pollfd wanted{descriptor_, POLLIN, 0};
    do {
        if (poll(&wanted, 1, look_ms) == 1) return true;
    } while (!end_signals::due());
    return false;
}

input_bytes::int_type input_bytes::underflow() {
    if (!ready()) return traits_type::eof();
    ssize_t took = -1;
    do {
        took = read(descriptor_, buffer_.data(), buffer_.size());
    } while (took < 0 && errno == EINTR);
    if (took < 0) refuse();
    setg(buffer_.data(), buffer_.data(), buffer_.data() + took);
    return took > 0 ? traits_type::to_int_type(*gptr()) : traits_type::eof();
}

input_bytes::pos_type input_bytes::seekpos(pos_type place, std::ios_base::openmode) {
    if (place != pos_type(0) || lseek(descriptor_, 0, SEEK_SET) != 0) return pos_type(off_type(-1));
    setg(buffer_.data(), buffer_.data(), buffer_.data());
    return place;
}
