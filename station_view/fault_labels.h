// Kinds of faults as the window shows them.
#pragma once
#include <string>

#include "session/faults.h"
#include "lesson/bilingual.h"

/// The head of a column: "= 0".
[[nodiscard]] const char* fault_column(fault_kind kind, language in);
/// What it means: "reste à 0".
[[nodiscard]] const char* fault_meaning(fault_kind kind, language in);
/// A fault in full: "te : bloqué à 0 (te=stuck0)".
[[nodiscard]] std::string fault_sentence(const station_fault& fault, language in);
