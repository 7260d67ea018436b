// The rows of a recording: an event as four fields.
#pragma once
#include <optional>
#include <string>
#include <string_view>

#include "session/station_events.h"

/// An event as the fields of its row: "2007", "incident", "1", "colle répandue : ...".
struct event_row {
    /// UTF-8, as read or to be written: neither quoted nor checked.
    std::string ms, kind, name, value;
    bool operator==(const event_row&) const = default;
};

/// What a kind of event is called in rows: "entree".
[[nodiscard]] std::string_view event_kind_word(event_kind kind);
/// The kind that is called so; nothing for any other word.
[[nodiscard]] std::optional<event_kind> event_kind_called(std::string_view word);

/// The row of an event. Bytes that a recording does not hold are escaped: recording/recorded_text.h
/// says which.
event_row row_of_event(const station_event& event);

/// Whether a field of CSV is quoted: it holds a comma, a quote or a line end.
[[nodiscard]] bool needs_quotes(std::string_view text);

/// The field as CSV has it: in quotes, its own doubled, where it needs them.
[[nodiscard]] std::string csv_field(const std::string& text);

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
