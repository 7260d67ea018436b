// What quorin-io prints.
#pragma once
#include <string>

/// Prints `text` on the standard output, at once. Throws `refusal` when it takes nothing. From the
/// first call on a reader that has gone is such a failure, and no signal.
void print(const std::string& text);

/// Sleeps between two looks at a segment, 2 ms.
void pause_between_looks();

/// The same, and throws `refusal` once nobody is left to read what print() prints.
void pause_between_printed_looks();
