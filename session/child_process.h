// A program that a session starts and with which it ends: the control panel, or a command.
#pragma once
#include <sys/types.h>

#include <string>
#include <vector>

/// What to start.
struct child_command {
    /// The program, looked for on the PATH, and its arguments.
    std::vector<std::string> words;
    /// "NAME=VALUE", added to its environment; empty: nothing.
    std::string environment = {};
    /// In a process group of its own; it is not given a terminal's input then, only a file's or a
    /// pipe's.
    bool own_group = false;
};

/// The control panel on segment `ident`. An empty program means quorin beside this one, else on the
/// PATH.
child_command panel_command(const std::string& program, int ident);
/// A shell's command, which finds the identifier in QUORIN_IDENT.
child_command shell_command(const std::string& command, int ident);

/// The first word of a command that is this program itself.
inline constexpr char own_program[] = "/proc/self/exe";

class child_process {
public:
    /// Starts it. What it prints goes to the standard error stream. Throws `refusal` when it could
    /// not be started: `what`, the program if it is another one, and why.
    child_process(const std::string& what, const child_command& command);
    child_process(const child_process&) = delete;
    child_process& operator=(const child_process&) = delete;

    /// Of the process, and of its group where it has one of its own.
    pid_t id() const { return pid_; }
    /// Asks the process group of one that has its own to end, also those that somebody has stopped.
    void ask_to_end() const;
    /// Ends that group, and waits for it.
    void end_by_force();
    /// Whether it has ended, however it ended. Call it from the process that started it.
    bool ended();
    /// After its end: its status, or 128 and the number of the signal that ended it.
    int status() const;
    /// After its end: how it ended, as words of French; empty where that was by itself and with
    /// status 0.
    std::string bad_end() const;
    /// After its end: whether it ended by itself.
    bool ended_by_itself() const;

private:
    pid_t pid_ = -1;
    bool ended_ = false;
    int wait_status_ = 0;
};
