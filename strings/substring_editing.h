// Cutting, deleting, replacing and trimming parts of a text.
//
// A text is bytes: nothing is decoded, and positions are byte offsets from 0. Positions outside the
// text are clamped; no function throws (memory exhaustion aside), and none changes its argument.
#pragma once
#include <string>

/// The bytes of `text` from offset `n` to its end: none
/// from the end on, all of them for a negative `n`.
///
///     my_after("abc", 2);  // "c"
[[nodiscard]] std::string my_after(const std::string& text, int n);

/// The first `n` bytes of `text`: all of them when it has fewer, none for a negative `n`.
///
///     my_before("abc", 2);  // "ab"
[[nodiscard]] std::string my_before(std::string text, int n);

/// The bytes of `text` from offset `from` up to, not including, offset `to`; "" when that leaves
/// none. A negative `from` counts as 0.
///
///     my_at("abcdef", 1, 3);  // "bc"
[[nodiscard]] std::string my_at(const std::string& text, int from, int to);

/// `text` without its first and last byte, whatever they are; "" when it has fewer than three.
///
///     bdelete("[x]");  // "x"
[[nodiscard]] std::string bdelete(const std::string& text);

/// `text` with `replacement` for each `character`. An empty replacement deletes it.
///
///     substitute_char("a.b.c", '.', "::");  // "a::b::c"
[[nodiscard]] std::string substitute_char(const std::string& text, char character,
                                          const std::string& replacement);

/// `text` with the byte `replacement` for each `character`.
///
///     substitute_char("a.b.c", '.', '/');  // "a/b/c"
[[nodiscard]] std::string substitute_char(const std::string& text, char character,
                                          char replacement);

/// `text` with `replacement` for each `pattern`, from left to right. Occurrences do not overlap,
/// and the replacement is not searched again. An empty pattern changes nothing.
///
///     substitute_string("aaa", "aa", "b");  // "ba"
[[nodiscard]] std::string substitute_string(const std::string& text, const std::string& pattern,
                                            const std::string& replacement);

/// `text` without the blanks (20, and no other white space) around it.
///
///     cancel_begin_end_spaces("  a b ");  // "a b"
[[nodiscard]] std::string cancel_begin_end_spaces(const std::string& text);

/// `text` trimmed as cancel_begin_end_spaces does it, then
/// with one `character` in place of each blank that is left.
///
///     clever_substitute_space("  my  file ", '_');  // "my__file"
[[nodiscard]] std::string clever_substitute_space(const std::string& text, char character);
