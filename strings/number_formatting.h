// Numbers into text.
//
// Each function returns a new string; none throws (memory exhaustion aside) or reads the locale.
// None takes a width: where the width is fixed, the function's name says it.
#pragma once
#include <string>

/// `value` in decimal, without sign or padding.
///
///     unslong2S(42);  // "42"
std::string unslong2S(unsigned long value);

/// unslong2S for an `unsigned long long`.
///
///     unslonglong2S(0);  // "0"
std::string unslonglong2S(unsigned long long value);

/// `value` in decimal, "-" first when negative.
///
///     long2S(-5);  // "-5"
std::string long2S(long value);

/// long2S for a `long long`.
///
///     longlong2S(-5);  // "-5"
std::string longlong2S(long long value);

/// `value` in base 8, the digits 0 to 7 written "A" to "H", without padding.
///
///     unslongbyS(8);  // "BA"
std::string unslongbyS(unsigned long value);

/// The low 8 bits of `value`, highest first, as 8 characters "0" or "1".
///
///     bin8toS(5);  // "00000101"
std::string bin8toS(int value);

/// The last hexadecimal digit of `value`, lower case. A negative value keeps its sign in the
/// remainder by 16 and gives a character below "0": -1 gives "/".
///
///     hex1toS(10);  // "a"
std::string hex1toS(int value);

/// The last 2 hexadecimal digits of `value`, each written as hex1toS writes it.
///
///     hex2toS(255);  // "ff"
///     hex2toS(-1);   // "//"
std::string hex2toS(int value);

/// The last 4 hexadecimal digits of `value`, each written as hex1toS writes it.
///
///     hex4toS(4660);  // "1234"
std::string hex4toS(int value);

/// The last 8 hexadecimal digits of `value`, each written as hex1toS writes it. Its two halves are
/// written separately, each as an `int`: the low half of a value whose bit 31 is set is negative,
/// and its digits then come out as the characters below "0".
///
///     hex8toS(305419896);  // "12345678"
std::string hex8toS(long value);

/// `value` in fixed point: sign, whole part, ".", then exactly `precision` digits (none when it is
/// 0 or less: "3."). The fraction is rounded on its own and never carries into the whole part:
/// `dtoS(0.999, 2)` is "0.00", and a remainder of exactly half a unit is dropped. -0.0 has no sign.
///
/// Magnitudes of 2 to the 63 and more are written exactly, then "." and at most 18 zeros;
/// infinities and NaN are "inf", "-inf" and "nan". A precision above 18 overflows the 64-bit scale
/// and gives digits that mean nothing.
///
///     dtoS(-2.5, 1);  // "-2.5"
std::string dtoS(double value, int precision);

/// The string of that one character, also when it is NUL.
///
///     ctoS('x');  // "x"
std::string ctoS(char character);
