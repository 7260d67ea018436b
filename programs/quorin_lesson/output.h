// What quorin-lesson writes.
#pragma once
#include <string>

/// Makes a file of these bytes, or puts them in the place of what it held: all of them, or none.
/// "-" is the standard output. Throws `refusal`, and then the file is as it was.
void write_whole_file(const std::string& path, const std::string& bytes);
