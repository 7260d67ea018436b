// Records and tokens: cutting a line at separators,
// taking words off its front, replacing whole words.
//
// A text is bytes: nothing is decoded, and positions are byte offsets from 0. No function throws
// (memory exhaustion aside), keeps state between calls or reads the locale. What a call leaves over
// may be stored in its own input.
#pragma once
#include <string>

/// Cuts `text` at its first `separator`: returns the bytes before it, leaves those after it in
/// `rest`. Without one, returns the whole text and empties `rest`. The separator goes to neither
/// side. `rest` may be the same object as `text`.
///
///     std::string line = "te;1";
///     next_record(line, ';', line);  // "te"
///     line;                          // "1"
std::string next_record(const std::string& text, char separator, std::string& rest);

/// Cuts `text` at the first byte that is one of `separators`, a NUL-terminated set, and stores that
/// byte in `found`. When there is none (or the set is empty or null), returns the whole text,
/// empties `rest` and stores a blank in `found`. `rest` may be the same object as `text`.
///
///     std::string rest;
///     char found;
///     next_record("ab,cd", ",;", rest, found);  // "ab"
///     rest;                                     // "cd"
///     found;                                    // ','
std::string next_record(const std::string& text, const char* separators, std::string& rest,
                        char& found);

/// Cuts `text` at its last `separator`: returns the bytes before it,
/// leaves those after it in `last`. Without one, returns the whole
/// text and empties `last`. `last` may be the same object as `text`.
///
///     std::string last;
///     last_record("a/b/c", '/', last);  // "a/b"
///     last;                             // "c"
std::string last_record(const std::string& text, char separator, std::string& last);

/// Takes one token off the front of `text`, after any `separator`s, and leaves what follows it in
/// `*rest`. A token is a run of word bytes (est_lc), or "-" with the digits and points after it, or
/// one other byte; no separator stands in it. The last byte of `text` alone is a token whatever it
/// is: three separators give one. "" gives "" and an empty rest. `rest` may point to `text`
/// itself; it may not be null.
///
///     std::string line = "  abc def";
///     next_Stringtoken(line, ' ', &line);  // "abc"
///     line;                                // " def"
std::string next_Stringtoken(const std::string& text, char separator, std::string* rest);

/// 1 when the first `token` in `text` is not followed by a letter or digit, else 0 (also when there
/// is none). Only the first occurrence counts, and what stands before it does not. Letters are the
/// ASCII ones and the ISO-8859-1 bytes E0, E2, E7, E8, E9, EA, F4 and 8C. An empty token is found
/// at the front.
///
///     contains_token("x bc", "bc");  // 1
///     contains_token("abcd", "bc");  // 0
int contains_token(const std::string& text, const std::string& token);

/// `text` with `replacement` for each `token` that has no word byte (est_lc)
/// on either side. An occurrence that directly follows another is judged by
/// its right side alone: "abab" becomes "ab" and the replacement of "ab".
/// The replacement is not searched again. An empty token changes nothing.
///
///     substitute_token("x = x1 + x", "x", "y");  // "y = x1 + y"
[[nodiscard]] std::string substitute_token(const std::string& text, const std::string& token,
                                           const std::string& replacement);
