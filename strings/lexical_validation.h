// Has a text the form that a parser of number_parsing.h expects, or that of a name?
//
// Every function answers 1 for yes and 0 for no, looks at bytes only
// (ISO-8859-1), trims nothing, and reads no locale. The empty text
// passes checkhex and checkbin and no other: callers rely on it.
#pragma once
#include <string>

/// One or more digits "0" to "9", and nothing else.
///
///     checkuint("12");  // 1
int checkuint(const std::string& text);

/// An optional "-", then a text that passes checkuint. "+" is refused.
///
///     checkint("-12");  // 1
int checkint(const std::string& text);

/// Accepted by Stod with the same separator: [blanks][-]digits[separator digits][E[+|-]digits].
/// Refused, as Stod reads them as 0.0: "-0", "05", "1.", ".5", "1E05", "+1", "1 ".
///
///     checkdouble("0,5", ',');  // 1
int checkdouble(const std::string& text, char separator);

/// Hexadecimal digits only, in either case; the empty text passes.
///
///     checkhex("0fF");  // 1
int checkhex(const std::string& text);

/// Any number of hexadecimal digits, even none, then a lower-case "h".
///
///     checkhexintel("0FFh");  // 1
///     checkhexintel("0FFH");  // 0
int checkhexintel(const std::string& text);

/// Digits "0" and "1" only; the empty text passes.
///
///     checkbin("0101");  // 1
int checkbin(const std::string& text);

/// A letter of ISO-8859-1, in the narrow sense of this toolkit: the ASCII letters, the micro sign
/// (B5), C0 to F6 without D7 and D8, F9 to FD, and FF. So O stroke in either case, small thorn and
/// the ordinals are no letters.
///
///     check_ISO_8859_1_alphabetical_letter('\xE9');  // 1: e acute
int check_ISO_8859_1_alphabetical_letter(char character);

/// A name: ASCII letters, digits and "_", the first a letter, the last no "_".
///
///     checkvarname("x_1");  // 1
int checkvarname(const std::string& text);

/// A name as for checkvarname, that may begin with "_" too.
/// "_" alone, which is also the last byte, is refused.
///
///     checkvarname_with_pre_underscore("_x");  // 1
int checkvarname_with_pre_underscore(const std::string& text);

/// The first byte is "0" to "9".
///
///     beginbynumber("3abc");  // 1
int beginbynumber(const std::string& text);
