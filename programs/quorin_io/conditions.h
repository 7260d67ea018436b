// What scripts write and wait for: NAME=VALUE and NAME!=VALUE, on the signals of a segment.
#pragma once
#include <string>
#include <vector>

#include "ioshare/io_observer.h"

/// An output and the value that it is to get.
struct assignment {
    std::string name;
    std::int32_t value;
};

/// NAME=VALUE words, each with a "=". A name may hold "=", a value may not. Throws `refusal` for a
/// value that is no 32-bit integer, and for a name that is no output of the segment.
[[nodiscard]] std::vector<assignment> read_assignments(const io_observer& segment,
                                                       const std::vector<std::string>& words);

/// A signal and what its value is to be, or not to be.
class condition {
public:
    /// From NAME=VALUE or NAME!=VALUE: `word` has a "=". Throws `refusal` for a value that is no
    /// 32-bit integer, and for a name that `segment` does not have; that one must outlive this.
    condition(const io_observer& segment, const std::string& word);

    /// Whether it holds, as of the segment's last look.
    [[nodiscard]] bool holds() const { return (signal_->value == value_) == equal_; }
    /// How it stands, in French, without an end of line: "te=1 (valeur 0)".
    [[nodiscard]] std::string told() const;

private:
    const io_signal* signal_;
    bool equal_;
    std::int32_t value_;
};

using condition_list = std::vector<condition>;

[[nodiscard]] condition_list read_conditions(const io_observer& segment,
                                             const std::vector<std::string>& words);

/// How those that do not hold stand, one text each.
[[nodiscard]] std::vector<std::string> told_missing(const condition_list& conditions);
