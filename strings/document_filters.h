// Lines of UTF-8 text made ready for an RTF or a LaTeX document.
//
// Both are fixed substitutions: what their tables do not
// name is copied byte for byte, malformed UTF-8 included.
#pragma once
#include <string>

/// `text` with the quotes, dashes and French letters that the toolkit's texts use as RTF escapes of
/// code page 1252, such as "\'e9" for e acute. Backslash and braces are not escaped. Three escapes
/// look wrong and are kept: the apostrophe becomes code 91 and the right quotation mark code 27, a
/// grave becomes "\'eO" with a capital letter O, and "#" becomes "'23" without a backslash.
///
///     rtf_String_filter("l'\xC3\xA9t\xC3\xA9");  // R"(l\'91\'e9t\'e9)"
[[nodiscard]] std::string rtf_String_filter(const std::string& text);

/// `text` with a backslash before each "_"; nothing else is escaped.
///
///     latex_String_filter("a_b");  // R"(a\_b)"
[[nodiscard]] std::string latex_String_filter(const std::string& text);
