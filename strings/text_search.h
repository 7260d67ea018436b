// Plain byte searches: is it there, where, and how often?
//
// Bytes are compared exactly; nothing is decoded, and no function throws or reads the locale.
#pragma once
#include <string>

/// 1 when `character` may stand in a word: an ASCII letter or digit, ".", "_", "," or "@"; else 0.
///
///     est_lc('@');  // 1
int est_lc(char character);

/// 1 when `pattern` occurs in `text`, else 0. An empty pattern always occurs.
///
///     contains("abc", "bc");  // 1
int contains(const std::string& text, const std::string& pattern);

/// The offset of the first `pattern` in `text`, -1
/// when there is none. An empty pattern is found at 0.
///
///     find("abcabc", "c");  // 2
int find(const std::string& text, const std::string& pattern);

/// How many bytes of `text` equal `character`.
///
///     char_occurences("banana", 'a');  // 3
int char_occurences(const std::string& text, char character);
