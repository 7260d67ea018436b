// The journal's process: shows a file of markup in the paged viewer.
#pragma once
#include <string>

#include "lesson/bilingual.h"

/// Shows the lines of `file` (UTF-8, markup) until its user has closed the window, or until the
/// process that started this one has ended. The buttons write tmp.txt and, besides opening it,
/// journal.pdf, both in the current directory. The status of the process.
[[nodiscard]] int show_journal(const std::string& file, language in);
