// Counts the allocations of the test program that links it.
#pragma once

/// How many times operator new was called since the program began.
[[nodiscard]] long counted_allocations();
