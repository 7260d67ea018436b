// The edit distance of two short texts.
#pragma once
#include <string>

/// The least number of bytes to insert, delete or replace to turn `a` into `b` (each costs 1; case
/// and accents matter). When a text is longer than 998 bytes, returns -1 and writes "chaines trop
/// grandes!" and an end of line on the standard error stream. Its table of 4 MB is reserved once
/// for each thread that calls it, and kept until the thread ends.
///
///     levenshtein("kitten", "sitting");  // 3
int levenshtein(const std::string& a, const std::string& b);
