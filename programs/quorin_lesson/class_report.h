// What is written of a class's marked recordings: a line each, a table as CSV, a report as PDF.
#pragma once
#include <span>
#include <string>
#include <vector>

#include "programs/quorin_lesson/marking.h"

/// The fields of a recording's line: file, result, points, total, simulated seconds to the end of
/// the exercise; the last three are empty where it was refused.
[[nodiscard]] std::vector<std::string> fields_of(const marked_recording& marked);

/// The table, with its head.
[[nodiscard]] std::string class_csv(std::span<const marked_recording> all);

/// The report, as lines of the paged viewer's markup in UTF-8: a table, then a verdict for each.
[[nodiscard]] std::vector<std::string> class_lines(const exercise& task,
                                                   std::span<const marked_recording> all);

/// Lines of markup as the bytes of a PDF document. Throws `refusal` where the system has no memory
/// for it.
[[nodiscard]] std::string pdf_of(std::vector<std::string> lines);
