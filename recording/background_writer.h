// The thread that writes a file, and the bytes that wait for it.
#pragma once
#include <atomic>
#include <chrono>
#include <condition_variable>
#include <mutex>
#include <string>
#include <string_view>

/// Owns the descriptor. Shared by the program and its thread: one that hangs in a write outlives
/// the program's interest in it.
class background_writer {
public:
    /// `regular`: a file, which takes any number of bytes at once; otherwise a pipe or a device.
    /// `patient`: whoever has bytes waits for the file as long as it takes.
    background_writer(int descriptor, bool regular, bool patient)
        : descriptor_(descriptor), regular_(regular), patient_(patient) {}
    ~background_writer();
    background_writer(const background_writer&) = delete;
    background_writer& operator=(const background_writer&) = delete;

    /// Leaves nothing of what the file held. Before anything is added.
    void empty();
    /// Adds bytes. Beyond 16 MiB it waits for the file, or, where it is not patient, these and all
    /// that follow are lost.
    void append(std::string_view bytes);
    /// No bytes will follow. Waits until all are written; for `limit` at most, unless it is
    /// patient, more is a trouble. A second call does nothing.
    void finish(std::chrono::milliseconds limit);
    /// What went wrong since the last call, without the file's name; empty when nothing did.
    std::string trouble();
    /// Whether bytes are lost, and all that follow; after `finish` also when it came too late.
    bool failed();

    /// Writes until the end, or until nothing more can be written; on a thread of its own.
    void run();

private:
    using moment = std::chrono::steady_clock::time_point;

    bool take_bytes();
    bool write_all();
    bool write_some();
    bool ready();
    void fail(const std::string& why);
    void tell(const std::string& why);

    const int descriptor_;
    const bool regular_, patient_;
    std::mutex lock_;
    std::condition_variable changed_;
    std::string waiting_;  // Appended, not yet taken by the thread.
    bool closing_ = false, done_ = false, failed_ = false;
    std::string trouble_;
    std::atomic<bool> troubled_ = false;
    // The thread's own.
    std::string taken_;
    std::size_t written_ = 0;
    moment last_progress_;
    bool told_slow_ = false;
};
