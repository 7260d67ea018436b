// What quorin-lesson prints and writes.
#pragma once
#include <string>

/// Prints `text` on the standard output, at once. Throws `refusal` when it takes nothing.
void print(const std::string& text);

/// Makes a file of these bytes, or puts them in the place of what it held: all of them, or none.
/// "-" is the standard output. Throws `refusal`, and then the file is as it was.
void write_whole_file(const std::string& path, const std::string& bytes);
