// A recording read back: its first block, then its events, in constant memory.
//
// What no session could have written is refused with its line; whether the station answers as the
// recording says is another matter (recording/replay.h).
#pragma once
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "recording/csv_reader.h"
#include "recording/recorded_event.h"
#include "recording/recording_head.h"
#include "recording/recording_state.h"

class recording_reader {
public:
    /// Reads the first block. `name` begins the words of a refusal, `bytes` must outlive the
    /// reader. Throws `refusal`, "seance.csv: ligne 12: ...", for a file that is no recording and
    /// for one that is cut within its first block.
    recording_reader(std::string name, std::streambuf& bytes);

    /// Goes back to the beginning, and reads the first block again. False where the bytes can be
    /// read only once. Throws `refusal` where they are no recording any more, or another one.
    [[nodiscard]] bool restart();

    /// With which the words of a refusal begin.
    const std::string& name() const { return name_; }
    /// The state before the first step.
    const recording_head& head() const { return head_; }
    /// The next event after the first block, the one of `fin` included; null at the end. Valid
    /// until the next call of `take`.
    [[nodiscard]] const recorded_event* peek() const { return next_ ? &*next_ : nullptr; }
    /// Takes the event that `peek` shows. Throws `refusal` when the one behind it is no event.
    recorded_event take();
    /// Whether the recording ends with `fin`: false for one that was cut off, and as long as there
    /// is more to take.
    bool whole() const { return whole_; }

private:
    bool read_next();
    void read_head();
    void admit();
    [[noreturn]] void refuse(const recording_problem& problem) const;

    std::string name_;
    csv_reader rows_;
    recording_head head_;
    recording_state state_;
    std::optional<recorded_event> next_;
    bool whole_ = false;
};
