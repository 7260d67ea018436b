// Text into numbers, fast and lenient.
//
// No function reports an error, throws (memory exhaustion aside) or reads the locale, and only Stod
// checks its text: the others compute a number from any bytes, and wrap silently when it does not
// fit. A caller that needs a check runs the one of lexical_validation.h first: checkint before
// Stoi, checkdouble before Stod, checkhex before Stouhex. A byte counts as a signed char, so the
// byte "\xE9" is worth -23 - 48. A NUL byte is a byte like any other.
#pragma once
#include <string>

/// A new array of `text.size() + 1` chars: the bytes of `text`, embedded NULs included, then a NUL.
/// The caller releases it with `delete[]`.
///
///     const std::unique_ptr<char[]> label(Stoa("te"));
///     label.get();  // "te"
[[nodiscard]] char* Stoa(const std::string& text);

/// The 32-bit integer that `text` writes in decimal, "-" first when negative; 0 for "" and "-".
/// Nothing is skipped: any other byte is the digit worth `byte - 48`, so `Stoi("+5")` is -45 and
/// `Stoi("1a")` is 59. See checkint.
///
///     Stoi("-12");  // -12
int Stoi(const std::string& text);

/// Stoi on 64 bits.
///
///     Stol("5000000000");  // 5000000000
long Stol(const std::string& text);

/// Stoi on 64 bits.
///
///     Stoll("-5000000000");  // -5000000000
long long Stoll(const std::string& text);

/// The double that `text` writes as [blanks][-]digits[separator digits][E[+|-]digits], or 0.0 for
/// any other text. See checkdouble, which accepts the very same texts. Refused on purpose: "+1",
/// "05", "5.", ".5", "1E05", a trailing blank. The whole part and the fraction are 32-bit integers:
/// past 2147483647, or nine fraction digits, the value is wrong; from 32 fraction digits on it is
/// infinite or not a number.
///
///     Stod("-3,25", ',');  // -3.25
double Stod(const std::string& text, char separator);

/// The 64-bit number that `text` writes in hexadecimal, in either case; 0 for "". Any other byte
/// counts as a zero digit.
///
///     Stouhex("fF");  // 255
///     Stouhex("1G");  // 16
unsigned long Stouhex(const std::string& text);

/// `text` as hexadecimal two's complement of 4 bits a digit: negative when the first digit is "8"
/// or more. Meant for 1 to 7 digits. From the eighth on the sign's weight starts again from 1:
/// "FFFFFFFF" gives 4294967294.
///
///     Stoshex("80");  // -128
///     Stoshex("7F");  // 127
long Stoshex(const std::string& text);

/// The 64-bit number that `text` writes in binary; 0 for "". Any other byte is the digit worth
/// `byte - 48`.
///
///     Stoubin("101");  // 5
long Stoubin(const std::string& text);

/// `text` as binary two's complement, its first byte being the sign: "0", or anything else for
/// negative. 0 for "".
///
///     Stosbin("1011");  // -5
///     Stosbin("0101");  // 5
long Stosbin(const std::string& text);

/// Reads `text` as hexadecimal from its first `marker`, included, when there is one (Stouhex), as
/// decimal otherwise (Stol). An empty marker is found at once.
///
///     Stoloruhex("0x", "0x1F");  // 31: "0" and "x" count as zero digits
///     Stoloruhex("0x", "10");    // 10
long Stoloruhex(const std::string& marker, const std::string& text);

/// Reads what stands in `text` before its first `marker` as hexadecimal (Stouhex); without a
/// marker, reads `text` as decimal (Stol) and writes "Decimal Conversion ", the value and an end of
/// line on the standard error stream. Mind the order of the arguments, the opposite of Stoloruhex.
///
///     Stohex("1Fh", "h");  // 31
///     Stohex("20", "h");   // 20: and "Decimal Conversion 20" on the standard error stream
long Stohex(const std::string& text, const std::string& marker);
