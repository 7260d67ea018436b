// The process of the journal, or of the verdict: shows a file of markup in the paged viewer.
#pragma once
#include <string>

#include "lesson/bilingual.h"
#include "station_view/journal_process.h"

/// Shows the lines of `file` (UTF-8, markup) until its user has closed the window. The buttons
/// write tmp.txt and, besides opening it, journal.pdf or verdict.pdf, both in the current
/// directory. The status of the process.
[[nodiscard]] int show_document(paged_document what, const std::string& file, language in);
