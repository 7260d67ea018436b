// Upper and lower case, and capitals without their accents.
//
// Bytes in, bytes out, by fixed tables: the locale
// plays no part. A NUL byte is a byte like any other.
#pragma once
#include <string>

/// `text` with "A" to "Z" in lower case; every other byte, accented capitals included, is kept.
///
///     downcase("Te 1");  // "te 1"
[[nodiscard]] std::string downcase(std::string text);

/// `text` with "a" to "z" in upper case. Bytes of 128 and more are dropped: the result is pure
/// ASCII, and may be shorter.
///
///     upcase("d\xE9j\xE0 vu");  // "DJ VU"
[[nodiscard]] std::string upcase(std::string text);

/// upcase for ISO-8859-1, but e acute, grave and circumflex give "E", a grave and circumflex "A", o
/// circumflex "O", c cedilla "C", and the byte 140 (i circumflex of code page 850) "I". Other bytes
/// of 128 and more are dropped.
///
///     upcase_accent("d\xE9j\xE0 vu");  // "DEJA VU"
[[nodiscard]] std::string upcase_accent(std::string text);

/// upcase for UTF-8, but o diaeresis and circumflex give "O", i circumflex, i acute and dotless i
/// "I", e diaeresis, acute and grave "E", c cedilla "C", a diaeresis and acute "A". The set is not
/// that of upcase_accent: e circumflex, a grave and a circumflex are dropped here. The byte after a
/// C3 goes with it, whatever it is, and so does the byte after a C4, unless that is a C3.
///
///     upcase_accent2("\xC3\xA9l\xC3\xA8ve");  // "ELEVE"
[[nodiscard]] std::string upcase_accent2(std::string text);
