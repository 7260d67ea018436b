// Foreign text on its way to a browser, which reads "@" at the start of a line as formats and looks
// fonts up in a table without asking whether they are in it.
#pragma once
#include <string>

/// `line` without the formats at its start that would end the program: "@F" with a font that is
/// none of the toolkit's own ("@F0" to "@F15") and "@S" with a size above 2000, whose letters are
/// more than a display takes. All other bytes stay, and so do all other formats. What then stands
/// at the start is looked at in the same way.
///
///     without_unsafe_formats("@b@F1000x");  // "@bx"
///     without_unsafe_formats("x@F1000");    // "x@F1000"
std::string without_unsafe_formats(const std::string& line);
