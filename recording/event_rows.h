// The rows of a recording: an event as four fields.
#pragma once
#include <string>

#include "session/station_events.h"

/// An event as the fields of its row: "2007", "incident", "1", "colle répandue : ...".
struct event_row {
    std::string ms, kind, name, value;
};

/// The row of an event, its texts as they are.
event_row row_of_event(const station_event& event);

/// The row as a line of CSV, with its line feed: a field that holds a comma, a quote or a line end
/// is quoted, and its quotes are doubled; no other is.
///
///     csv_line({"40", "sortie", "BZ1", "1"})  // "40,sortie,BZ1,1\n"
std::string csv_line(const event_row& row);

/// A reader that keeps the rows in memory, one after another, for whoever compares sessions.
class row_collector : public event_reader {
public:
    void read(std::span<const station_event> events) override;
    /// All rows so far, as CSV without the head row.
    const std::string& rows() const { return rows_; }

private:
    std::string rows_;
};
