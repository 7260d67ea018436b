// How both halves of the link refuse: one place, which ends the program.
#pragma once
#include <string>

/// Prints "IOshare: erreur sur partage memoire", `why` and an empty line on the standard error
/// stream, and ends the process with status 1.
[[noreturn]] void io_refuse(const std::string& why);
