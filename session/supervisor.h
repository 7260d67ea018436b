// A small process beside the simulator, which ends the session should the simulator die without a
// word, and frees the lock should a client die with it.
#pragma once
#include <sys/types.h>

#include <cstdint>
#include <string>

/// Forked at once, before any segment exists, so that no moment is unwatched. It holds the segment
/// too, and learns of the simulator's death by the end of a pipe: it then writes -1 into
/// inputs_clock, and removes any segment that the simulator had made but not yet marked for
/// removal, and its control socket. It has a process group of its own, and no signal of the
/// terminal ever stops it.
class supervisor {
public:
    /// Forks; `program` begins the name under which ps shows it. Throws `refusal` when that fails.
    explicit supervisor(const std::string& program);
    ~supervisor();
    supervisor(const supervisor&) = delete;
    supervisor& operator=(const supervisor&) = delete;

    /// Gives it the segment, and returns once it holds it. False when it cannot, is dead, or does
    /// not answer within two seconds.
    [[nodiscard]] bool watch(std::int32_t ident);

    /// Of its process, which `ps` shows as PROGRAM-garde.
    pid_t id() const { return pid_; }
    /// Whether it has died before its time. Call it from the process that forked it.
    bool gone();

private:
    int pipe_ = -1;
    pid_t pid_ = -1;
};
