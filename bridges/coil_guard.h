// A small process beside the one that commands: should that one die without a word, it sets every
// output to 0.
#pragma once
#include <sys/types.h>

#include "ioshare/io_observer.h"

class coil_guard {
public:
    /// Forks. `link` is open for writing. The guard has a process group of its own, listens to no
    /// signal of a terminal, and holds nothing of this process but the link and the standard error
    /// stream. `name` is its own, as ps shows it, of 15 bytes at most; it says `word` in one line
    /// if it ever has to act. Call it before any thread, socket or file is made.
    coil_guard(io_observer& link, const char* name, const char* word);
    /// Lets it go, without a deed, and waits for its end.
    ~coil_guard();
    coil_guard(const coil_guard&) = delete;
    coil_guard& operator=(const coil_guard&) = delete;

    /// False when the system gave no process, or no line to it.
    [[nodiscard]] bool there() const { return pid_ > 0; }
    /// A descriptor on which poll() tells POLLHUP once the guard has died.
    [[nodiscard]] int line() const { return line_; }

private:
    int line_ = -1;
    pid_t pid_ = -1;
};
