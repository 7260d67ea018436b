// The rows of a recording's CSV, one after another, in constant memory.
//
// Only the form that recordings are written in is read: a line feed after each row, quotes where a
// field needs them and nowhere else, UTF-8.
#pragma once
#include <cstdint>
#include <streambuf>
#include <string>

#include "recording/event_rows.h"

/// What is wrong with a recording, and on which of its lines, counted from 1.
struct recording_problem {
    /// That of the row's beginning: a quoted field may hold several.
    std::int64_t line;
    /// French, one line.
    std::string why;
};

class csv_reader {
public:
    /// `bytes` must outlive the reader.
    explicit csv_reader(std::streambuf& bytes) : bytes_(bytes) {}

    /// Goes back to the beginning. False where the bytes can be read only once.
    [[nodiscard]] bool restart();

    /// Reads the next row; false at the end. A last row without its line feed was cut off: it is
    /// left out. Throws `recording_problem`.
    [[nodiscard]] bool next(event_row& row);
    /// The line on which the last row began, from 1.
    std::int64_t line() const { return line_; }
    /// Whether the end was in the middle of a row.
    bool cut() const { return cut_; }

private:
    /// What a field ended with.
    enum class field_end { comma, row, file };

    int next_byte();
    field_end read_field(std::string& field);
    field_end read_plain(std::string& field);
    field_end read_quoted(std::string& field);
    field_end end_with(int byte);
    [[noreturn]] void refuse(const std::string& why) const;

    std::streambuf& bytes_;
    std::int64_t line_ = 0, next_line_ = 1;
    std::size_t row_bytes_ = 0;
    bool cut_ = false;
};
