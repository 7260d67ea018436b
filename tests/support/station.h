// A running zk4sim, as a test drives it: started, named by its identifier, commanded through
// quorin-io. Beside it, its segment as it stands.
#pragma once
#include <sys/shm.h>

#include <memory>
#include <string>
#include <vector>

#include "ioshare/io_clocks.h"
#include "tests/support/programs.h"

/// The identifier that a zk4sim has printed on its first line; empty while it has not.
inline std::string printed_ident(const program& zk4sim) {
    const std::string out = zk4sim.out();
    const std::size_t end = out.find('\n');
    if (out.rfind("ident_mem=", 0) != 0 || end == std::string::npos) return "";
    return out.substr(10, end - 10);
}

/// Waits for that line. Empty when it does not come.
inline std::string wait_for_ident(const program& zk4sim) {
    wait_until([&] { return !printed_ident(zk4sim).empty(); });
    return printed_ident(zk4sim);
}

/// A running session's segment, seen without being its client: `inputs_clock` and `outputs_clock`
/// stay as they are. Detached at the end.
class attached_segment {
public:
    /// False as a condition when there is no such segment, or the identifier is empty.
    explicit attached_segment(const std::string& ident) {
        if (ident.empty()) return;
        void* const address = shmat(std::stoi(ident), nullptr, 0);
        if (address != reinterpret_cast<void*>(-1)) segment_ = static_cast<io_segment*>(address);
    }
    ~attached_segment() {
        if (segment_) shmdt(segment_);
    }
    attached_segment(const attached_segment&) = delete;
    attached_segment& operator=(const attached_segment&) = delete;

    explicit operator bool() const { return segment_; }
    io_segment& operator*() const { return *segment_; }
    io_segment* operator->() const { return segment_; }
    bool session_over() const { return io_session_over(*segment_); }

private:
    io_segment* segment_ = nullptr;
};

class station {
public:
    /// Starts zk4sim without a window and with these options, and waits for its identifier.
    explicit station(std::vector<std::string> options) {
        options.insert(options.begin(), {built("zk4sim"), "--headless"});
        process = std::make_unique<program>(options);
        ident = wait_for_ident(*process);
    }
    /// One that was started otherwise.
    explicit station(std::unique_ptr<program> started)
        : process(std::move(started)), ident(wait_for_ident(*process)) {}

    /// Runs quorin-io on its segment.
    outcome io(std::vector<std::string> words) const {
        words.insert(words.begin(), {built("quorin-io"), ident});
        return run_program(words);
    }
    std::string value(const std::string& name) const {
        const std::string out = io({"get", name}).out;
        return out.substr(0, out.find('\n'));
    }

    /// The last line that it wrote on the standard error stream.
    std::string summary() const {
        const std::string err = process->err();
        if (err.empty()) return "";
        const std::size_t before = err.rfind('\n', err.size() - 2);
        return err.substr(before == std::string::npos ? 0 : before + 1);
    }

    std::unique_ptr<program> process;
    std::string ident;
};
