// The end of a session: what brings it about, and in which words it is told.
#pragma once
#include <cstdint>
#include <optional>
#include <string>

#include "ioshare/io_segment.h"
#include "session/child_process.h"
#include "session/supervisor.h"

class session_end {
public:
    /// The session ends after `duration_s` simulated seconds, if there are any, when its supervisor
    /// has gone, when somebody else ends it on `segment`, leaves its clock no room or its lock no
    /// semaphore, or when a signal asks for it. All of these must live as long.
    session_end(std::optional<double> duration_s, supervisor& guard, const io_segment& segment);

    /// It also ends with this child, which must live as long; `what` begins the words: "panneau".
    void depend_on(child_process& child, const std::string& what, const std::string& well_ended);

    /// It is to end, for a reason of these words. The first one that asks is heard.
    void ask(const std::string& words);

    /// Whether no more step is to be made: over, or so many simulated milliseconds are enough.
    bool due(std::int64_t ms) const;
    /// Looks whether the session is over. The first cause that is found stays.
    [[nodiscard]] bool look(std::int64_t ms);

    /// Whether it has come: `look` has found a cause.
    bool over() const { return !words_.empty(); }
    /// Whether the child brought it about: nobody commands any more.
    bool child_gone() const { return child_gone_; }
    /// Why it is over: French, one line; empty while it goes on.
    const std::string& words() const { return words_; }

private:
    bool duration_over(std::int64_t ms) const;
    std::string cause(std::int64_t ms);
    std::string child_cause();

    std::optional<double> duration_s_;
    supervisor& guard_;
    const io_segment& segment_;
    child_process* child_ = nullptr;
    std::string what_, well_ended_, asked_words_, words_;
    bool child_gone_ = false;
};
