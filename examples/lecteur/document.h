// A text file as lines for the paged viewer.
//
// A file that defines columns (with a line such as "#C T20 T8 T") is a document of the viewer's own
// markup, and its lines are taken as they stand. Any other file is plain text. The viewer shows
// nothing of a text line before columns are defined, cuts it at each "#", and cuts long lines. So
// plain text gets one wide column, continues on another line where it is too long, and has its
// special bytes replaced.
//
// A file that is UTF-8 throughout is read as that, any other as ISO-8859-1.
#pragma once
#include <optional>
#include <string>
#include <vector>

#include "viewer/line_markup.h"

using lines = std::vector<std::string>;

/// The lines of a file, without their ends ("\n" or "\r\n"). Nothing when it cannot be read, with
/// the reason in errno.
std::optional<lines> read_lines(const std::string& path);

/// True for a document of the viewer's markup.
bool has_markup(const lines& text);

/// Plain text for the screen: at most 105 characters in a line, tabs as blanks up to the next
/// multiple of 8, control characters as blanks, and "#" as the sharp sign (U+266F).
lines for_screen(const lines& text);

/// What makes one line safe in a document: document_text::for_pdf or for_postscript.
using safe_line = std::string (*)(const std::string& line, line_markup::column_layout& columns);

/// The lines of a document in print, of the viewer's markup or not. Plain text is laid out as for
/// the screen, but "#", "(" and ")" are written as "\043" and so on, which readers show as the
/// characters themselves.
lines for_print(const lines& text, safe_line safe);
