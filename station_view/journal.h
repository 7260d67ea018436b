// The journal: the last changes and incidents of a session, as a table for the paged viewer.
#pragma once
#include <cstdint>
#include <deque>
#include <string>
#include <vector>

#include "recording/event_rows.h"
#include "session/station_events.h"
#include "lesson/bilingual.h"

/// Keeps so many rows and no more, however long the session is, and the number of those that it has
/// let go.
class journal : public event_reader {
public:
    /// How many it keeps; older rows are only counted.
    static constexpr std::size_t most_rows = 5000;

    void read(std::span<const station_event> events) override;

    /// Lines of the viewer's markup, in UTF-8: a heading with the title, where there is one; a
    /// table; how many older rows are not there.
    std::vector<std::string> lines(const std::string& title, language in) const;

private:
    struct kept_row {
        event_kind kind;
        event_row row;
    };
    static std::string line_of(const kept_row& kept, language in);

    std::deque<kept_row> rows_;
    std::int64_t forgotten_ = 0;
};
