// How every filter writes: line by line, each one flushed.
#pragma once
#include <cstddef>
#include <fstream>
#include <initializer_list>
#include <span>
#include <string>
#include <string_view>

/// Writes the pieces of a line and a newline, and flushes: one write to the file. The stream's own
/// formatting (width, locale) plays no part. A failing stream is not reported.
inline void write_flushed_line(std::fstream& out, std::initializer_list<std::string_view> pieces) {
    std::size_t length = 1;
    for (const std::string_view piece : pieces) length += piece.size();
    std::string line;
    line.reserve(length);
    for (const std::string_view piece : pieces) line += piece;
    line += '\n';
    out.write(line.data(), static_cast<std::streamsize>(line.size())).flush();
}

/// Writes fixed lines, each as write_flushed_line does.
inline void write_flushed_lines(std::fstream& out, std::span<const std::string_view> lines) {
    for (const std::string_view line : lines) write_flushed_line(out, {line});
}
