// Starting programs from a test: what they print, how they end, and what they leave behind.
#pragma once
#include <sys/types.h>

#include <chrono>
#include <functional>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "tests/support/files.h"

using seconds = std::chrono::duration<double>;

/// The path of a program of this build.
inline std::string built(const std::string& name) { return QUORIN_PROGRAMS "/" + name; }

/// Waits until `done` answers true, asking every few milliseconds. False when `limit` passes first,
/// in the time that the machine gives: a pause that it makes between two questions does not count.
bool wait_until(const std::function<bool()>& done, seconds limit = seconds(30));

/// The processor time that a running process has used, in seconds.
double processor_seconds(pid_t pid);

/// The child of `parent` whose name, as ps shows it, is `name`; 0 when there is none.
pid_t child_named(pid_t parent, const std::string& name);

/// A program started by a test. Its two output streams go to files of its own. Ended by its id, at
/// the latest when the object goes.
class program {
public:
    /// `command[0]` is a path, or a name on the PATH.
    /// `environment` adds NAME=VALUE to the test's own.
    explicit program(const std::vector<std::string>& command,
                     const std::vector<std::string>& environment = {});
    ~program();
    program(const program&) = delete;
    program& operator=(const program&) = delete;

    pid_t id() const { return pid_; }
    bool running();
    void signal(int number) const;
    /// Waits for its end. The exit status, or 128 + the signal
    /// that ended it; nothing when `limit` passes first.
    std::optional<int> wait(seconds limit = seconds(60));
    std::string out() const;  ///< What it has written on the standard output so far.
    std::string err() const;  ///< What it has written on the standard error stream so far.

private:
    temporary_folder folder_;
    pid_t pid_ = -1;
    std::optional<int> status_;
};

/// Runs a program to its end: its exit status (or 128 + signal; -1 when it had to be killed) and
/// what it printed.
struct outcome {
    int status;
    std::string out, err;
};
outcome run_program(const std::vector<std::string>& command,
                    const std::vector<std::string>& environment = {}, seconds limit = seconds(60));

/// Runs `body` in a child process of the test, for code that ends its process. A body that returns
/// gives status 0.
outcome run_in_child(const std::function<void()>& body);

/// Every program that a test starts since this object was made, and every segment that they
/// created: which of them are still there. Other tests' programs may come and go beside it.
class leftovers {
public:
    /// Ids of live processes (zombies aside) that descend from a `program` of this test process.
    static std::set<pid_t> processes();
    /// Whether there is none, now and a moment later: one that becomes another program is not seen
    /// meanwhile.
    static bool no_process();
    /// Identifiers of segments created by a `program`
    /// or a descendant, or by the test process itself.
    static std::set<int> segments();
};

/// A test's fixture, or a part of one: checks at the end that no process and no segment is left
/// that was not there before.
class leaves_nothing {
public:
    leaves_nothing();
    ~leaves_nothing();

private:
    std::set<pid_t> processes_;
    std::set<int> segments_;
};
