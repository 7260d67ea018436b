// The control panel, as a process that the simulator starts on its segment.
#pragma once
#include <sys/types.h>

#include <string>

class panel_process {
public:
    /// Starts `program -automemlink <ident>`; an empty program means quorin beside this one, else
    /// on the PATH. What it prints goes to the standard error stream. `problem()` tells when it
    /// could not be started.
    panel_process(const std::string& program, int ident);

    /// Why it could not be started, in one line without an end of line; empty when it was.
    const std::string& problem() const { return problem_; }
    pid_t id() const { return pid_; }
    /// Whether it has ended, however it ended.
    bool ended();
    /// After its end: how, where that was not by itself and with status 0, as words of French; else
    /// empty.
    std::string bad_end() const;

private:
    pid_t pid_ = -1;
    bool ended_ = false;
    int wait_status_ = 0;
    std::string problem_;
};
